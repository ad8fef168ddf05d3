#include <Board/MonitoringLeaf.h>

#include <Board/Ancestor.h>
#include <Board/Folio.h>
#include <Board/FormLabel.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitorReply.h>
#include <Board/Tamsa.h>
#include <foundation/Console.h>
#include <foundation/Encoding.h>
#include <foundation/Fatal.h>
#include <foundation/ForEachControler.h>
#include <foundation/InvalidRequest.h>
#include <foundation/ListCollection.h>
#include <foundation/Raise.h>

#include <QGridLayout>
#include <QSpinBox>
#include <QTimer>

#include <memory>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/MonitoringLeaf";

template <class Labels>
QLabel* getLabelOf(const Labels& labels, const std::string& name, const std::string& function,
                   unsigned long line)
{
    if (name.empty()) {
        Orvex::raise(Orvex::InvalidRequest("Empty name"), function, sourceFile, line);
    }
    const auto found = labels.find(name);
    return found != labels.end() ? found->second.data() : nullptr;
}

template <class Labels>
void deleteLabels(Labels* labels)
{
    for (const auto& entry : *labels) {
        delete entry.second.data();
    }
    labels->clear();
}

void clearTable(QGridLayout* table)
{
    while (table->count() != 0) {
        const std::unique_ptr<QLayoutItem> item(table->takeAt(0));
        delete item->widget();
    }
}

/// A label of the tool's text, which is never markup.
QLabel* createPlainLabel(const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

void setTextOf(QLabel* label, const QString& text)
{
    if (label != nullptr) {
        label->setText(text);
    }
}

} // namespace

MonitoringLeaf::MonitoringLeaf(QWidget* parent)
    : QWidget(parent)
    , intervalSpinBox(nullptr)
    , monitoringTimer(new QTimer(this))
{
    connect(monitoringTimer, SIGNAL(timeout()), this, SLOT(fillMonitoringTable()));

    auto* layout = new QGridLayout;
    layout->setSpacing(4);
    layout->setColumnStretch(1, 1);

    buildIntervalRow(layout);
    layout->setRowMinimumHeight(1, 20);
    layout->addWidget(new QLabel(QStringLiteral("Monitoring<hr />"), this), 2, 0, 1, 3);
    monitoringWidget = new QWidget(this);
    monitoringWidget->setObjectName(QStringLiteral("monitoringWidget"));
    layout->addWidget(monitoringWidget, 3, 0, 1, -1);
    layout->setRowStretch(4, 1);
    setLayout(layout);

    initialize();
}

MonitoringLeaf::~MonitoringLeaf() = default;

void MonitoringLeaf::buildIntervalRow(QGridLayout* layout)
{
    intervalSpinBox = new QSpinBox(this);
    intervalSpinBox->setObjectName(QStringLiteral("intervalSpinBox"));
    intervalSpinBox->setMinimum(5);
    intervalSpinBox->setMaximum(30);
    intervalSpinBox->setValue(10);
    onIntervalChanged(intervalSpinBox->value());
    connect(intervalSpinBox, SIGNAL(valueChanged(int)), this, SLOT(onIntervalChanged(int)));
    layout->addWidget(
        createFormLabel(QStringLiteral("Refresh interval (seconds)"), intervalSpinBox), 0, 0);
    layout->addWidget(intervalSpinBox, 0, 1);
}

Folio* MonitoringLeaf::getFolio() const
{
    return getAncestor<Folio>(*this);
}

KSBaseHandler* MonitoringLeaf::getKSBaseHandler() const
{
    const Folio* folio = getFolio();
    return folio != nullptr ? folio->getKSBaseHandler() : nullptr;
}

Orvex::Collection<std::string> MonitoringLeaf::getMonitoringChannels() const
{
    return Orvex::ListCollection<std::string>(monitoringChannels);
}

QLabel* MonitoringLeaf::getMonitoringVoltageLabel(const std::string& name) const
{
    return getLabelOf(monitoringVoltageLabels, name, "getMonitoringVoltageLabel", __LINE__);
}

QLabel* MonitoringLeaf::getMonitoringCurrentLabel(const std::string& name) const
{
    return getLabelOf(monitoringCurrentLabels, name, "getMonitoringCurrentLabel", __LINE__);
}

void MonitoringLeaf::generateMonitoringLabels()
{
    if (monitoringWidget == nullptr) {
        Orvex::raise(Orvex::Fatal("Null monitoringWidget"), "generateMonitoringLabels", sourceFile,
                     __LINE__);
    }
    // Emptied before the wait: a fill that goes on after it meets no deleted label.
    deleteLabels(&monitoringVoltageLabels);
    deleteLabels(&monitoringCurrentLabels);
    monitoringChannels.clear();

    const KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (ksBaseHandler == nullptr || ksBaseHandler->getTamsas().isEmpty()) {
        return;
    }
    const QPointer<MonitoringLeaf> self(this);
    const std::string reply = ksBaseHandler->getMonitor(0);
    if (self == nullptr) {
        return;
    }
    for (const MonitoredChannel& channel : parseMonitorReply(reply)) {
        monitoringChannels.push_back(channel.name);
        if (channel.voltage) {
            storeLabel(&monitoringVoltageLabels, channel.name, *channel.voltage);
        }
        if (channel.current) {
            storeLabel(&monitoringCurrentLabels, channel.name, *channel.current);
        }
    }
}

// A name that the reply repeats keeps its last label alone.
void MonitoringLeaf::storeLabel(Labels* labels, const std::string& name, const QString& text)
{
    QPointer<QLabel>& label = (*labels)[name];
    delete label.data();
    label = createPlainLabel(text, monitoringWidget);
}

void MonitoringLeaf::createMonitoringTable()
{
    if (monitoringWidget == nullptr) {
        Orvex::raise(Orvex::InvalidRequest("Null monitoringWidget"), "createMonitoringTable",
                     sourceFile, __LINE__);
    }
    QGridLayout* table = getTableLayout();
    clearTable(table);
    table->addWidget(new QLabel(QStringLiteral("<b>Channel</b>"), monitoringWidget), 0, 0);
    table->addWidget(new QLabel(QStringLiteral("<b>Voltage</b>"), monitoringWidget), 0, 1);
    table->addWidget(new QLabel(QStringLiteral("<b>Current</b>"), monitoringWidget), 0, 2);
    table->setRowMinimumHeight(1, 20);
    int row = 2;
    std::string name;
    for (Orvex::ForEachControler<std::string> loop(name, getMonitoringChannels()); loop.next();) {
        addChannelRow(table, row, name);
        ++row;
    }
}

QGridLayout* MonitoringLeaf::getTableLayout()
{
    if (auto* table = qobject_cast<QGridLayout*>(monitoringWidget->layout())) {
        return table;
    }
    delete monitoringWidget->layout();
    auto* table = new QGridLayout(monitoringWidget);
    table->setColumnMinimumWidth(0, 150);
    table->setColumnMinimumWidth(1, 150);
    table->setColumnMinimumWidth(2, 150);
    table->setColumnStretch(3, 1);
    return table;
}

void MonitoringLeaf::addChannelRow(QGridLayout* table, int row, const std::string& name)
{
    table->addWidget(createPlainLabel(Orvex::fromAscii(name), monitoringWidget), row, 0);
    if (QLabel* voltage = getMonitoringVoltageLabel(name)) {
        table->addWidget(voltage, row, 1);
    }
    if (QLabel* current = getMonitoringCurrentLabel(name)) {
        table->addWidget(current, row, 2);
    }
}

void MonitoringLeaf::initialize()
{
    const QPointer<MonitoringLeaf> self(this);
    generateMonitoringLabels();
    // The window may have been deleted in the wait.
    if (self != nullptr) {
        createMonitoringTable();
    }
}

void MonitoringLeaf::fillMonitoringTable()
{
    const KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (ksBaseHandler == nullptr || ksBaseHandler->getTamsas().isEmpty()) {
        return;
    }
    const QPointer<MonitoringLeaf> self(this);
    monitoringTimer->blockSignals(true);
    Orvex::console->print("Refreshing monitoring table", "");
    const std::string reply = ksBaseHandler->getMonitor(0);
    if (self == nullptr) {
        return;
    }
    for (const MonitoredChannel& channel : parseMonitorReply(reply)) {
        if (channel.voltage) {
            setTextOf(getMonitoringVoltageLabel(channel.name), *channel.voltage);
        }
        if (channel.current) {
            setTextOf(getMonitoringCurrentLabel(channel.name), *channel.current);
        }
    }
    monitoringTimer->blockSignals(false);
}

void MonitoringLeaf::onIntervalChanged(int value)
{
    monitoringTimer->setInterval(value * 1000);
}

void MonitoringLeaf::showEvent(QShowEvent* event)
{
    monitoringTimer->start();
    QWidget::showEvent(event);
}

void MonitoringLeaf::hideEvent(QHideEvent* event)
{
    monitoringTimer->stop();
    QWidget::hideEvent(event);
}

} // namespace Board

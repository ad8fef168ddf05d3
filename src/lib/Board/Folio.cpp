#include <Board/Folio.h>

#include <Board/Ancestor.h>
#include <Board/BasicLeaf.h>
#include <Board/BitstreamLeaf.h>
#include <Board/ExclusiveButtonGroup.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <Board/MonitoringLeaf.h>
#include <Board/PageIndex.h>
#include <Board/ScopeLeaf.h>
#include <Board/Tamsa.h>
#include <foundation/Encoding.h>
#include <foundation/ForEachControler.h>
#include <foundation/Theme.h>

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QMetaType>
#include <QPointer>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace Board
{

namespace
{

const QLatin1String noCardText("No card detected !");

} // namespace

Folio::Folio(QWidget* parent)
    : QWidget(parent)
    , basicLeaf(nullptr)
    , monitoringLeaf(nullptr)
    , bitstreamLeaf(nullptr)
    , scopeLeaf(nullptr)
    , buttonGroup(nullptr)
    , stackedWidget(nullptr)
    , cardComboBox(nullptr)
{
    qRegisterMetaType<std::string>("string");

    QWidget* buttonColumn = buildButtonColumn();
    connect(buttonGroup, SIGNAL(buttonClicked(int)), this, SLOT(setLeaf(int)));

    auto* layout = new QGridLayout;
    layout->setColumnStretch(2, 1);
    layout->addWidget(buttonColumn, 0, 0);
    layout->addWidget(stackedWidget, 0, 1, 1, 3);
    layout->setRowStretch(0, 1);

    cardComboBox = new QComboBox(this);
    cardComboBox->setObjectName(QStringLiteral("cardComboBox"));
    cardComboBox->setAccessibleName(QStringLiteral("Board"));
    cardComboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Orvex::theme->enrich(cardComboBox);
    refreshCardComboBox();
    // Only now: the first fill is not a person's choice.
    connect(cardComboBox, SIGNAL(currentIndexChanged(int)), this, SLOT(selectCard(int)));
    layout->addWidget(cardComboBox, 1, 0, 1, -1, Qt::AlignLeft);
    setLayout(layout);

    raiseLeaf(2);
}

Folio::~Folio() = default;

QWidget* Folio::buildButtonColumn()
{
    auto* buttonColumn = new QWidget(this);
    buttonColumn->setFixedWidth(124);
    auto* column = new QVBoxLayout(buttonColumn);
    column->setSpacing(12);
    column->setContentsMargins(0, 0, 12, 0);

    stackedWidget = new QStackedWidget(this);
    stackedWidget->setObjectName(QStringLiteral("stackedWidget"));
    buttonGroup = createExclusiveButtonGroup();

    addLeaf(basicLeaf, column, 0, tr("Basic"), "basic", true);
    addLeaf(monitoringLeaf, column, 1, tr("Monitoring"), "monitoring", false);
    addLeaf(bitstreamLeaf, column, 2, tr("Bitstream"), "bitstream", false);
    addLeaf(scopeLeaf, column, 3, tr("Scope"), "scope", false);
    column->addStretch(1);
    return buttonColumn;
}

template <class Leaf>
void Folio::addLeaf(Leaf*& leaf, QVBoxLayout* column, int id, const QString& text,
                    const std::string& iconName, bool checked)
{
    QToolButton* button = createButton(text, iconName, checked);
    column->addWidget(button);
    buttonGroup->addButton(button, id);
    leaf = new Leaf(this);
    stackedWidget->addWidget(leaf);
}

QToolButton* Folio::createButton(const QString& text, const std::string& iconName, bool checked)
{
    auto* button = new QToolButton;
    button->setObjectName(QString::fromStdString(iconName + "Button"));
    button->setText(text);
    button->setFixedWidth(100);
    button->setAutoRaise(true);
    button->setCheckable(true);
    button->setChecked(checked);
    button->setIconSize(QSize(32, 32));
    button->setIcon(Orvex::theme->getIcon(iconName));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    return button;
}

MainWindow* Folio::getMainWindow() const
{
    return getAncestor<MainWindow>(*this);
}

KSBaseHandler* Folio::getKSBaseHandler() const
{
    const MainWindow* mainWindow = getMainWindow();
    return mainWindow != nullptr ? mainWindow->getKSBaseHandler() : nullptr;
}

long Folio::getBasicIndex() const
{
    return getPageIndex<BasicLeaf>(*stackedWidget);
}

long Folio::getMonitoringIndex() const
{
    return getPageIndex<MonitoringLeaf>(*stackedWidget);
}

long Folio::getBitstreamIndex() const
{
    return getPageIndex<BitstreamLeaf>(*stackedWidget);
}

long Folio::getScopeIndex() const
{
    return getPageIndex<ScopeLeaf>(*stackedWidget);
}

long Folio::getCurrentIndex() const
{
    return stackedWidget->currentIndex();
}

void Folio::initialize()
{
    const QPointer<Folio> self(this);
    basicLeaf->initialize();
    // The window may have been deleted in the wait of the first page.
    if (self != nullptr) {
        monitoringLeaf->initialize();
    }
}

void Folio::enableLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->setEnabled(true);
    }
}

void Folio::disableLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->setEnabled(false);
    }
}

void Folio::raiseLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->click();
    }
}

void Folio::refreshCardComboBox()
{
    const QPointer<Folio> self(this);
    const bool hadNoCard = cardComboBox->currentText() == noCardText;
    cardComboBox->blockSignals(true);
    cardComboBox->clear();
    addCards();
    if (cardComboBox->count() == 0) {
        cardComboBox->addItem(noCardText);
    } else if (hadNoCard) {
        initialize();
    }
    if (self != nullptr) {
        cardComboBox->blockSignals(false);
    }
}

void Folio::addCards()
{
    const KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (ksBaseHandler == nullptr) {
        return;
    }
    Tamsa* tamsa{};
    for (Orvex::ForEachControler<Tamsa*> loop(tamsa, ksBaseHandler->getTamsas()); loop.next();) {
        cardComboBox->addItem(Orvex::fromAscii(tamsa->getName()));
    }
    if (const Tamsa* selected = ksBaseHandler->getSelectedTamsa()) {
        cardComboBox->setCurrentIndex(
            cardComboBox->findText(Orvex::fromAscii(selected->getName())));
    }
}

void Folio::setLeaf(int index)
{
    stackedWidget->setCurrentIndex(index);
}

void Folio::selectCard(int index)
{
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (ksBaseHandler == nullptr) {
        return;
    }
    const QPointer<Folio> self(this);
    // The items were made from the tool's bytes and go back as such.
    ksBaseHandler->select(Orvex::toAscii(cardComboBox->itemText(index)));
    if (self != nullptr) {
        initialize();
    }
}

} // namespace Board

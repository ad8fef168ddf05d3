#include <Board/ScopeLeaf.h>

#include <Board/Ancestor.h>
#include <Board/Folio.h>
#include <Board/FormLabel.h>
#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/Console.h>
#include <foundation/Fatal.h>
#include <foundation/ForEachControler.h>
#include <foundation/Raise.h>
#include <foundation/Text.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/ScopeLeaf";

const QLatin1String group("ScopeLeaf");
const QLatin1String immediateKey("immediate");
const QLatin1String frequencyKey("frequency");
const QLatin1String frequencyUnitKey("frequencyUnit");
const QLatin1String filenameKey("filename");
const QLatin1String megahertz("MHz");

void printLines(const std::string& reply)
{
    std::string line;
    for (Orvex::ForEachControler<std::string> loop(line, Orvex::getSplitted(reply, "\n"));
         loop.next();) {
        if (!line.empty()) {
            Orvex::console->print(line, "");
        }
    }
}

} // namespace

ScopeLeaf::ScopeLeaf(QWidget* parent)
    : QWidget(parent)
    , immediateCheckBox(nullptr)
    , frequencySpinBox(nullptr)
    , frequencyUnitComboBox(nullptr)
    , filenameLineEdit(nullptr)
    , initialized(false)
{
    auto* layout = new QGridLayout;
    layout->setSpacing(8);
    layout->setColumnStretch(2, 1);

    QSettings settings;
    settings.beginGroup(group);
    buildImmediateRow(layout, settings);
    buildFrequencyRow(layout, settings);
    buildFilenameRow(layout, settings);
    layout->setRowStretch(3, 1);

    auto* captureButton = new QPushButton(QStringLiteral("Capture"), this);
    captureButton->setObjectName(QStringLiteral("captureButton"));
    layout->addWidget(captureButton, 4, 1, 1, -1, Qt::AlignRight);
    connect(captureButton, SIGNAL(pressed()), this, SLOT(onCapture()));
    setLayout(layout);
    initialize();
}

ScopeLeaf::~ScopeLeaf()
{
    saveSettings();
}

void ScopeLeaf::buildImmediateRow(QGridLayout* layout, const QSettings& settings)
{
    immediateCheckBox = new QCheckBox(this);
    immediateCheckBox->setObjectName(QStringLiteral("immediateCheckBox"));
    if (settings.value(immediateKey).toBool()) {
        immediateCheckBox->setCheckState(Qt::Checked);
    }
    layout->addWidget(createFormLabel(QStringLiteral("Immediate"), immediateCheckBox), 0, 0);
    layout->addWidget(immediateCheckBox, 0, 1);
}

void ScopeLeaf::buildFrequencyRow(QGridLayout* layout, const QSettings& settings)
{
    frequencySpinBox = new QSpinBox(this);
    frequencySpinBox->setObjectName(QStringLiteral("frequencySpinBox"));
    // The range comes first, so that it pulls a stored value in.
    frequencySpinBox->setRange(1, 999);
    frequencySpinBox->setValue(settings.value(frequencyKey).toInt());

    frequencyUnitComboBox = new QComboBox(this);
    frequencyUnitComboBox->setObjectName(QStringLiteral("frequencyUnitComboBox"));
    frequencyUnitComboBox->setAccessibleName(QStringLiteral("Frequency unit"));
    frequencyUnitComboBox->addItem(megahertz);
    const int unit = frequencyUnitComboBox->findText(settings.value(frequencyUnitKey).toString());
    if (unit >= 0) {
        frequencyUnitComboBox->setCurrentIndex(unit);
    }

    layout->addWidget(createFormLabel(QStringLiteral("Capture frequency"), frequencySpinBox), 1, 0);
    layout->addWidget(frequencySpinBox, 1, 1);
    layout->addWidget(frequencyUnitComboBox, 1, 2, Qt::AlignLeft);
}

void ScopeLeaf::buildFilenameRow(QGridLayout* layout, const QSettings& settings)
{
    filenameLineEdit = new QLineEdit(this);
    filenameLineEdit->setObjectName(QStringLiteral("filenameLineEdit"));
    filenameLineEdit->setText(settings.value(filenameKey).toString());
    layout->addWidget(createFormLabel(QStringLiteral("File name"), filenameLineEdit), 2, 0);
    layout->addWidget(filenameLineEdit, 2, 1);
}

Folio* ScopeLeaf::getFolio() const
{
    return getAncestor<Folio>(*this);
}

KSBaseHandler* ScopeLeaf::getKSBaseHandler() const
{
    const Folio* folio = getFolio();
    return folio != nullptr ? folio->getKSBaseHandler() : nullptr;
}

void ScopeLeaf::initialize()
{
    initialized = false;
}

void ScopeLeaf::saveSettings()
{
    QSettings settings;
    settings.beginGroup(group);
    settings.setValue(immediateKey, immediateCheckBox->checkState() == Qt::Checked);
    settings.setValue(frequencyKey, frequencySpinBox->value());
    settings.setValue(frequencyUnitKey, frequencyUnitComboBox->currentText());
    settings.setValue(filenameKey, filenameLineEdit->text());
    settings.endGroup();
    settings.sync();
}

// The frequency as the tool reads it: the number as it was entered, and the exponent of its unit.
std::string ScopeLeaf::getFrequency() const
{
    if (frequencyUnitComboBox->currentText() != megahertz) {
        Orvex::raise(Orvex::Fatal("Should not be here"), "onCapture", sourceFile, __LINE__);
    }
    return Orvex::getLabel(frequencySpinBox->value()) + "E6";
}

bool ScopeLeaf::isReady(const std::string& filename, const std::string& frequency) const
{
    const char* complaint = nullptr;
    const KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (filename.empty()) {
        complaint = "Please specify a filename";
    } else if (frequency.empty()) {
        complaint = "Please specify a frequency";
    } else if (ksBaseHandler == nullptr || ksBaseHandler->getTamsas().getCount() == 0) {
        complaint = "No board connected";
    }
    if (complaint != nullptr) {
        Orvex::console->error(complaint, "");
    }
    return complaint == nullptr;
}

void ScopeLeaf::onCapture()
{
    const std::string filename = Orvex::getLabel(filenameLineEdit->text());
    const std::string frequency = getFrequency();
    if (!isReady(filename, frequency)) {
        return;
    }
    std::string command = "ksscope capture " + filename + " " + frequency;
    if (immediateCheckBox->checkState() == Qt::Checked) {
        command += " immediate=1";
    }
    Orvex::console->print("Capturing in " + filename, "");
    Orvex::console->indent();
    printLines(getKSBaseHandler()->sendCommand(command));
    Orvex::console->unindent();
}

} // namespace Board

#include <Board/BasicLeaf.h>

#include <Board/Ancestor.h>
#include <Board/Folio.h>
#include <Board/FormLabel.h>
#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/Encoding.h>
#include <foundation/Text.h>
#include <foundation/Theme.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPointer>

namespace Board
{

BasicLeaf::BasicLeaf(QWidget* parent)
    : QWidget(parent)
    , modeComboBox(nullptr)
    , resetCheckBox(nullptr)
    , clockCheckBox(nullptr)
    , forceModeCheckBox(nullptr)
    , initializing(false)
{
    auto* layout = new QGridLayout;
    layout->setSpacing(8);
    layout->setColumnStretch(2, 1);

    buildModeRow(layout);
    layout->setRowMinimumHeight(1, 20);
    layout->addWidget(new QLabel(QStringLiteral("Service<hr />"), this), 2, 0, 1, 3);
    resetCheckBox = buildBitRow(layout, 3, SLOT(onReset(int)), QStringLiteral("Force reset"),
                                QStringLiteral("resetCheckBox"));
    clockCheckBox = buildBitRow(layout, 4, SLOT(onClock(int)), QStringLiteral("Force clock"),
                                QStringLiteral("clockCheckBox"));
    forceModeCheckBox = buildBitRow(layout, 5, SLOT(onForceMode(int)), QStringLiteral("Force mode"),
                                    QStringLiteral("forceModeCheckBox"));

    layout->setRowStretch(6, 1);
    setLayout(layout);
    initialize();
}

BasicLeaf::~BasicLeaf() = default;

void BasicLeaf::buildModeRow(QGridLayout* layout)
{
    modeComboBox = new QComboBox(this);
    modeComboBox->setObjectName(QStringLiteral("modeComboBox"));
    Orvex::theme->enrich(modeComboBox);
    modeComboBox->addItem(QStringLiteral("Master Serial"));
    modeComboBox->addItem(QStringLiteral("Jtag only"));
    modeComboBox->addItem(QStringLiteral("Master SPI"));
    modeComboBox->addItem(QStringLiteral("Master SPI + Vcc"));
    modeComboBox->addItem(QStringLiteral("Slave SpaceWire"));
    connect(modeComboBox, SIGNAL(currentIndexChanged(const QString&)), this,
            SLOT(onModeChange(const QString&)));
    layout->addWidget(createFormLabel(QStringLiteral("Mode"), modeComboBox), 0, 0);
    layout->addWidget(modeComboBox, 0, 1);
}

QCheckBox* BasicLeaf::buildBitRow(QGridLayout* layout, int row, const char* slot,
                                  const QString& text, const QString& name)
{
    auto* checkBox = new QCheckBox(this);
    checkBox->setObjectName(name);
    connect(checkBox, SIGNAL(stateChanged(int)), this, slot);
    layout->addWidget(createFormLabel(text, checkBox), row, 0);
    layout->addWidget(checkBox, row, 1);
    return checkBox;
}

Folio* BasicLeaf::getFolio() const
{
    return getAncestor<Folio>(*this);
}

KSBaseHandler* BasicLeaf::getKSBaseHandler() const
{
    const Folio* folio = getFolio();
    return folio != nullptr ? folio->getKSBaseHandler() : nullptr;
}

void BasicLeaf::initialize()
{
    const QPointer<BasicLeaf> self(this);
    // A second board may be picked in the waits of a first load: the inner load must not unmute the
    // outer one, which still has to write the widgets.
    const bool wasInitializing = initializing;
    initializing = true;
    load();
    if (self != nullptr) {
        initializing = wasInitializing;
    }
}

void BasicLeaf::load()
{
    const KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (ksBaseHandler == nullptr || ksBaseHandler->getTamsas().isEmpty()) {
        return;
    }
    // Each read waits, and the page may be deleted in the wait.
    const QPointer<BasicLeaf> self(this);
    const QString mode = Orvex::fromAscii(ksBaseHandler->getMode());
    if (self == nullptr) {
        return;
    }
    modeComboBox->setCurrentIndex(modeComboBox->findText(mode));
    resetCheckBox->setChecked(ksBaseHandler->getResetBit());
    clockCheckBox->setChecked(ksBaseHandler->getClockBit());
    const bool forceBit = ksBaseHandler->getForceBit();
    if (self != nullptr) {
        forceModeCheckBox->setChecked(forceBit);
    }
}

void BasicLeaf::setBit(void (KSBaseHandler::*set)(bool), int state)
{
    if (initializing) {
        return;
    }
    if (KSBaseHandler* ksBaseHandler = getKSBaseHandler()) {
        (ksBaseHandler->*set)(state == Qt::Checked);
    }
}

void BasicLeaf::onReset(int state)
{
    setBit(&KSBaseHandler::setResetBit, state);
}

void BasicLeaf::onClock(int state)
{
    setBit(&KSBaseHandler::setClockBit, state);
}

void BasicLeaf::onForceMode(int state)
{
    setBit(&KSBaseHandler::setForceBit, state);
}

void BasicLeaf::onModeChange(const QString& text)
{
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (initializing || ksBaseHandler == nullptr) {
        return;
    }
    const QPointer<BasicLeaf> self(this);
    ksBaseHandler->setMode(Orvex::getLabel(text));
    if (self != nullptr) {
        initialize();
    }
}

} // namespace Board

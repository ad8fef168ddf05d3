#include <Board/PowerLeaf.h>

#include <Board/FormLabel.h>
#include <foundation/Theme.h>

#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

namespace Board
{

namespace
{

void addSlotGroup(QTreeWidget* tree, const QString& name, const QStringList& slotNames)
{
    auto* group = new QTreeWidgetItem(tree, QStringList(name));
    for (const QString& slotName : slotNames) {
        new QTreeWidgetItem(group, QStringList(slotName));
    }
}

} // namespace

PowerLeaf::PowerLeaf(QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QGridLayout;
    layout->setSpacing(8);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(4, 1);

    layout->addWidget(createSlotTree(), 0, 0, -1, 1);
    layout->addWidget(new QLabel(QStringLiteral("Power supply details<hr />"), this), 0, 1, 1, 4);
    buildSourceRows(layout);
    buildValueRow(layout, 3, QStringLiteral("Voltage (V)"), QStringLiteral("voltageSpinBox"), 3.3);
    buildValueRow(layout, 4, QStringLiteral("Current limit (A)"),
                  QStringLiteral("currentLimitSpinBox"), 2.0);
    buildSequenceRows(layout);
    setLayout(layout);
}

PowerLeaf::~PowerLeaf() = default;

QWidget* PowerLeaf::createSlotTree()
{
    auto* tree = new QTreeWidget(this);
    tree->setObjectName(QStringLiteral("slotTree"));
    tree->setAccessibleName(QStringLiteral("Power supply slots"));
    Orvex::theme->enrich(tree);
    tree->setHeaderHidden(true);
    addSlotGroup(tree, QStringLiteral("Fixed slots"),
                 {QStringLiteral("VCore"), QStringLiteral("VddIO")});
    addSlotGroup(tree, QStringLiteral("Extendable slots"),
                 {QStringLiteral("V1.8"), QStringLiteral("V2.5")});
    tree->expandAll();
    return tree;
}

void PowerLeaf::buildSourceRows(QGridLayout* layout)
{
    auto* internalButton = new QRadioButton(QStringLiteral("Internal"), this);
    internalButton->setObjectName(QStringLiteral("internalButton"));
    internalButton->setChecked(true);
    auto* externalButton = new QRadioButton(QStringLiteral("External"), this);
    externalButton->setObjectName(QStringLiteral("externalButton"));
    auto* sourceGroup = new QButtonGroup(this);
    sourceGroup->addButton(internalButton);
    sourceGroup->addButton(externalButton);
    layout->addWidget(new QLabel(QStringLiteral("Source"), this), 1, 1);
    layout->addWidget(internalButton, 1, 2);
    layout->addWidget(externalButton, 1, 3);

    auto* gpibComboBox = new QComboBox(this);
    gpibComboBox->setObjectName(QStringLiteral("gpibComboBox"));
    Orvex::theme->enrich(gpibComboBox);
    gpibComboBox->addItem(QStringLiteral("Alim 1 GPIB@3"));
    layout->addWidget(createFormLabel(QStringLiteral("GPIB select"), gpibComboBox), 2, 1);
    layout->addWidget(gpibComboBox, 2, 2, 1, 2);
}

void PowerLeaf::buildValueRow(QGridLayout* layout, int row, const QString& text,
                              const QString& name, double value)
{
    auto* spinBox = new QDoubleSpinBox(this);
    spinBox->setObjectName(name);
    spinBox->setMinimum(0.0);
    spinBox->setValue(value);
    layout->addWidget(createFormLabel(text, spinBox), row, 1);
    layout->addWidget(spinBox, row, 2, 1, 2);
}

void PowerLeaf::buildSequenceRows(QGridLayout* layout)
{
    layout->setRowMinimumHeight(5, 20);
    layout->addWidget(new QLabel(QStringLiteral("Power sequence<hr />"), this), 6, 1, 1, 4);
    layout->setRowStretch(7, 1);
    auto* powerButton = new QPushButton(QStringLiteral("Power"), this);
    powerButton->setObjectName(QStringLiteral("powerButton"));
    powerButton->setCheckable(true);
    layout->addWidget(powerButton, 8, 4, Qt::AlignRight);
}

} // namespace Board

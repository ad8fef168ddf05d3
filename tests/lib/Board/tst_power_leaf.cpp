#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/PowerLeaf.h>

#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTreeWidget>

using Board::PowerLeaf;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::getNamed;
using Test::getOnly;
using Test::Panel;

class TestPowerLeaf : public QObject
{
    Q_OBJECT

private slots:
    void theFormStandsInItsGrid();
    void theTreeShowsTheSlots();
    void aNewPageOpensWithItsFixedValues();
    void theSourcesExcludeEachOther();
    void theValuesHaveALowerBoundAlone();
    void theControlsAreInert();
    void nothingOutlivesThePage();
    void thePanelHasNoSuchPage();
};

void TestPowerLeaf::theFormStandsInItsGrid()
{
    const PowerLeaf leaf(nullptr);
    QCOMPARE(Test::describeGrid(leaf), QStringList({
                                           "0,0 9x1 QTreeWidget slotTree",
                                           "0,1 1x4 QLabel 'Power supply details<hr />'",
                                           "1,1 1x1 QLabel 'Source'",
                                           "1,2 1x1 QRadioButton 'Internal'",
                                           "1,3 1x1 QRadioButton 'External'",
                                           "2,1 1x1 QLabel 'GPIB select'",
                                           "2,2 1x2 QComboBox gpibComboBox",
                                           "3,1 1x1 QLabel 'Voltage (V)'",
                                           "3,2 1x2 QDoubleSpinBox voltageSpinBox",
                                           "4,1 1x1 QLabel 'Current limit (A)'",
                                           "4,2 1x2 QDoubleSpinBox currentLimitSpinBox",
                                           "6,1 1x4 QLabel 'Power sequence<hr />'",
                                           "8,4 1x1 right QPushButton 'Power'",
                                       }));
    QCOMPARE(Test::describeMetrics(leaf), QStringList({"spacing: 8", "column stretch 4: 1",
                                                       "row minimum 5: 20", "row stretch 7: 1"}));
    QCOMPARE(Test::getMargins(leaf), QList<int>({0, 0, 0, 0}));
}

void TestPowerLeaf::theTreeShowsTheSlots()
{
    const PowerLeaf leaf(nullptr);
    const auto* tree = getOnly<QTreeWidget>(leaf);
    QVERIFY(tree->isHeaderHidden());
    // The theme has restyled the tree.
    QVERIFY(tree->uniformRowHeights());
    QStringList entries;
    for (int index = 0; index < tree->topLevelItemCount(); ++index) {
        const QTreeWidgetItem* group = tree->topLevelItem(index);
        QVERIFY(group->isExpanded());
        entries += group->text(0);
        for (int child = 0; child < group->childCount(); ++child) {
            entries += "  " + group->child(child)->text(0);
        }
    }
    QCOMPARE(entries, QStringList({"Fixed slots", "  VCore", "  VddIO", "Extendable slots",
                                   "  V1.8", "  V2.5"}));
}

void TestPowerLeaf::aNewPageOpensWithItsFixedValues()
{
    const PowerLeaf leaf(nullptr);
    QVERIFY(getNamed<QRadioButton>(leaf, "internalButton")->isChecked());
    QVERIFY(!getNamed<QRadioButton>(leaf, "externalButton")->isChecked());
    QVERIFY(Test::isEnriched(*getOnly<QComboBox>(leaf)));
    QCOMPARE(getOnly<QComboBox>(leaf)->count(), 1);
    QCOMPARE(getOnly<QComboBox>(leaf)->currentText(), QString("Alim 1 GPIB@3"));
    QCOMPARE(getNamed<QDoubleSpinBox>(leaf, "voltageSpinBox")->value(), 3.3);
    QCOMPARE(getNamed<QDoubleSpinBox>(leaf, "currentLimitSpinBox")->value(), 2.0);
    QVERIFY(getOnly<QPushButton>(leaf)->isCheckable());
    QVERIFY(!getOnly<QPushButton>(leaf)->isChecked());
}

void TestPowerLeaf::theSourcesExcludeEachOther()
{
    const PowerLeaf leaf(nullptr);
    const auto* group = getOnly<QButtonGroup>(leaf);
    QCOMPARE(group->parent(), &leaf);
    QCOMPARE(group->buttons().size(), 2);
    auto* internalButton = getNamed<QRadioButton>(leaf, "internalButton");
    getNamed<QRadioButton>(leaf, "externalButton")->click();
    QVERIFY(!internalButton->isChecked());
    internalButton->click();
    QVERIFY(internalButton->isChecked());
    QVERIFY(!getNamed<QRadioButton>(leaf, "externalButton")->isChecked());
}

void TestPowerLeaf::theValuesHaveALowerBoundAlone()
{
    const PowerLeaf leaf(nullptr);
    const QDoubleSpinBox plain;
    for (const char* name : {"voltageSpinBox", "currentLimitSpinBox"}) {
        const auto* spinBox = getNamed<QDoubleSpinBox>(leaf, name);
        QCOMPARE(spinBox->minimum(), 0.0);
        QCOMPARE(spinBox->maximum(), plain.maximum());
        QCOMPARE(spinBox->decimals(), plain.decimals());
        QCOMPARE(spinBox->singleStep(), plain.singleStep());
    }
}

void TestPowerLeaf::theControlsAreInert()
{
    Bench bench;
    bench.setScenario(Bench::board("KS-Dev A", "selected = true"));
    Panel panel;
    // As an application would place it.
    auto* leaf = new PowerLeaf(panel.getWindow());
    QCOMPARE(leaf->metaObject()->methodCount(), leaf->metaObject()->methodOffset());
    leaf->show();
    Test::takeCommands(&bench);
    ConsoleRecorder console;
    const QStringList keys = QSettings().allKeys();

    auto* powerButton = getOnly<QPushButton>(*leaf);
    powerButton->click();
    QVERIFY(powerButton->isChecked());
    powerButton->click();
    QVERIFY(!powerButton->isChecked());
    getNamed<QRadioButton>(*leaf, "externalButton")->click();
    getNamed<QDoubleSpinBox>(*leaf, "voltageSpinBox")->setValue(1.2);
    getNamed<QDoubleSpinBox>(*leaf, "currentLimitSpinBox")->setValue(0.5);
    QCoreApplication::processEvents();
    QCOMPARE(Test::takeCommands(&bench), QStringList());
    QCOMPARE(console.getLines(), QStringList());
    delete leaf;
    QCOMPARE(QSettings().allKeys(), keys);
}

void TestPowerLeaf::nothingOutlivesThePage()
{
    {
        const PowerLeaf leaf(nullptr);
        getNamed<QRadioButton>(leaf, "externalButton")->click();
        getNamed<QDoubleSpinBox>(leaf, "voltageSpinBox")->setValue(1.2);
        getOnly<QPushButton>(leaf)->click();
    }
    aNewPageOpensWithItsFixedValues();
}

void TestPowerLeaf::thePanelHasNoSuchPage()
{
    Bench bench;
    Panel panel;
    QVERIFY(panel.find<PowerLeaf>() == nullptr);
}

KESTOBOARD_TEST_MAIN(TestPowerLeaf)

#include "tst_power_leaf.moc"

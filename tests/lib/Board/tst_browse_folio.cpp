#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/BitstreamDelegate.h>
#include <Board/BrowseFolio.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Fatal.h>
#include <foundation/Theme.h>

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHoverEvent>
#include <QSettings>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QToolButton>
#include <QTreeView>

#include <limits>
#include <memory>

using Board::BrowseFolio;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::getNamed;

using RecentWidget = Board::BrowseFolio::RecentWidget;

namespace
{

const QString key = "recentLoadList";

RecentWidget* getRecent(const BrowseFolio& folio)
{
    return static_cast<RecentWidget*>(getNamed<QListWidget>(folio, "recentWidget"));
}

Zandu::FileSystemBrowser* getBrowser(const BrowseFolio& folio)
{
    return getNamed<Zandu::FileSystemBrowser>(folio, "fileSystemBrowser");
}

QStackedWidget* getStack(const BrowseFolio& folio)
{
    return folio.findChild<QStackedWidget*>("stackedWidget", Qt::FindDirectChildrenOnly);
}

QStringList getPaths(const QListWidget& list)
{
    QStringList paths;
    for (int row = 0; row < list.count(); ++row) {
        paths += list.item(row)->data(Qt::UserRole).toString();
    }
    return paths;
}

QPoint getCenter(const QListWidget& list, int row)
{
    return list.visualItemRect(list.item(row)).center();
}

QStringList getOffered(const BrowseFolio& folio)
{
    const QAbstractItemModel* model = getBrowser(folio)->findChild<QTreeView*>()->model();
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row) {
        names += model->index(row, 0).data(Qt::DisplayRole).toString();
    }
    names.sort();
    return names;
}

} // namespace

class TestBrowseFolio : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Zandu::application->leafIndexDisabled = false; }

    void theRowAndTheStackStandInTheGrid();
    void theButtonsStandInTheirRow_data();
    void theButtonsStandInTheirRow();
    void theSlotsStandInTheirOrder();
    void aMadeButtonHasNoParentAndItsCheckedState();
    void theRecentPageShowsAtTheStart();
    void theButtonsChangeThePage();
    void aNumberWithoutAButtonDoesNothing_data();
    void aNumberWithoutAButtonDoesNothing();
    void aDisabledButtonLeavesThePageReachable();
    void disabledPageIndicesAreMinusOne();
    void thePageIndicesAreLookedUpAtEachCall();

    void theRecentListLooksAsItShould();
    void aRowHoldsTheFileInItsRoles();
    void theRowsStandInTheOrderOfTheList();
    void withoutStoredFilesTheListIsEmpty();
    void aFileThatHasGoneHasNoRowUntilItIsBack();
    void equalNamesInTwoDirectoriesAreTwoRows();
    void aStoredDirectoryHasARow();
    void nonsenseInTheSettingsGivesNoRows_data();
    void nonsenseInTheSettingsGivesNoRows();
    void aDamagedSettingsFileGivesNoRows();
    void theSelectedRowIsItsPath();
    void twoSelectedRowsAreFatal();
    void movingTheMouseDoesNotDragTheSelection();
    void theFillOfACardFollowsThePointerAndTheSelection();

    void aClickOnARowEchoesItsName();
    void theNameDecidesWhatIsEchoed_data();
    void theNameDecidesWhatIsEchoed();
    void aClickOnNothingIsSilent();
    void theBrowserOffersBitstreamFiles_data();
    void theBrowserOffersBitstreamFiles();
    void theBrowserStandsOnTheWorkingDirectory();
};

void TestBrowseFolio::init()
{
    QSettings().clear();
}

void TestBrowseFolio::theRowAndTheStackStandInTheGrid()
{
    const BrowseFolio folio(nullptr);
    QCOMPARE(Test::describeGrid(folio),
             QStringList({"0,0 1x1 QWidget ", "1,0 1x1 QStackedWidget stackedWidget"}));
    QCOMPARE(Test::describeMetrics(folio).mid(1), QStringList("row stretch 1: 1"));

    const QWidget* row = getNamed<QToolButton>(folio, "recentButton")->parentWidget();
    const auto* layout = qobject_cast<const QHBoxLayout*>(row->layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(row->parentWidget(), &folio);
    QCOMPARE(layout->spacing(), 12);
    QCOMPARE(Test::getMargins(*row), QList<int>({0, 0, 12, 0}));
    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->itemAt(0)->widget(), getNamed<QToolButton>(folio, "recentButton"));
    QCOMPARE(layout->itemAt(1)->widget(), getNamed<QToolButton>(folio, "browseButton"));
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->stretch(1), 0);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::Alignment());
    QVERIFY(layout->itemAt(2)->spacerItem() != nullptr);
    QCOMPARE(layout->stretch(2), 1);
}

void TestBrowseFolio::theButtonsStandInTheirRow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << "recentButton"
                       << "Recent";
    QTest::newRow("1") << "browseButton"
                       << "Browse";
}

void TestBrowseFolio::theButtonsStandInTheirRow()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    const int id = QString(QTest::currentDataTag()).toInt();
    const BrowseFolio folio(nullptr);
    const auto* button = folio.findChild<QToolButton*>(name);
    QVERIFY(button != nullptr);
    QCOMPARE(button->text(), text);
    QVERIFY(button->autoRaise());
    QVERIFY(button->isCheckable());
    QCOMPARE(button->isChecked(), id == 0);
    QCOMPARE(button->iconSize(), QSize(24, 24));
    QVERIFY(!button->icon().isNull());
    QCOMPARE(button->icon().cacheKey(),
             Orvex::theme->getIcon(text.toLower().toStdString()).cacheKey());
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QCOMPARE(button->group()->checkedId(), 0);
    QCOMPARE(button->group()->buttons().size(), 2);
    QVERIFY(button->group()->button(id) == button);
    QVERIFY(button->group()->exclusive());
    QVERIFY(button->group()->parent() == nullptr);
}

void TestBrowseFolio::theSlotsStandInTheirOrder()
{
    QCOMPARE(Test::describeMethods(BrowseFolio::staticMetaObject),
             QStringList({"public slot setLeaf(int)", "private slot onItemClicked(QModelIndex)",
                          "private slot onItemClicked(QListWidgetItem*)"}));
}

void TestBrowseFolio::aMadeButtonHasNoParentAndItsCheckedState()
{
    BrowseFolio folio(nullptr);
    for (const bool isChecked : {false, true}) {
        const std::unique_ptr<QToolButton> button(
            folio.createButton("A page", "browse", isChecked));
        QVERIFY(button->parent() == nullptr);
        QVERIFY(button->group() == nullptr);
        QCOMPARE(button->text(), QString("A page"));
        QCOMPARE(button->isChecked(), isChecked);
    }
}

void TestBrowseFolio::theRecentPageShowsAtTheStart()
{
    const BrowseFolio folio(nullptr);
    QCOMPARE(folio.getCurrentIndex(), 0L);
    QCOMPARE(folio.getRecentIndex(), 0L);
    QCOMPARE(folio.getBrowseIndex(), 1L);
    QCOMPARE(getStack(folio)->count(), 2);
    QCOMPARE(getStack(folio)->widget(0), getRecent(folio));
    QCOMPARE(getStack(folio)->widget(1), getBrowser(folio));
}

void TestBrowseFolio::theButtonsChangeThePage()
{
    BrowseFolio folio(nullptr);
    getNamed<QToolButton>(folio, "browseButton")->click();
    QCOMPARE(folio.getCurrentIndex(), 1L);
    QVERIFY(!getNamed<QToolButton>(folio, "recentButton")->isChecked());
    folio.raiseLeaf(0);
    QCOMPARE(folio.getCurrentIndex(), 0L);
    folio.raiseLeaf(1);
    QCOMPARE(folio.getCurrentIndex(), 1L);
    folio.setLeaf(0);
    QCOMPARE(folio.getCurrentIndex(), 0L);
}

void TestBrowseFolio::aNumberWithoutAButtonDoesNothing_data()
{
    QTest::addColumn<qulonglong>("number");
    QTest::newRow("2") << 2ULL;
    QTest::newRow("2 to the 32nd and 1, which an int would take for 1") << 0x100000001ULL;
    QTest::newRow("the largest") << qulonglong(std::numeric_limits<unsigned long>::max());
}

void TestBrowseFolio::aNumberWithoutAButtonDoesNothing()
{
    QFETCH(qulonglong, number);
    BrowseFolio folio(nullptr);
    folio.raiseLeaf(static_cast<unsigned long>(number));
    folio.disableLeaf(static_cast<unsigned long>(number));
    QCOMPARE(folio.getCurrentIndex(), 0L);
    QVERIFY(getNamed<QToolButton>(folio, "browseButton")->isEnabled());
    folio.enableLeaf(static_cast<unsigned long>(number));
}

void TestBrowseFolio::aDisabledButtonLeavesThePageReachable()
{
    BrowseFolio folio(nullptr);
    folio.disableLeaf(1);
    QVERIFY(!getNamed<QToolButton>(folio, "browseButton")->isEnabled());
    folio.raiseLeaf(1);
    QCOMPARE(folio.getCurrentIndex(), 0L);
    folio.setLeaf(1);
    QCOMPARE(folio.getCurrentIndex(), 1L);
    folio.enableLeaf(1);
    QVERIFY(getNamed<QToolButton>(folio, "browseButton")->isEnabled());
}

void TestBrowseFolio::disabledPageIndicesAreMinusOne()
{
    BrowseFolio folio(nullptr);
    Zandu::application->leafIndexDisabled = true;
    for (const int page : {0, 1}) {
        folio.setLeaf(page);
        QCOMPARE(folio.getRecentIndex(), -1L);
        QCOMPARE(folio.getBrowseIndex(), -1L);
        QCOMPARE(folio.getCurrentIndex(), static_cast<long>(page));
    }
}

void TestBrowseFolio::thePageIndicesAreLookedUpAtEachCall()
{
    const BrowseFolio folio(nullptr);
    getStack(folio)->insertWidget(0, new QListWidget);
    QCOMPARE(folio.getRecentIndex(), 1L);
    QCOMPARE(folio.getBrowseIndex(), 2L);
    getStack(folio)->removeWidget(getBrowser(folio));
    QCOMPARE(folio.getBrowseIndex(), -1L);
}

void TestBrowseFolio::theRecentListLooksAsItShould()
{
    const BrowseFolio folio(nullptr);
    const RecentWidget* list = getRecent(folio);
    QCOMPARE(list->spacing(), 12);
    QVERIFY(list->testAttribute(Qt::WA_MouseTracking));
    QVERIFY(list->uniformItemSizes());
    QCOMPARE(list->movement(), QListView::Static);
    QCOMPARE(list->viewMode(), QListView::IconMode);
    QCOMPARE(list->resizeMode(), QListView::Adjust);
    QCOMPARE(list->selectionMode(), QAbstractItemView::SingleSelection);
    const auto* delegate = dynamic_cast<Board::BitstreamDelegate*>(list->itemDelegate());
    QVERIFY(delegate != nullptr);
    QCOMPARE(delegate->parent(), list);
    // Neither has a meta-object of its own.
    QCOMPARE(QString(list->metaObject()->className()), QString("QListWidget"));
    QCOMPARE(QString(delegate->metaObject()->className()), QString("QStyledItemDelegate"));
}

void TestBrowseFolio::aRowHoldsTheFileInItsRoles()
{
    const Bench bench;
    const QString path = bench.writeFile("first light.ksb", "bits");
    QSettings().setValue(key, QStringList(path));
    const BrowseFolio folio(nullptr);
    QCOMPARE(getRecent(folio)->count(), 1);
    const QListWidgetItem* item = getRecent(folio)->item(0);
    QCOMPARE(item->type(), 0);
    QCOMPARE(item->data(Qt::DisplayRole), QVariant("first light.ksb"));
    QCOMPARE(item->data(Qt::TextAlignmentRole), QVariant(4));
    const auto icon = item->data(Qt::DecorationRole).value<QIcon>();
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.cacheKey(), Orvex::theme->getIcon("recent").cacheKey());
    QCOMPARE(item->data(Qt::UserRole), QVariant(path));
    QCOMPARE(static_cast<int>(item->flags()), 33);
}

void TestBrowseFolio::theRowsStandInTheOrderOfTheList()
{
    const Bench bench;
    const QStringList paths = {bench.writeFile("z.ksb", ""), bench.writeFile("a.txt", ""),
                               bench.writeFile("m.bts", "")};
    QSettings().setValue(key, paths);
    const BrowseFolio folio(nullptr);
    QCOMPARE(getPaths(*getRecent(folio)), paths);
}

void TestBrowseFolio::withoutStoredFilesTheListIsEmpty()
{
    const BrowseFolio folio(nullptr);
    QCOMPARE(getRecent(folio)->count(), 0);
    QCOMPARE(getRecent(folio)->getSelectedItem(), std::string());
}

void TestBrowseFolio::aFileThatHasGoneHasNoRowUntilItIsBack()
{
    const Bench bench;
    const QStringList paths = {bench.writeFile("a.ksb", ""), bench.writeFile("b.ksb", "")};
    QSettings().setValue(key, paths);
    const BrowseFolio folio(nullptr);
    QFile::remove(paths[0]);
    // It does not watch the files.
    QCOMPARE(getPaths(*getRecent(folio)), paths);
    ConsoleRecorder console;
    getRecent(folio)->refresh();
    QCOMPARE(getPaths(*getRecent(folio)), paths.mid(1));
    QCOMPARE(QSettings().value(key).toStringList(), paths);
    bench.writeFile("a.ksb", "");
    getRecent(folio)->refresh();
    QCOMPARE(getPaths(*getRecent(folio)), paths);
    QCOMPARE(console.getLines(), QStringList());
}

void TestBrowseFolio::equalNamesInTwoDirectoriesAreTwoRows()
{
    const Bench bench;
    QVERIFY(QDir().mkpath(bench.getPath("one")) && QDir().mkpath(bench.getPath("two")));
    const QStringList paths = {bench.writeFile("one/same.ksb", ""),
                               bench.writeFile("two/same.ksb", "")};
    QSettings().setValue(key, paths);
    const BrowseFolio folio(nullptr);
    QCOMPARE(getPaths(*getRecent(folio)), paths);
    QCOMPARE(getRecent(folio)->item(0)->text(), QString("same.ksb"));
    QCOMPARE(getRecent(folio)->item(1)->text(), QString("same.ksb"));
}

void TestBrowseFolio::aStoredDirectoryHasARow()
{
    const Bench bench;
    QSettings().setValue(key, QStringList(bench.getPath("")));
    const BrowseFolio folio(nullptr);
    QCOMPARE(getPaths(*getRecent(folio)), QStringList(bench.getPath("")));
}

void TestBrowseFolio::nonsenseInTheSettingsGivesNoRows_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("a number") << QVariant(42);
    QTest::newRow("a text that is no path") << QVariant("nowhere");
    QTest::newRow("bytes") << QVariant(QByteArray("\xFF\x00\xFE", 3));
    QTest::newRow("a map") << QVariant(QVariantMap{{"a", 1}});
    QTest::newRow("empty texts") << QVariant(QStringList({"", ""}));
}

void TestBrowseFolio::nonsenseInTheSettingsGivesNoRows()
{
    QFETCH(QVariant, value);
    QSettings().setValue(key, value);
    const BrowseFolio folio(nullptr);
    QCOMPARE(getRecent(folio)->count(), 0);
}

void TestBrowseFolio::aDamagedSettingsFileGivesNoRows()
{
    const QString path = QSettings().fileName();
    QSettings().setValue(key, "x");
    QSettings().sync();
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QByteArray nonsense;
    for (int number = 0; number < 4096; ++number) {
        nonsense += static_cast<char>(number * 37 % 256);
    }
    file.write(nonsense + "\n[General\nrecentLoadList=@Variant(\\0\\0\\0\\xff");
    file.close();
    const BrowseFolio folio(nullptr);
    QCOMPARE(getRecent(folio)->count(), 0);
    QFile::remove(path);
}

void TestBrowseFolio::theSelectedRowIsItsPath()
{
    const Bench bench;
    const QString path = bench.writeFile(QString::fromUtf8("\xC3\xA9t\xC3\xA9.ksb"), "");
    QSettings().setValue(key, QStringList({bench.writeFile("a.ksb", ""), path}));
    const BrowseFolio folio(nullptr);
    QCOMPARE(getRecent(folio)->getSelectedItem(), std::string());
    getRecent(folio)->item(1)->setSelected(true);
    QCOMPARE(getRecent(folio)->getSelectedItem(), path.toStdString());
    // A single selection: another row takes it over.
    getRecent(folio)->setCurrentRow(0);
    QCOMPARE(getRecent(folio)->getSelectedItem(), bench.getPath("a.ksb").toStdString());
}

void TestBrowseFolio::twoSelectedRowsAreFatal()
{
    const Bench bench;
    QSettings().setValue(key,
                         QStringList({bench.writeFile("a.ksb", ""), bench.writeFile("b.ksb", "")}));
    const BrowseFolio folio(nullptr);
    getRecent(folio)->setSelectionMode(QAbstractItemView::MultiSelection);
    getRecent(folio)->selectAll();
    try {
        getRecent(folio)->getSelectedItem();
        QFAIL("no exception");
    } catch (const Orvex::Fatal& failure) {
        QCOMPARE(failure.getMessage().find("More than one selected item"), std::size_t(0));
        QCOMPARE(failure.getFunction(), std::string("getSelectedItem"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/BrowseFolio"));
    }
}

void TestBrowseFolio::movingTheMouseDoesNotDragTheSelection()
{
    const Bench bench;
    QSettings().setValue(key,
                         QStringList({bench.writeFile("a.ksb", ""), bench.writeFile("b.ksb", "")}));
    BrowseFolio folio(nullptr);
    folio.resize(800, 400);
    folio.show();
    QListWidget* list = getRecent(folio);
    QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier, getCenter(*list, 0));
    QVERIFY(list->item(0)->isSelected());
    const QPoint target = getCenter(*list, 1);
    QMouseEvent move(QEvent::MouseMove, target, list->viewport()->mapToGlobal(target), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &move);
    QMouseEvent aside(QEvent::MouseMove, QPoint(780, 300),
                      list->viewport()->mapToGlobal(QPoint(780, 300)), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &aside);
    QVERIFY(list->item(0)->isSelected());
    QVERIFY(!list->item(1)->isSelected());
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, getCenter(*list, 0));
}

void TestBrowseFolio::theFillOfACardFollowsThePointerAndTheSelection()
{
    const Bench bench;
    QSettings().setValue(key,
                         QStringList({bench.writeFile("a.ksb", ""), bench.writeFile("b.ksb", "")}));
    BrowseFolio folio(nullptr);
    folio.resize(800, 400);
    folio.show();
    QListWidget* list = getRecent(folio);
    list->setCurrentRow(0);
    const QColor plain = Orvex::theme->getColor("background");
    const QColor marked = Orvex::theme->getColor("button_checked");
    const auto getFill = [list](int row) {
        const QPoint corner = list->visualItemRect(list->item(row)).topLeft() + QPoint(3, 3);
        return list->viewport()->grab().toImage().pixelColor(corner);
    };
    const auto hover = [list](QEvent::Type type, const QPoint& from, const QPoint& to) {
        QHoverEvent event(type, to, from);
        QApplication::sendEvent(list->viewport(), &event);
    };
    const QPoint outside(-1, -1);
    QCOMPARE(getFill(0), marked);
    QCOMPARE(getFill(1), plain);

    hover(QEvent::HoverEnter, outside, getCenter(*list, 1));
    QCOMPARE(getFill(0), marked);
    QCOMPARE(getFill(1), marked);
    hover(QEvent::HoverMove, getCenter(*list, 1), getCenter(*list, 0));
    QCOMPARE(getFill(1), plain);
    hover(QEvent::HoverLeave, getCenter(*list, 0), outside);
    QCOMPARE(getFill(0), marked);
    QCOMPARE(getFill(1), plain);
    // The view asks for the hover events by itself.
    QVERIFY(list->viewport()->testAttribute(Qt::WA_Hover));
}

void TestBrowseFolio::aClickOnARowEchoesItsName()
{
    const Bench bench;
    QVERIFY(QDir().mkpath(bench.getPath("dir.ksb")));
    QSettings().setValue(key,
                         QStringList({bench.writeFile("a.ksb", ""), bench.writeFile("b.txt", "")}));
    BrowseFolio folio(nullptr);
    folio.resize(800, 400);
    folio.show();
    QListWidget* list = getRecent(folio);
    ConsoleRecorder console;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, getCenter(*list, 0));
    QCOMPARE(console.takeLines(), QStringList("Selecting bitstream file 'a.ksb'"));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, getCenter(*list, 1));
    QCOMPARE(console.takeLines(), QStringList());
}

void TestBrowseFolio::theNameDecidesWhatIsEchoed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isEchoed");
    QTest::newRow("ksb") << "name.ksb" << true;
    QTest::newRow("bbs") << "name.bbs" << true;
    QTest::newRow("bts") << "name.bts" << true;
    QTest::newRow("two suffixes") << "name.txt.ksb" << true;
    QTest::newRow("nothing before the dot") << ".ksb" << true;
    QTest::newRow("with a line end") << "na\nme.ksb" << true;
    QTest::newRow("accents") << QString::fromUtf8("\xC3\xA9t\xC3\xA9.ksb") << true;
    QTest::newRow("a lone half of a character") << QString(QChar(0xD800)) + ".ksb" << true;
    QTest::newRow("upper case") << "name.KSB" << false;
    QTest::newRow("no dot") << "nameksb" << false;
    QTest::newRow("another character for the dot") << "name_ksb" << false;
    QTest::newRow("packed") << "name.ksb.gz" << false;
    QTest::newRow("a longer suffix") << "name.ksbs" << false;
    QTest::newRow("a blank after it") << "name.ksb " << false;
    QTest::newRow("another suffix") << "name.txt" << false;
    QTest::newRow("empty") << "" << false;
}

void TestBrowseFolio::theNameDecidesWhatIsEchoed()
{
    QFETCH(QString, text);
    QFETCH(bool, isEchoed);
    const QStringList expected = isEchoed
                                     ? QStringList("Selecting bitstream file '" +
                                                   QString::fromStdString(text.toStdString()) + "'")
                                     : QStringList();
    for (const bool isDebug : {false, true}) {
        const Test::DebugMode debug(isDebug);
        const BrowseFolio folio(nullptr);
        ConsoleRecorder console;

        QListWidgetItem item(text);
        emit getRecent(folio)->itemClicked(&item);
        QCOMPARE(console.takeLines(), expected);

        QStandardItemModel model;
        model.appendRow(new QStandardItem(text));
        emit getBrowser(folio)->itemClicked(model.index(0, 0));
        QCOMPARE(console.takeLines(), expected);
    }
}

void TestBrowseFolio::aClickOnNothingIsSilent()
{
    const BrowseFolio folio(nullptr);
    ConsoleRecorder console;
    emit getRecent(folio)->itemClicked(nullptr);
    emit getBrowser(folio)->itemClicked(QModelIndex());
    QCOMPARE(console.getLines(), QStringList());
}

void TestBrowseFolio::theBrowserOffersBitstreamFiles_data()
{
    QTest::addColumn<bool>("isDebug");
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("plain") << false << QStringList({"a.ksb", "sub"});
    QTest::newRow("debug") << true << QStringList({"a.ksb", "b.bbs", "c.bts", "sub"});
}

void TestBrowseFolio::theBrowserOffersBitstreamFiles()
{
    QFETCH(bool, isDebug);
    QFETCH(QStringList, offered);
    const Bench bench;
    const Test::DebugMode debug(isDebug);
    for (const char* name : {"a.ksb", "b.bbs", "c.bts", "d.txt"}) {
        bench.writeFile(name, "");
    }
    QVERIFY(QDir().mkpath(bench.getPath("sub")));
    BrowseFolio folio(nullptr);
    folio.show();
    folio.raiseLeaf(1);
    QTRY_COMPARE(getOffered(folio), offered);
}

void TestBrowseFolio::theBrowserStandsOnTheWorkingDirectory()
{
    const Bench bench;
    const BrowseFolio folio(nullptr);
    QCOMPARE(getBrowser(folio)->getPath(), QDir::currentPath());
    QVERIFY(getBrowser(folio)->getSelectedItems().isEmpty());
}

KESTOBOARD_TEST_MAIN(TestBrowseFolio)

#include "tst_browse_folio.moc"

#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/KSBaseHandler.h>

#include <QDir>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>

#include <memory>
#include <stdexcept>

using Test::Bench;

/// The command files of the working directory.
class TestCommandFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void withoutFilesTheButtonIsHidden();
    void aFileShowsTheButtonAndBecomesTheDefault();
    void filesAreListedByNameIgnoringCase();
    void onlyThePatternIsOffered_data();
    void onlyThePatternIsOffered();
    void aSecondFileKeepsTheDefault();
    void theTimerRefreshesTheMenu();
    void aVanishedDefaultStaysAndIsRunInSilence();
    void theDefaultIsAnObjectOfItsOwn();
    void aRunPrintsAndSendsItsLines();
    void aLineIsNormalised_data();
    void aLineIsNormalised();
    void anEmptyFilePrintsItsHeaderOnly();
    void anUnreadableFileIsIgnoredButRemembered();
    void aNullActionIsIgnored();
    void theFaceChangesBeforeTheFirstCommand();
    void aRefusedCommandDoesNotStopTheFile();
    void anExceptionAbandonsTheRest();
    void aSecondFileRunsNestedInTheFirst();
    void anEntryOfTheMenuRunsItsFileOnce_data();
    void anEntryOfTheMenuRunsItsFileOnce();
    void aClickOnTheButtonRunsTheLastFileAgain();
    void theListOfActionsDoesNotGrow();
    void aNameWithAccentsIsPrinted();
    void binaryAndLargeFilesAreRunToTheirEnd();
    void manyFilesAreListed();
    void theMenuFollowsTheDirectory_data();
    void theMenuFollowsTheDirectory();

private:
    void makePanel()
    {
        panel = std::make_unique<Test::Panel>();
        for (QToolButton* const candidate :
             panel->find<QSplitter>()->widget(1)->findChildren<QToolButton*>(
                 QString(), Qt::FindDirectChildrenOnly)) {
            button = candidate;
        }
        bench->takeJournal();
        recorder->clear();
    }
    void refresh() { QMetaObject::invokeMethod(panel->getWindow(), "refreshFileButton"); }
    QStringList getNames() const
    {
        QStringList names;
        for (const QAction* const action : button->menu()->actions()) {
            names += action->text();
        }
        return names;
    }
    /// Triggers the entry of the menu as a click does.
    void launch(const QString& name)
    {
        for (QAction* const action : button->menu()->actions()) {
            if (action->text() == name) {
                emit button->triggered(action);
                return;
            }
        }
        QFAIL("no such entry");
    }

    /// Opens the menu of the button and takes an entry with the keyboard, as a person does.
    void choose(int entry)
    {
        Test::when(
            this, [this] { return button->menu()->isVisible(); },
            [this, entry] {
                for (int press = 0; press <= entry; ++press) {
                    QTest::keyClick(button->menu(), Qt::Key_Down);
                }
                QTest::keyClick(button->menu(), Qt::Key_Return);
            });
        button->showMenu();
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::DebugMode> debug;
    std::unique_ptr<Test::ConsoleRecorder> recorder;
    std::unique_ptr<Test::Panel> panel;
    QToolButton* button = nullptr;
};

void TestCommandFiles::init()
{
    bench = std::make_unique<Bench>();
    // Whatever is sent is answered by a bare mark; the listing knows no board.
    bench->setScenario(Bench::reply("", "COMMAND SUCCEEDED"));
    debug = std::make_unique<Test::DebugMode>(true);
    recorder = std::make_unique<Test::ConsoleRecorder>();
}

void TestCommandFiles::cleanup()
{
    bench->release();
    panel.reset();
    recorder.reset();
    debug.reset();
    bench.reset();
}

void TestCommandFiles::withoutFilesTheButtonIsHidden()
{
    makePanel();
    QVERIFY(button != nullptr);
    QVERIFY(button->isHidden());
    QCOMPARE(button->defaultAction(), nullptr);
    QCOMPARE(getNames(), QStringList());
}

void TestCommandFiles::aFileShowsTheButtonAndBecomesTheDefault()
{
    makePanel();
    bench->writeFile("a.cmd", "");
    refresh();
    QVERIFY(!button->isHidden());
    QCOMPARE(getNames(), QStringList({"a.cmd"}));
    QCOMPARE(button->defaultAction()->text(), QString("a.cmd"));
    QCOMPARE(button->text(), QString("a.cmd"));
    QFile::remove(bench->getPath("a.cmd"));
    refresh();
    QVERIFY(button->isHidden());
}

void TestCommandFiles::filesAreListedByNameIgnoringCase()
{
    for (const char* const name : {"b.cmd", "C.cmd", "a.cmd", "B2.cmd"}) {
        bench->writeFile(name, "");
    }
    makePanel();
    QCOMPARE(getNames(), QStringList({"a.cmd", "b.cmd", "B2.cmd", "C.cmd"}));
    QCOMPARE(button->defaultAction()->text(), QString("a.cmd"));
}

void TestCommandFiles::onlyThePatternIsOffered_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("plain") << "a.cmd" << true;
    QTest::newRow("another suffix") << "a.cmd.txt" << false;
    QTest::newRow("no suffix") << "cmd" << false;
    QTest::newRow("blanks") << "a b.cmd" << true;
    QTest::newRow("upper case") << "A.CMD" << true;
}

void TestCommandFiles::onlyThePatternIsOffered()
{
    QFETCH(QString, name);
    QFETCH(bool, isOffered);
    bench->writeFile(name, "");
    QVERIFY(QDir::current().mkdir("directory.cmd"));
    makePanel();
    QCOMPARE(getNames().contains(name), isOffered);
    QVERIFY(getNames().contains("directory.cmd"));
}

void TestCommandFiles::aSecondFileKeepsTheDefault()
{
    bench->writeFile("b.cmd", "");
    makePanel();
    bench->writeFile("a.cmd", "");
    refresh();
    QCOMPARE(getNames(), QStringList({"a.cmd", "b.cmd"}));
    QCOMPARE(button->defaultAction()->text(), QString("b.cmd"));
}

void TestCommandFiles::theTimerRefreshesTheMenu()
{
    makePanel();
    bench->writeFile("a.cmd", "");
    auto* const timer =
        panel->getWindow()->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    timer->start(1);
    QTRY_COMPARE(getNames(), QStringList({"a.cmd"}));
}

void TestCommandFiles::aVanishedDefaultStaysAndIsRunInSilence()
{
    bench->writeFile("a.cmd", "hello\n");
    makePanel();
    QFile::remove(bench->getPath("a.cmd"));
    refresh();
    QCOMPARE(button->defaultAction()->text(), QString("a.cmd"));
    button->defaultAction()->trigger();
    QCOMPARE(recorder->getLines(), QStringList());
    QCOMPARE(bench->takeJournal(), QStringList());
    // Others come: the button still offers the old default.
    bench->writeFile("b.cmd", "");
    refresh();
    QVERIFY(!button->isHidden());
    QCOMPARE(getNames(), QStringList({"b.cmd"}));
    QCOMPARE(button->defaultAction()->text(), QString("a.cmd"));
}

void TestCommandFiles::theDefaultIsAnObjectOfItsOwn()
{
    bench->writeFile("a.cmd", "");
    makePanel();
    refresh();
    QCOMPARE(getNames(), QStringList({"a.cmd"}));
    QVERIFY(button->defaultAction() != button->menu()->actions().first());
}

void TestCommandFiles::aRunPrintsAndSendsItsLines()
{
    bench->writeFile("a.cmd", "# a comment\nfirst\n\nsecond command\n");
    bench->setScenario(Bench::reply("", "reply\nCOMMAND SUCCEEDED"));
    makePanel();
    launch("a.cmd");
    QCOMPARE(bench->takeJournal(), QStringList({"first", "second command"}));
    QCOMPARE(recorder->getLines(),
             QStringList({"Executing file 'a.cmd'", "  Executing command 'first'", "  reply",
                          "  COMMAND SUCCEEDED", "  Executing command 'second command'", "  reply",
                          "  COMMAND SUCCEEDED"}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandFiles::aLineIsNormalised_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("sent");
    const QStringList nothing;
    QTest::newRow("empty line") << QByteArray("\n") << nothing;
    QTest::newRow("blanks and tabs") << QByteArray(" \t \n") << nothing;
    QTest::newRow("comment") << QByteArray("#board list\n") << nothing;
    QTest::newRow("comment after blanks") << QByteArray(" \t# x\n") << nothing;
    QTest::newRow("comments and blanks only") << QByteArray("# a\n\n  # b\n \n") << nothing;
    QTest::newRow("two blanks inside") << QByteArray("a  b\n") << QStringList{"a b"};
    QTest::newRow("blanks around") << QByteArray("  a\t\n") << QStringList{"a"};
    QTest::newRow("number sign later") << QByteArray("a # b\n") << QStringList{"a # b"};
    QTest::newRow("line ends of another system")
        << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"};
    QTest::newRow("no last line end") << QByteArray("a\nb") << QStringList{"a", "b"};
    QTest::newRow("quotes stay") << QByteArray("board set mode 'x y'\n")
                                 << QStringList{"board set mode 'x y'"};
    QTest::newRow("accents") << QByteArray("caf\u00e9 \u00e0\n") << QStringList{"caf\u00e9 \u00e0"};
}

void TestCommandFiles::aLineIsNormalised()
{
    QFETCH(QByteArray, content);
    bench->writeFile("a.cmd", content);
    makePanel();
    launch("a.cmd");
    QTEST(bench->takeJournal(), "sent");
}

void TestCommandFiles::anEmptyFilePrintsItsHeaderOnly()
{
    bench->writeFile("a.cmd", "");
    makePanel();
    launch("a.cmd");
    QCOMPARE(recorder->getLines(), QStringList({"Executing file 'a.cmd'"}));
    QCOMPARE(bench->takeJournal(), QStringList());
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandFiles::anUnreadableFileIsIgnoredButRemembered()
{
    bench->writeFile("a.cmd", "hello\n");
    bench->writeFile("gone.cmd", "hello\n");
    QVERIFY(QDir::current().mkdir("directory.cmd"));
    makePanel();
    QFile::remove(bench->getPath("gone.cmd"));
    for (const char* const name : {"directory.cmd", "gone.cmd"}) {
        launch(name);
        QCOMPARE(button->defaultAction()->text(), QString(name));
    }
    QCOMPARE(recorder->getLines(), QStringList());
    QCOMPARE(bench->takeJournal(), QStringList());
}

void TestCommandFiles::aNullActionIsIgnored()
{
    bench->writeFile("a.cmd", "hello\n");
    makePanel();
    const QAction* const before = button->defaultAction();
    emit button->triggered(nullptr);
    QCOMPARE(button->defaultAction(), before);
    QCOMPARE(recorder->getLines(), QStringList());
}

void TestCommandFiles::theFaceChangesBeforeTheFirstCommand()
{
    bench->writeFile("a.cmd", "");
    bench->writeFile("b.cmd", "hello\n");
    makePanel();
    QString face;
    connect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this,
            [&] { face = button->text(); });
    launch("b.cmd");
    disconnect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, nullptr);
    QCOMPARE(face, QString("b.cmd"));
}

void TestCommandFiles::aRefusedCommandDoesNotStopTheFile()
{
    bench->writeFile("a.cmd", "first\nsecond\n");
    bench->setScenario(Bench::reply("", "Error: no\nCOMMAND FAILED"));
    makePanel();
    launch("a.cmd");
    QCOMPARE(bench->takeJournal(), QStringList({"first", "second"}));
}

void TestCommandFiles::anExceptionAbandonsTheRest()
{
    bench->writeFile("a.cmd", "first\nsecond\nthird\n");
    makePanel();
    connect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, [this] {
        if (panel->getEngine()->getCommandHandlers().getFirst()->getCommand() == "second") {
            throw std::runtime_error("out of order");
        }
    });
    launch("a.cmd");
    disconnect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, nullptr);
    const QStringList lines = recorder->getLines();
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(3), QString("  Executing command 'second'"));
    QVERIFY(lines.at(4).startsWith("  E: Processing aborted [out of order]"));
    QVERIFY(lines.at(4).contains("onFileLaunch"));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandFiles::aSecondFileRunsNestedInTheFirst()
{
    bench->writeFile("a.cmd", "board get mode\nlast of a\n");
    bench->writeFile("b.cmd", "of b\n");
    bench->setScenario(bench->hold("board get mode"));
    makePanel();
    Test::when(
        this, [this] { return bench->count("board get mode") == 1; },
        [this] {
            bench->release();
            launch("b.cmd");
        });
    launch("a.cmd");
    QCOMPARE(bench->takeJournal(), QStringList({"board get mode", "of b", "last of a"}));
    QVERIFY(recorder->contains("  Executing file 'b.cmd'"));
    QVERIFY(recorder->contains("    Executing command 'of b'"));
    QVERIFY(recorder->contains("  Executing command 'last of a'"));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandFiles::anEntryOfTheMenuRunsItsFileOnce_data()
{
    QTest::addColumn<int>("refreshes");
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("name");
    // At first the default is the very entry of the menu; a refresh makes a fresh one.
    QTest::newRow("the default's own entry") << 0 << 0 << "a.cmd";
    QTest::newRow("another entry") << 0 << 1 << "b.cmd";
    QTest::newRow("a fresh entry of the default's file") << 1 << 0 << "a.cmd";
    QTest::newRow("another fresh entry") << 1 << 1 << "b.cmd";
}

void TestCommandFiles::anEntryOfTheMenuRunsItsFileOnce()
{
    QFETCH(int, refreshes);
    QFETCH(int, entry);
    QFETCH(QString, name);
    bench->writeFile("a.cmd", "of a.cmd\n");
    bench->writeFile("b.cmd", "of b.cmd\n");
    makePanel();
    panel->getWindow()->show();
    for (int count = 0; count < refreshes; ++count) {
        refresh();
    }
    choose(entry);
    QCOMPARE(bench->takeJournal(), QStringList({"of " + name}));
    QCOMPARE(button->text(), name);
}

void TestCommandFiles::aClickOnTheButtonRunsTheLastFileAgain()
{
    bench->writeFile("a.cmd", "of a\n");
    bench->writeFile("b.cmd", "of b\n");
    makePanel();
    panel->getWindow()->show();
    launch("b.cmd");
    refresh();
    bench->takeJournal();
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(4, button->height() / 2));
    QCOMPARE(bench->takeJournal(), QStringList({"of b"}));
    QCOMPARE(button->text(), QString("b.cmd"));
}

void TestCommandFiles::theListOfActionsDoesNotGrow()
{
    bench->writeFile("a.cmd", "");
    bench->writeFile("b.cmd", "");
    makePanel();
    for (int round = 0; round < 10; ++round) {
        launch(round % 2 == 0 ? "b.cmd" : "a.cmd");
        QTRY_COMPARE(button->actions().size(), 2);
        QVERIFY(button->actions().contains(button->defaultAction()));
        refresh();
        QCOMPARE(getNames(), QStringList({"a.cmd", "b.cmd"}));
    }
    // The entries of the menu and the default, and nothing of the runs before.
    QTRY_COMPARE(button->findChildren<QAction*>().size(), 4);
}

void TestCommandFiles::aNameWithAccentsIsPrinted()
{
    bench->writeFile("caf\u00e9 'x'.cmd", "");
    makePanel();
    launch("caf\u00e9 'x'.cmd");
    QCOMPARE(recorder->getLines(), QStringList({"Executing file 'caf\u00e9 'x'.cmd'"}));
}

void TestCommandFiles::binaryAndLargeFilesAreRunToTheirEnd()
{
    QByteArray binary;
    for (int byte = 0; byte < 256; ++byte) {
        binary += static_cast<char>(byte);
    }
    bench->writeFile("binary.cmd", binary + "\nlast\n");
    bench->writeFile("large.cmd", QByteArray("# a comment\n").repeated(100000) + "last\n");
    makePanel();
    launch("binary.cmd");
    QCOMPARE(bench->takeJournal().last(), QString("last"));
    launch("large.cmd");
    QCOMPARE(bench->takeJournal(), QStringList({"last"}));
}

void TestCommandFiles::manyFilesAreListed()
{
    for (int number = 0; number < 10000; ++number) {
        bench->writeFile(QString("%1.cmd").arg(number), "");
    }
    makePanel();
    QCOMPARE(getNames().size(), 10000);
    refresh();
    QCOMPARE(getNames().size(), 10000);
    QCOMPARE(button->actions().size(), 2);
}

void TestCommandFiles::theMenuFollowsTheDirectory_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("kept");
    const auto row = [](const char* what, const char* names, int kept) {
        QTest::newRow(what) << QString(names).split(' ', Qt::SkipEmptyParts) << kept;
    };
    // The menu begins with b, c, d and e; "kept" are those of its entries that need not be made
    // anew.
    row("nothing changes", "b c d e", 4);
    row("one comes first", "a b c d e", 4);
    row("one comes in the middle", "b c cc d e", 4);
    row("one comes last", "b c d e f", 4);
    row("the first goes", "c d e", 3);
    row("one in the middle goes", "b c e", 3);
    row("the last goes", "b c d", 3);
    row("one is exchanged", "b c dd e", 3);
    row("both ends change", "a c d ee", 0);
    row("all are exchanged", "v w x y z", 0);
    row("all go", "", 0);
}

void TestCommandFiles::theMenuFollowsTheDirectory()
{
    QFETCH(QStringList, names);
    QFETCH(int, kept);
    for (const char* name : {"b.cmd", "c.cmd", "d.cmd", "e.cmd"}) {
        bench->writeFile(name, "");
    }
    makePanel();
    refresh();
    QList<QPointer<QAction>> before;
    for (QAction* const action : button->menu()->actions()) {
        before += action;
    }
    const QStringList beginning = getNames();
    QCOMPARE(beginning, QStringList({"b.cmd", "c.cmd", "d.cmd", "e.cmd"}));

    for (const QString& name : beginning) {
        QVERIFY(QFile::remove(name));
    }
    for (QString& name : names) {
        name += ".cmd";
        bench->writeFile(name, "");
    }
    refresh();
    QCOMPARE(getNames(), names);
    QVERIFY(!button->menu()->actions().contains(button->defaultAction()));
    QCOMPARE(button->defaultAction()->text(), QString("b.cmd"));
    before.removeAll(nullptr);
    QCOMPARE(before.size(), kept);
}

KESTOBOARD_TEST_MAIN(TestCommandFiles)

#include "tst_command_files.moc"

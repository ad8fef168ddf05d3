// What the application adds to the window.

#include "app/WindowFurniture.h"

#include "app/AboutDialog.h"
#include "app/ActivityIndicator.h"
#include "app/ChosenBitstream.h"
#include "app/DropTarget.h"
#include "app/FirstGeometry.h"
#include "app/KeyboardMap.h"
#include "app/RestingCursor.h"
#include "app/SettingsCheck.h"
#include "app/Shutdown.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/PaintCounter.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/BasicLeaf.h>
#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <application/ConsoleWidget.h>
#include <application/FileSystemBrowser.h>
#include <foundation/PlainText.h>

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QDropEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStyleHints>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>
#include <QWheelEvent>

#include <functional>

using Kestoboard::SchemeChoice;
using Kestoboard::WindowFurniture;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::Panel;

namespace
{

/// For what would never come: far longer than any machine needs.
const int longestWait = 60'000;

/// The text of an action as it reads.
QString getPlainText(const QAction& action)
{
    return QString(action.text()).remove('&');
}

} // namespace

class TestWindowFurniture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theTitleNamesTheDirectoryAndTheProgram();
    void everyMenuActionSaysWhatItDoes();
    void noShortcutIsTakenTwice();
    void aPageIsRaisedByItsKeys_data();
    void aPageIsRaisedByItsKeys();
    void theBoardsAreRefreshedByF5();
    void anOpenedBitstreamIsChosenAndNotLoaded();
    void aDroppedFileIsChosenAndNotLoaded();
    void whatCannotBeChosenIsRefusedWithASentence_data();
    void whatCannotBeChosenIsRefusedWithASentence();
    void aDropWithoutFilesIsLeftToOthers();
    void aFileDroppedOnAFieldIsChosenAndNotTyped();
    void aTextDroppedOnAFieldIsTyped();
    void theLayoutComesBack();
    void nonsenseInTheSettingsGivesTheFirstLayout_data();
    void nonsenseInTheSettingsGivesTheFirstLayout();
    void aWindowOffEveryScreenComesBackToOne();
    void theLayoutCanBeReset();
    void aSizeThatNobodyChoseFollowsTheSystem();
    void theConsolesOptionsComeBack();
    void theFirstLayoutFitsTheScreen();
    void theFirstLayoutLeavesRoomForTheFrame_data();
    void theFirstLayoutLeavesRoomForTheFrame();
    void theFirstControlHasTheFocus_data();
    void theFirstControlHasTheFocus();
    void theConsoleIsSavedWithoutHoldingUpAVerdict();
    void theMenuOfTheConsoleHoldsUpNoVerdict();
    void theFolderOfTheTranscriptIsShown();
    void thePatienceIsChosenAndComesBack();
    void thePatienceWithTransfersIsChosenAndComesBack();
    void theSchemeIsStoredAndShown_data();
    void theSchemeIsStoredAndShown();
    void aSchemeThatDoesNotExistIsTheDesktops();
    void theStyleSheetComesWithTheFirstWindowThatIsShown();
    void theTextCursorRestsUntilSomebodyTouchesSomething();
    void theKeyboardMapListsEveryShortcut();
    void theKeyboardMapIsWideEnough();
    void theKeysOfTheMapDoWhatItSays();
    void theReportCanBeCopied();
    void aTickIsSeenBeforeTheBoardHasTakenIt();
    void theQuestionToLeaveSaysWhenTheTransferIsOver();
    void aRecentFileTellsItsWholePath();
    void anEmptyListOfRecentFilesSaysWhatBelongsThere();
    void everyControlHasAName();

public slots:
    /// Takes the place of the desktop.
    void openUrl(const QUrl& url);

private:
    void makeWindow();
    /// Waits for a verdict, whose answer comes only when the action has been done meanwhile.
    void waitForTheBoardAnd(const std::function<void()>& action);
    QAction* findAction(const QString& text) const;
    /// What shows that a key works, by the effect that the keyboard map tells: all those that no
    /// action of the whole window has.
    using Trials = QMap<QString, std::function<bool()>>;
    Trials getTrials() const;
    Trials getTrialsInTheConsole() const;
    Trials getTrialsInTheBrowser() const;
    /// Sends a drop as the desktop does; returns whether the window takes it.
    bool drop(const QList<QUrl>& urls) { return drop(urls, panel->getWindow()); }
    /// The same onto a part of the window; without addresses it is the text "words".
    bool drop(const QList<QUrl>& urls, QWidget* target);

    QUrl openedUrl;
    QScopedPointer<Bench> bench;
    QScopedPointer<Panel> panel;
    QScopedPointer<SchemeChoice> schemes;
    QScopedPointer<Kestoboard::Shutdown> shutdown;
    QScopedPointer<WindowFurniture> furniture;
};

void TestWindowFurniture::init()
{
    QSettings().clear();
    bench.reset(new Bench);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    schemes.reset(new SchemeChoice);
    shutdown.reset(new Kestoboard::Shutdown);
    makeWindow();
}

void TestWindowFurniture::makeWindow()
{
    furniture.reset();
    panel.reset();
    panel.reset(new Panel);
    furniture.reset(new WindowFurniture(panel->getWindow(), schemes.data(), shutdown.data()));
    panel->getWindow()->show();
    QApplication::setActiveWindow(panel->getWindow());
    QVERIFY(QTest::qWaitForWindowActive(panel->getWindow()));
}

void TestWindowFurniture::cleanup()
{
    furniture.reset();
    panel.reset();
    shutdown.reset();
    schemes.reset();
    bench.reset();
}

QAction* TestWindowFurniture::findAction(const QString& text) const
{
    for (QAction* const action : panel->getWindow()->menuBar()->findChildren<QAction*>()) {
        if (getPlainText(*action).startsWith(text)) {
            return action;
        }
    }
    return nullptr;
}

bool TestWindowFurniture::drop(const QList<QUrl>& urls, QWidget* target)
{
    QMimeData data;
    if (!urls.isEmpty()) {
        data.setUrls(urls);
        // File managers offer the address as text too.
        data.setText(urls.first().toString());
    } else {
        data.setText("words");
    }
    // A drop goes to who has taken the drag that entered.
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDragMoveEvent move(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::NoModifier);
    move.accept();
    QApplication::sendEvent(target, &move);
    if (!move.isAccepted()) {
        return false;
    }
    QDropEvent event(QPointF(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(target, &event);
    return event.isAccepted() && (urls.isEmpty() || event.dropAction() == Qt::CopyAction);
}

void TestWindowFurniture::theTitleNamesTheDirectoryAndTheProgram()
{
    // The bench puts the simulated tool first on the search path.
    QCOMPARE(panel->getWindow()->windowTitle(), QString("work – Kestoboard on simulated boards"));
}

void TestWindowFurniture::everyMenuActionSaysWhatItDoes()
{
    const QList<QAction*> titles = panel->getWindow()->menuBar()->actions();
    QCOMPARE(titles.size(), 5);
    for (const QAction* const title : titles) {
        QVERIFY(title->menu() != nullptr);
        QVERIFY(!title->menu()->actions().isEmpty());
        for (const QAction* const action : title->menu()->actions()) {
            QVERIFY(action->isSeparator() || !action->text().isEmpty());
        }
    }
}

void TestWindowFurniture::noShortcutIsTakenTwice()
{
    QStringList keys;
    for (const QAction* const action : panel->getWindow()->findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            keys += action->shortcut().toString();
        }
    }
    QVERIFY(keys.contains("Ctrl+O"));
    QVERIFY(keys.contains("Ctrl+Q"));
    QVERIFY(keys.contains("Ctrl+S"));
    QVERIFY2(keys.removeDuplicates() == 0, qPrintable(keys.join(' ')));
}

void TestWindowFurniture::aPageIsRaisedByItsKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<long>("index");
    QTest::newRow("basic") << int(Qt::Key_1) << 0L;
    QTest::newRow("monitoring") << int(Qt::Key_2) << 1L;
    QTest::newRow("bitstream") << int(Qt::Key_3) << 2L;
    QTest::newRow("scope") << int(Qt::Key_4) << 3L;
}

void TestWindowFurniture::aPageIsRaisedByItsKeys()
{
    QFETCH(int, key);
    QFETCH(long, index);
    panel->getFolio()->raiseLeaf(index == 0 ? 1 : 0);
    QTest::keyClick(panel->getWindow(), static_cast<Qt::Key>(key), Qt::ControlModifier);
    QTRY_COMPARE(panel->getFolio()->getCurrentIndex(), index);
}

void TestWindowFurniture::theBoardsAreRefreshedByF5()
{
    const int before = bench->count("board list");
    QTest::keyClick(panel->getWindow(), Qt::Key_F5);
    QTRY_COMPARE(bench->count("board list"), before + 1);
}

void TestWindowFurniture::anOpenedBitstreamIsChosenAndNotLoaded()
{
    const QString path = bench->writeFile("design.ksb", "bits");
    findAction("Open bitstream")->trigger();
    auto* const dialog = panel->getWindow()->findChild<QFileDialog*>();
    QVERIFY(dialog != nullptr);
    emit dialog->fileSelected(path);
    QTRY_COMPARE(Kestoboard::getChosenBitstream(*panel->getWindow()), path);
    QCOMPARE(panel->getFolio()->getCurrentIndex(), panel->getFolio()->getBitstreamIndex());
    QVERIFY(bench->getJournal().filter("chip bitstream").isEmpty());
    dialog->close();
}

void TestWindowFurniture::aDroppedFileIsChosenAndNotLoaded()
{
    const QString path = bench->writeFile("déjà vu.ksb", "bits");
    panel->getFolio()->raiseLeaf(0);
    QVERIFY(drop({QUrl::fromLocalFile(path)}));
    QTRY_COMPARE(Kestoboard::getChosenBitstream(*panel->getWindow()), path);
    QCOMPARE(panel->getFolio()->getCurrentIndex(), panel->getFolio()->getBitstreamIndex());
    QVERIFY(bench->getJournal().filter("chip bitstream").isEmpty());
}

void TestWindowFurniture::whatCannotBeChosenIsRefusedWithASentence_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a folder") << QStringList("folder") << "is a directory";
    QTest::newRow("an empty file") << QStringList("empty.ksb") << "is empty";
    QTest::newRow("a missing file") << QStringList("gone.ksb") << "There is no file";
    QTest::newRow("a line break") << QStringList("line\nbreak.ksb") << "holds a line break";
    QTest::newRow("a web address")
        << QStringList("https://example.org/design.ksb") << "is not a file on this computer";
    QTest::newRow("two files") << QStringList{"one.ksb", "two.ksb"} << "2 things were dropped";
}

void TestWindowFurniture::whatCannotBeChosenIsRefusedWithASentence()
{
    QFETCH(QStringList, names);
    QFETCH(QString, sentence);
    QDir().mkdir("folder");
    bench->writeFile("empty.ksb", "");
    bench->writeFile("line\nbreak.ksb", "bits");
    QList<QUrl> urls;
    for (const QString& name : names) {
        urls += name.startsWith("http") ? QUrl(name) : QUrl::fromLocalFile(bench->getPath(name));
    }
    ConsoleRecorder recorder;
    QVERIFY(drop(urls));
    const QStringList lines = recorder.getLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().startsWith("W: ") && lines.first().contains(sentence),
             qPrintable(lines.first()));
    QCOMPARE(Kestoboard::getChosenBitstream(*panel->getWindow()), QString());
}

void TestWindowFurniture::aDropWithoutFilesIsLeftToOthers()
{
    ConsoleRecorder recorder;
    QVERIFY(!drop({}));
    QVERIFY(recorder.getLines().isEmpty());
}

void TestWindowFurniture::aFileDroppedOnAFieldIsChosenAndNotTyped()
{
    const QString path = bench->writeFile("design.ksb", "bits");
    const QList<QLineEdit*> fields = panel->getWindow()->findChildren<QLineEdit*>();
    QVERIFY(fields.size() >= 4);
    for (QLineEdit* const field : fields) {
        const QString text = field->text();
        panel->getFolio()->raiseLeaf(0);
        QVERIFY(drop({QUrl::fromLocalFile(path)}, field));
        QVERIFY(!field->text().contains("file:"));
        QTRY_COMPARE(Kestoboard::getChosenBitstream(*panel->getWindow()), path);
        QCOMPARE(field->text(), text);
        QCOMPARE(panel->getFolio()->getCurrentIndex(), panel->getFolio()->getBitstreamIndex());
    }
}

void TestWindowFurniture::aTextDroppedOnAFieldIsTyped()
{
    auto* const field = panel->find<Zandu::ConsoleWidget>()->findChild<QLineEdit*>();
    QVERIFY(drop({}, field));
    QCOMPARE(field->text(), QString("words"));
}

void TestWindowFurniture::theLayoutComesBack()
{
    auto* const splitter = panel->find<QSplitter>();
    panel->getWindow()->resize(900, 700);
    panel->getWindow()->move(20, 30);
    splitter->setSizes({420, 180});
    const QList<int> sizes = splitter->sizes();
    furniture->getState().save();
    makeWindow();
    QCOMPARE(panel->getWindow()->size(), QSize(900, 700));
    QCOMPARE(panel->getWindow()->pos(), QPoint(20, 30));
    QTRY_COMPARE(panel->find<QSplitter>()->sizes(), sizes);
}

void TestWindowFurniture::nonsenseInTheSettingsGivesTheFirstLayout_data()
{
    QTest::addColumn<QVariant>("version");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("numbers") << QVariant(1) << QVariant(17);
    QTest::newRow("words") << QVariant(1) << QVariant("nonsense");
    QTest::newRow("bytes") << QVariant(1) << QVariant(QByteArray(300, '\xff'));
    QTest::newRow("another version") << QVariant(4711) << QVariant("of later");
    QTest::newRow("no version") << QVariant("first") << QVariant("of before");
}

void TestWindowFurniture::nonsenseInTheSettingsGivesTheFirstLayout()
{
    QFETCH(QVariant, version);
    QFETCH(QVariant, value);
    const QSize size = panel->getWindow()->size();
    const QList<int> sizes = panel->find<QSplitter>()->sizes();
    QSettings().setValue("Window/version", version);
    for (const char* const key : {"geometry", "splitter", "consoleFontSize", "consoleTimes",
                                  "consoleTimesCopied", "consoleWrap", "consoleLimit"}) {
        QSettings().setValue(QString("Window/") + key, value);
    }
    // A number may be the size of a font.
    QCOMPARE(
        Kestoboard::checkSettings(),
        QStringList(QString("Settings that cannot be used are passed over: Window/consoleLimit") +
                    (value == 17 ? "" : ", Window/consoleFontSize")));
    QCOMPARE(Kestoboard::checkSettings(), QStringList());
    makeWindow();
    QCOMPARE(panel->find<Zandu::ConsoleWidget>()->getLineLimit(), 200'000);
    QCOMPARE(panel->getWindow()->size(), size);
    QTRY_COMPARE(panel->find<QSplitter>()->sizes(), sizes);
    QCOMPARE(panel->find<QSplitter>()->orientation(), Qt::Vertical);
}

void TestWindowFurniture::aWindowOffEveryScreenComesBackToOne()
{
    panel->getWindow()->move(50'000, 40'000);
    furniture->getState().save();
    makeWindow();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.intersects(panel->getWindow()->frameGeometry()));
    QVERIFY(screen.contains(panel->getWindow()->pos()));
}

void TestWindowFurniture::theLayoutCanBeReset()
{
    const QSize size = panel->getWindow()->size();
    const QPoint place = panel->getWindow()->pos();
    panel->getWindow()->resize(800, 640);
    panel->getWindow()->move(70, 80);
    panel->find<QSplitter>()->setSizes({500, 0});
    findAction("Reset layout")->trigger();
    QCOMPARE(panel->getWindow()->size(), size);
    QCOMPARE(panel->getWindow()->pos(), place);
    QTRY_VERIFY(panel->find<QSplitter>()->sizes().last() > 0);
}

void TestWindowFurniture::aSizeThatNobodyChoseFollowsTheSystem()
{
    auto* const console = panel->find<Zandu::ConsoleWidget>();
    const qreal systems = console->getFontSize();
    console->setFontSize(14);
    furniture->getState().save();
    QVERIFY(QSettings().contains("Window/consoleFontSize"));
    console->setFontSize(systems);
    furniture->getState().save();
    QVERIFY(!QSettings().contains("Window/consoleFontSize"));
}

void TestWindowFurniture::theConsolesOptionsComeBack()
{
    auto* const console = panel->find<Zandu::ConsoleWidget>();
    const bool isWrapped = console->areLinesWrapped();
    console->setFontSize(14);
    console->setLineLimit(5000);
    console->setTimesShown(true);
    console->setTimesCopied(true);
    console->setLinesWrapped(!isWrapped);
    furniture->getState().save();
    makeWindow();
    const auto* const next = panel->find<Zandu::ConsoleWidget>();
    QCOMPARE(next->getFontSize(), 14.0);
    QCOMPARE(next->getLineLimit(), 5000);
    QVERIFY(next->areTimesShown());
    QVERIFY(next->areTimesCopied());
    QCOMPARE(next->areLinesWrapped(), !isWrapped);
}

void TestWindowFurniture::theFirstLayoutFitsTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(panel->getWindow()->pos()));
    const QSize size = panel->getWindow()->size();
    QVERIFY(size.width() <= qMax(screen.width(), panel->getWindow()->minimumWidth()));
    QVERIFY(size.height() <= qMax(screen.height(), panel->getWindow()->minimumHeight()));
}

void TestWindowFurniture::theFirstLayoutLeavesRoomForTheFrame_data()
{
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("a large screen")
        << QRect(0, 0, 1920, 1080) << QSize(1024, 768) << QPoint(447, 141);
    QTest::newRow("a low screen below a bar")
        << QRect(0, 32, 1366, 736) << QSize(1024, 706) << QPoint(170, 32);
    QTest::newRow("a narrow screen")
        << QRect(0, 0, 1000, 1080) << QSize(998, 768) << QPoint(0, 141);
    QTest::newRow("a screen that is too small")
        << QRect(50, 60, 800, 480) << QSize(800, 600) << QPoint(50, 60);
    QTest::newRow("no screen") << QRect() << QSize(1024, 768) << QPoint(0, 0);
}

void TestWindowFurniture::theFirstLayoutLeavesRoomForTheFrame()
{
    QFETCH(QRect, available);
    const Kestoboard::FirstGeometry first =
        Kestoboard::getFirstGeometry(available, QSize(800, 600), QSize(2, 30));
    QTEST(first.size, "size");
    QTEST(first.place, "place");
}

void TestWindowFurniture::theFirstControlHasTheFocus_data()
{
    QTest::addColumn<bool>("isFileNamed");
    QTest::newRow("nothing is named") << false;
    QTest::newRow("a bitstream is named") << true;
}

void TestWindowFurniture::theFirstControlHasTheFocus()
{
    QFETCH(bool, isFileNamed);
    furniture.reset();
    panel.reset(new Panel);
    furniture.reset(new WindowFurniture(panel->getWindow(), schemes.data(), shutdown.data()));
    if (isFileNamed) {
        Kestoboard::showChosenBitstream(*panel->getWindow(),
                                        bench->writeFile("design.ksb", "bits"));
    }
    panel->getWindow()->show();
    QApplication::setActiveWindow(panel->getWindow());
    QVERIFY(QTest::qWaitForWindowActive(panel->getWindow()));
    const QWidget* const list =
        isFileNamed ? static_cast<QWidget*>(
                          panel->find<Zandu::FileSystemBrowser>()->findChild<QTreeView*>())
                    : panel->find<Board::BrowseFolio::RecentWidget>();
    QCOMPARE(static_cast<const QWidget*>(QApplication::focusWidget()), list);
}

void TestWindowFurniture::waitForTheBoardAnd(const std::function<void()>& action)
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board set force_bit"));
    panel->getEngine()->refreshTamsaMap();
    Test::when(
        panel->getWindow(), [this] { return bench->count("board set force_bit on") == 1; },
        [&] {
            action();
            bench->release();
        });
    panel->getEngine()->setForceBit(true);
}

void TestWindowFurniture::theConsoleIsSavedWithoutHoldingUpAVerdict()
{
    waitForTheBoardAnd([this] { findAction("Save the console")->trigger(); });
    auto* const dialog = panel->find<QFileDialog>();
    QVERIFY(dialog != nullptr && dialog->isVisible());
    QMetaObject::invokeMethod(dialog, "accept");
    QTRY_VERIFY(bench->readFile("console.txt").contains("Force bit successfully set to on\n"));
    QTRY_VERIFY(panel->find<QFileDialog>() == nullptr);
}

void TestWindowFurniture::theMenuOfTheConsoleHoldsUpNoVerdict()
{
    const ConsoleRecorder recorder;
    auto* const text = panel->find<Zandu::ConsoleWidget>()->findChild<QPlainTextEdit*>();
    waitForTheBoardAnd([text] { emit text->customContextMenuRequested(QPoint(20, 20)); });
    QVERIFY(recorder.contains("Force bit successfully set to on"));
    const QPointer<QWidget> menu = QApplication::activePopupWidget();
    QVERIFY(menu);
    menu->close();
    QTRY_VERIFY(!menu);
}

void TestWindowFurniture::openUrl(const QUrl& url)
{
    openedUrl = url;
}

void TestWindowFurniture::theFolderOfTheTranscriptIsShown()
{
    QDesktopServices::setUrlHandler("file", this, "openUrl");
    findAction("Show the folder of the transcript")->trigger();
    QDesktopServices::unsetUrlHandler("file");
    QCOMPARE(openedUrl.toLocalFile(), QDir::currentPath());
    QVERIFY(QFile::exists(QDir(openedUrl.toLocalFile()).filePath("ksbase.log")));
}

void TestWindowFurniture::thePatienceIsChosenAndComesBack()
{
    QVERIFY(findAction("After 10 seconds")->isChecked());
    findAction("After 2 minutes")->trigger();
    QCOMPARE(Kestoboard::ActivityIndicator::getPatience(), 120);
    makeWindow();
    QVERIFY(findAction("After 2 minutes")->isChecked());
    findAction("Never")->trigger();
    QCOMPARE(Kestoboard::ActivityIndicator::getPatience(), 0);
}

void TestWindowFurniture::thePatienceWithTransfersIsChosenAndComesBack()
{
    const auto getChecked = [this] {
        QStringList texts;
        for (const char* const text : {"After 5 minutes", "After 15 minutes", "After 60 minutes"}) {
            if (findAction(text)->isChecked()) {
                texts += text;
            }
        }
        return texts;
    };
    QCOMPARE(getChecked(), QStringList());
    QCOMPARE(Kestoboard::ActivityIndicator::getTransferPatience(), 0);
    findAction("After 15 minutes")->trigger();
    QCOMPARE(Kestoboard::ActivityIndicator::getTransferPatience(), 900);
    makeWindow();
    QCOMPARE(getChecked(), QStringList("After 15 minutes"));
    // The other one is left as it was.
    QVERIFY(findAction("After 10 seconds")->isChecked());
}

void TestWindowFurniture::theSchemeIsStoredAndShown_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<Orvex::Theme::Scheme>("scheme");
    QTest::newRow("dark") << "Dark"
                          << "Dark" << Orvex::Theme::Scheme::Dark;
    QTest::newRow("light") << "Light"
                           << "Light" << Orvex::Theme::Scheme::Light;
    QTest::newRow("system") << "As the desktop"
                            << "System" << Orvex::Theme::getSystemScheme();
}

void TestWindowFurniture::theSchemeIsStoredAndShown()
{
    QFETCH(QString, text);
    QFETCH(QString, stored);
    QFETCH(Orvex::Theme::Scheme, scheme);
    findAction(text)->trigger();
    QCOMPARE(QSettings().value("Window/scheme").toString(), stored);
    QCOMPARE(Orvex::theme->getScheme(), scheme);
    QCOMPARE(QApplication::palette().color(QPalette::Window), Orvex::theme->getColor("window"));
    makeWindow();
    QVERIFY(findAction(text)->isChecked());
}

void TestWindowFurniture::aSchemeThatDoesNotExistIsTheDesktops()
{
    QSettings().setValue("Window/scheme", "Purple");
    QCOMPARE(schemes->getChoice(), SchemeChoice::Choice::System);
    QCOMPARE(Kestoboard::checkSettings(),
             QStringList("Settings that cannot be used are passed over: Window/scheme"));
    for (const char* const scheme : {"System", "Light", "Dark"}) {
        QSettings().setValue("Window/scheme", scheme);
        QSettings().setValue("Window/consoleLimit", 1000);
        QCOMPARE(Kestoboard::checkSettings(), QStringList());
    }
}

void TestWindowFurniture::theStyleSheetComesWithTheFirstWindowThatIsShown()
{
    qApp->setStyleSheet(QString());
    schemes->prepare();
    QCOMPARE(QApplication::palette().color(QPalette::Base), Orvex::theme->getColor("base"));
    QComboBox comboBox;
    Orvex::theme->enrich(&comboBox);
    QWidget window;
    QVERIFY(qApp->styleSheet().isEmpty());
    window.show();
    QCOMPARE(qApp->styleSheet(), Orvex::theme->getStyleSheet());

    // Once: what is set afterwards stays.
    qApp->setStyleSheet(QString());
    QWidget other;
    other.show();
    QVERIFY(qApp->styleSheet().isEmpty());
}

void TestWindowFurniture::theTextCursorRestsUntilSomebodyTouchesSomething()
{
    const auto* const usual = panel->getWindow()->findChild<Kestoboard::RestingCursor*>();
    QVERIFY(usual != nullptr);
    delete usual;
    QVERIFY(QApplication::cursorFlashTime() > 0);
    {
        const Kestoboard::RestingCursor cursor(std::chrono::milliseconds(1), nullptr);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::cursorFlashTime(), 0, 60000);
        // At once: a moment later it rests again.
        int flashTime = 0;
        connect(QGuiApplication::styleHints(), &QStyleHints::cursorFlashTimeChanged, this,
                [&flashTime] { flashTime = qMax(flashTime, QApplication::cursorFlashTime()); });
        QTest::keyClick(panel->getWindow(), Qt::Key_Shift);
        QGuiApplication::styleHints()->disconnect(this);
        QVERIFY(flashTime > 0);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::cursorFlashTime(), 0, 60000);
    }
    QVERIFY(QApplication::cursorFlashTime() > 0);
}

void TestWindowFurniture::theKeyboardMapListsEveryShortcut()
{
    const Kestoboard::KeyboardMap map(panel->getWindow());
    const auto* const list = map.findChild<QTreeWidget*>();
    QStringList keys;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        keys += list->topLevelItem(row)->text(0);
        QVERIFY(!list->topLevelItem(row)->text(1).isEmpty());
    }
    for (const QAction* const action : panel->getWindow()->findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            QVERIFY(keys.contains(action->shortcut().toString(QKeySequence::NativeText)));
        }
    }
    QCOMPARE(keys.first(), QKeySequence("Ctrl+O").toString(QKeySequence::NativeText));
}

TestWindowFurniture::Trials TestWindowFurniture::getTrials() const
{
    QWidget* const window = panel->getWindow();
    const auto isOpened = [window](const QString& title) {
        const QPointer<QWidget> menu = QApplication::activePopupWidget();
        const auto* const opened = qobject_cast<QMenu*>(menu.data());
        const bool isRight = opened != nullptr && getPlainText(*opened->menuAction()) == title;
        if (menu) {
            menu->close();
        }
        // As a desktop does when a menu has gone.
        QApplication::setActiveWindow(window);
        return isRight;
    };
    return {
        {"Next and previous control",
         [this] {
             QWidget* const view = panel->find<Zandu::ConsoleWidget>()->focusProxy();
             view->setFocus();
             QTest::keyClick(view, Qt::Key_Tab);
             QWidget* const next = QApplication::focusWidget();
             QTest::keyClick(next, Qt::Key_Backtab);
             return next != view && QApplication::focusWidget() == view;
         }},
        {"Press the button that has the focus",
         [this] {
             Board::Folio* const folio = panel->getFolio();
             const long before = folio->getCurrentIndex();
             QTest::keyClick(panel->getWindow()->findChild<QToolButton*>("basicButton"),
                             Qt::Key_Space);
             const bool isPressed = folio->getCurrentIndex() == folio->getBasicIndex();
             folio->raiseLeaf(static_cast<unsigned long>(before));
             return before != folio->getBasicIndex() && isPressed;
         }},
        {"Open the menus",
         [window, isOpened] {
             QTest::keyClick(window, Qt::Key_F10);
             const bool isFirst = isOpened("File");
             QTest::keyClick(window, Qt::Key_V, Qt::AltModifier);
             return isFirst && isOpened("View");
         }},
    };
}

TestWindowFurniture::Trials TestWindowFurniture::getTrialsInTheConsole() const
{
    auto* const console = panel->find<Zandu::ConsoleWidget>();
    auto* const view = console->findChild<QPlainTextEdit*>();
    auto* const field = console->findChild<QLineEdit*>();
    const auto changesSize = [console, view](Qt::Key key, qreal from, qreal to) {
        console->setFontSize(from);
        QTest::keyClick(view, key, Qt::ControlModifier);
        return qFuzzyCompare(console->getFontSize(), to);
    };
    const auto changesMatch = [console, view, field](Qt::KeyboardModifiers modifiers) {
        console->find();
        field->setText("e");
        const int before = view->textCursor().position();
        view->setFocus();
        QTest::keyClick(view, Qt::Key_F3, modifiers);
        return view->textCursor().position() != before;
    };
    const qreal usual = console->getFontSize();
    return {
        {"Text size of the console, over the console",
         [console, view] {
             const qreal before = console->getFontSize();
             QWheelEvent turn(QPointF(5, 5), view->mapToGlobal(QPoint(5, 5)), QPoint(),
                              QPoint(0, 120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase,
                              false);
             QApplication::sendEvent(view->viewport(), &turn);
             return console->getFontSize() > before;
         }},
        {"Copy, select all, in the console",
         [view] {
             QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
             QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
             return QApplication::clipboard()->text().contains("launched");
         }},
        {"Close the find bar, in the find bar",
         [console, field] {
             console->find();
             const bool wasOpen = field->isVisible();
             QTest::keyClick(field, Qt::Key_Escape);
             return wasOpen && !field->isVisible();
         }},
        {"Next match, in the console", [changesMatch] { return changesMatch(Qt::NoModifier); }},
        {"Previous match, in the console",
         [changesMatch] { return changesMatch(Qt::ShiftModifier); }},
        {"Larger text, in the console",
         [changesSize] { return changesSize(Qt::Key_Plus, 12, 13); }},
        {"Smaller text, in the console",
         [changesSize] { return changesSize(Qt::Key_Minus, 12, 11); }},
        {"Text size of the system, in the console",
         [changesSize, usual] { return changesSize(Qt::Key_0, 20, usual); }},
    };
}

TestWindowFurniture::Trials TestWindowFurniture::getTrialsInTheBrowser() const
{
    auto* const browser = panel->find<Zandu::FileSystemBrowser>();
    auto* const tree = browser->findChild<QTreeView*>();
    const QString folder = bench->getPath("folder");
    QDir().mkpath(folder);
    Kestoboard::showChosenBitstream(*panel->getWindow(), bench->writeFile("design.ksb", "bits"));
    const auto enters = [browser](const QString& path) {
        return QTest::qWaitFor([browser, path] { return browser->getPath() == path; }, 60000);
    };
    const auto sortsBy = [tree](Qt::Key key, int column) {
        tree->header()->setSortIndicator((column + 1) % 3, Qt::AscendingOrder);
        tree->setFocus();
        QTest::keyClick(tree, key, Qt::AltModifier);
        return tree->header()->sortIndicatorSection() == column;
    };
    return {
        {"Path field of the file browser, in the browser",
         [browser, tree] {
             tree->setFocus();
             QTest::keyClick(tree, Qt::Key_L, Qt::ControlModifier);
             return QApplication::focusWidget() == browser->findChild<QLineEdit*>();
         }},
        {"Enter the directory, in the browser",
         [browser, tree, folder, enters] {
             browser->open(QFileInfo(folder).absolutePath());
             const bool isListed = QTest::qWaitFor(
                 [tree] { return tree->model()->index(0, 0).data().toString() == "folder"; },
                 60000);
             tree->setCurrentIndex(tree->model()->index(0, 0));
             QTest::keyClick(tree, Qt::Key_Return);
             return isListed && enters(folder);
         }},
        {"To the parent directory, in the browser",
         [browser, tree, folder, enters] {
             const QString parent = QFileInfo(folder).absolutePath();
             browser->open(folder);
             const bool isThere = enters(folder);
             QTest::keyClick(tree, Qt::Key_Backspace);
             const bool isParent = enters(parent);
             QTest::keyClick(tree, Qt::Key_Up, Qt::AltModifier);
             return isThere && isParent && enters(QFileInfo(parent).absolutePath());
         }},
        {"Sort by name, in the browser", [sortsBy] { return sortsBy(Qt::Key_1, 0); }},
        {"Sort by size, in the browser", [sortsBy] { return sortsBy(Qt::Key_2, 1); }},
        {"Sort by date, in the browser", [sortsBy] { return sortsBy(Qt::Key_3, 2); }},
    };
}

void TestWindowFurniture::theKeyboardMapIsWideEnough()
{
    makeWindow();
    Kestoboard::KeyboardMap map(panel->getWindow());
    map.show();
    QVERIFY(QTest::qWaitForWindowExposed(&map));
    const auto* const list = map.findChild<QTreeWidget*>();
    const QAbstractItemView* const view = list;
    for (int column = 0; column < list->columnCount(); ++column) {
        QVERIFY(list->columnWidth(column) >= view->sizeHintForColumn(column));
    }
    QVERIFY(list->header()->length() <= list->viewport()->width());
}

void TestWindowFurniture::theKeysOfTheMapDoWhatItSays()
{
    Trials trials = getTrials();
    for (const Trials& others : {getTrialsInTheConsole(), getTrialsInTheBrowser()}) {
        for (auto trial = others.begin(); trial != others.end(); ++trial) {
            trials.insert(trial.key(), trial.value());
        }
    }
    QStringList known;
    for (const QAction* const action : panel->getWindow()->findChildren<QAction*>()) {
        if (action->shortcutContext() == Qt::WindowShortcut) {
            known += action->shortcut().toString(QKeySequence::NativeText);
        }
    }
    const Kestoboard::KeyboardMap map(panel->getWindow());
    const auto* const list = map.findChild<QTreeWidget*>();
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        const QString effect = list->topLevelItem(row)->text(1);
        if (!known.contains(list->topLevelItem(row)->text(0))) {
            QVERIFY2(trials.contains(effect), qPrintable(effect));
            QVERIFY2(trials.take(effect)(), qPrintable(effect));
        }
    }
    QVERIFY2(trials.isEmpty(), qPrintable(trials.keys().join(", ")));
}

void TestWindowFurniture::theReportCanBeCopied()
{
    findAction("About")->trigger();
    auto* const about = panel->getWindow()->findChild<Kestoboard::AboutDialog*>();
    QVERIFY(about != nullptr);
    about->findChild<QPushButton*>("copyButton")->click();
    const QString report = QApplication::clipboard()->text();
    QVERIFY(report.contains("Qt: 5.15"));
    const QFileInfo tool(Bench::getToolDirectory() + "/ksbase2_cli");
    QVERIFY(report.contains(
        QString("%1 (simulated boards), %2 bytes of 20").arg(tool.filePath()).arg(tool.size())));
    QVERIFY(report.contains(bench->getPath("ksbase.log")));
    QVERIFY(report.contains("Connected KS-Dev A"));
    about->close();
}

void TestWindowFurniture::aTickIsSeenBeforeTheBoardHasTakenIt()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board set reset on"));
    panel->getEngine()->refreshTamsaMap();
    findAction("Basic")->trigger();
    QCheckBox* const box = panel->find<Board::BasicLeaf>()->findChildren<QCheckBox*>().first();
    box->setFocus();
    const QPoint place(box->style()->pixelMetric(QStyle::PM_IndicatorWidth) / 2, box->height() / 2);
    QTest::mousePress(box, Qt::LeftButton, Qt::NoModifier, place);
    // What the press itself has to paint is over.
    QCoreApplication::processEvents();
    const int formerCount = bench->count("board set reset on");
    Test::PaintCounter counter;
    box->installEventFilter(&counter);
    connect(box, &QCheckBox::toggled, &counter, [&counter] { counter.paints = 0; });
    bool isSeen = false;
    QObject wait;
    Test::when(
        &wait, [&counter] { return counter.paints > 0; },
        [this, &isSeen] {
            isSeen = true;
            bench->release();
        });
    QTimer::singleShot(longestWait, &wait, [this] { bench->release(); });
    QTest::mouseRelease(box, Qt::LeftButton, Qt::NoModifier, place);
    QVERIFY(box->isChecked());
    QCOMPARE(bench->count("board set reset on"), formerCount + 1);
    QVERIFY(isSeen);
}

void TestWindowFurniture::theQuestionToLeaveSaysWhenTheTransferIsOver()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    panel->getEngine()->refreshTamsaMap();
    QPointer<QMessageBox> question;
    Test::when(
        panel->getWindow(), [this] { return bench->count("chip bitstream load x.ksb") == 1; },
        [this, &question] {
            findAction("Quit")->trigger();
            question = panel->getWindow()->findChild<QMessageBox*>("leaveQuestion");
            bench->release();
        });
    panel->getEngine()->sendBitstream("x.ksb");
    QVERIFY(question != nullptr && question->isVisible());
    QTRY_COMPARE(question->text(), QString("The bitstream is not on its way any more."));
    // As the next line of a command file.
    bool isAskedAnew = false;
    bench->holdAgain();
    Test::when(
        panel->getWindow(),
        [&question] { return question->text() == "A bitstream is on its way to the board."; },
        [this, &isAskedAnew] {
            isAskedAnew = true;
            bench->release();
        });
    QTimer::singleShot(longestWait, question, [this] { bench->release(); });
    panel->getEngine()->sendBitstream("y.ksb");
    QVERIFY(isAskedAnew);
    QTRY_COMPARE(question->text(), QString("The bitstream is not on its way any more."));
    question->findChild<QPushButton*>("stayButton")->click();
    QTRY_VERIFY(question == nullptr);
    QVERIFY(panel->getWindow()->isVisible());
}

void TestWindowFurniture::aRecentFileTellsItsWholePath()
{
    QVERIFY(QDir().mkdir("former"));
    const QStringList paths{bench->writeFile("a<b>.ksb", "x"),
                            bench->writeFile("former/a<b>.ksb", "x")};
    QSettings().setValue("recentLoadList", paths);
    auto* const list = panel->find<Board::BrowseFolio::RecentWidget>();
    list->refresh();
    QCOMPARE(list->count(), 2);
    for (int row = 0; row < 2; ++row) {
        const QPoint place = list->visualItemRect(list->item(row)).center();
        QHelpEvent help(QEvent::ToolTip, place, list->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list->viewport(), &help);
        QTRY_COMPARE(QToolTip::text(), Orvex::getLiteral(paths.at(row)));
    }
    const QPoint nowhere = list->viewport()->rect().bottomRight();
    QHelpEvent help(QEvent::ToolTip, nowhere, list->viewport()->mapToGlobal(nowhere));
    QApplication::sendEvent(list->viewport(), &help);
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestWindowFurniture::anEmptyListOfRecentFilesSaysWhatBelongsThere()
{
    auto* const list = panel->find<Board::BrowseFolio::RecentWidget>();
    QCOMPARE(list->count(), 0);
    const QColor plain = list->viewport()->palette().color(QPalette::Base);
    const auto isBlank = [&] {
        QImage blank(list->viewport()->size(), QImage::Format_RGB32);
        blank.fill(plain);
        return list->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32) == blank;
    };
    QVERIFY(!isBlank());
    QVERIFY(list->accessibleDescription().contains("Browse"));
    // An entry without text or icon: the remark alone would show beside it.
    list->addItem(new QListWidgetItem);
    list->item(0)->setHidden(true);
    QVERIFY(isBlank());
}

void TestWindowFurniture::everyControlHasAName()
{
    QStringList nameless;
    const auto examine = [&nameless](const QWidget* root) {
        for (QWidget* const widget : root->findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->isWindow() ||
                !widget->isVisible()) {
                continue;
            }
            QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(widget);
            const bool isPart =
                widget->focusProxy() != nullptr || (widget->parentWidget() != nullptr &&
                                                    widget->parentWidget()->focusProxy() == widget);
            if (face != nullptr && !isPart && face->text(QAccessible::Name).isEmpty()) {
                nameless += QString("%1 \"%2\" in %3")
                                .arg(widget->metaObject()->className(), widget->objectName(),
                                     widget->parentWidget()->metaObject()->className());
            }
        }
    };
    for (unsigned long page = 0; page < 4; ++page) {
        panel->getFolio()->raiseLeaf(page);
        QTRY_VERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
        examine(panel->getWindow());
    }
    findAction("About")->trigger();
    findAction("Keyboard map")->trigger();
    examine(panel->getWindow()->findChild<Kestoboard::AboutDialog*>());
    examine(panel->getWindow()->findChild<Kestoboard::KeyboardMap*>());
    nameless.removeDuplicates();
    QVERIFY2(nameless.isEmpty(), qPrintable(nameless.join('\n')));
}

KESTOBOARD_TEST_MAIN(TestWindowFurniture)
#include "tst_window_furniture.moc"

// Text of the tool, of file names and of settings never acts: not as markup, not as a format, not
// on a terminal, and not as a second command.

#include "Program.h"
#include "app/BitstreamPath.h"
#include "app/ConsolePrinter.h"
#include "app/DesktopNotice.h"
#include "app/DropTarget.h"
#include "app/ElidedLabel.h"
#include "app/LastWords.h"
#include "app/MessageBox.h"
#include "app/RecentLoads.h"
#include "app/SchemeChoice.h"
#include "app/Shutdown.h"
#include "app/StartFailure.h"
#include "app/WindowFurniture.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/BitstreamDelegate.h>
#include <Board/BitstreamLeaf.h>
#include <Board/CommandLineEdit.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>
#include <Board/ScopeLeaf.h>
#include <application/FileSystemBrowser.h>
#include <foundation/PlainText.h>

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryFile>
#include <QTextDocument>
#include <QToolButton>
#include <QTreeView>
#include <QWindow>

#include <cstdio>
#include <unistd.h>

using Test::Bench;
using Test::ConsoleRecorder;
using Test::Panel;
using Test::Program;

namespace
{

/// What would be a second command, if a line break in front of it were one.
const char secondCommand[] = "board set reset on";

/// What a person reads where the toolkit guesses whether it was given markup.
QString getShown(const QString& text)
{
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

QString getShown(const QLabel& label)
{
    return label.textFormat() == Qt::PlainText ? label.text() : getShown(label.text());
}

/// What is written to standard output while the work is done.
template <class Work>
QByteArray catchOutput(Work work)
{
    QTemporaryFile file;
    file.open();
    std::fflush(stdout);
    const int former = ::dup(STDOUT_FILENO);
    ::dup2(file.handle(), STDOUT_FILENO);
    work();
    std::fflush(stdout);
    ::dup2(former, STDOUT_FILENO);
    ::close(former);
    file.seek(0);
    return file.readAll();
}

/// The panel as the application shows it.
class FurnishedPanel
{
public:
    FurnishedPanel()
        : furniture(panel.getWindow(), &schemes, &shutdown)
    {
    }

    Board::MainWindow* getWindow() const { return panel.getWindow(); }
    const Panel& get() const { return panel; }

private:
    Kestoboard::SchemeChoice schemes;
    Kestoboard::Shutdown shutdown;
    Panel panel;
    Kestoboard::WindowFurniture furniture;
};

QModelIndex findEntry(const QTreeView& tree, const QString& name)
{
    const QModelIndexList found =
        tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly);
    return found.isEmpty() ? QModelIndex() : found.first();
}

/// A recent file of that name as the list paints it.
QImage paintRecentFile(const QString& name)
{
    QStandardItemModel model;
    auto* const item = new QStandardItem(name);
    item->setData("/bench/design.ksb", Qt::UserRole);
    model.appendRow(item);
    QImage image(260, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QStyleOptionViewItem option;
    option.rect = QRect(20, 30, 200, 58);
    QPainter painter(&image);
    Board::BitstreamDelegate(nullptr).paint(&painter, option, model.index(0, 0));
    return image;
}

void addMarkup()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("bold") << "<b>bold</b>";
    QTest::newRow("picture") << "<img src='file:///etc/passwd'>";
    QTest::newRow("escaped") << "&lt;b&gt;";
    QTest::newRow("quotes and ampersands") << "\"A & B\" failed";
    QTest::newRow("declaration") << "<?xml version='1.0'?>";
    QTest::newRow("format") << "100%1 %n %s %%";
}

} // namespace

class TestUnsafeText : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatEndsACommandIsNoPartOfOne_data();
    void whatEndsACommandIsNoPartOfOne();
    void nothingActsOnATerminal_data();
    void nothingActsOnATerminal();
    void markupIsShownLetterForLetter_data();
    void markupIsShownLetterForLetter();
    void theToolsReadingsAreNoMarkup();
    void aMessageBoxShowsItsWordsLetterForLetter_data();
    void aMessageBoxShowsItsWordsLetterForLetter();
    void theStatusIsNoMarkup_data();
    void theStatusIsNoMarkup();
    void theToolTipOfAFileIsNoMarkup();
    void aCommandFileIsOfferedByItsName();
    void theTitleShowsTheNameOfTheDirectory();
    void aNotificationShowsItsSentence();
    void markupInARecentFileLoadsNothing_data();
    void markupInARecentFileLoadsNothing();
    void aPictureOfTheProgramIsNotLoadedEither();
    void theConsolePrinterPrintsSigns();
    void theLastWordsHoldSigns();
    void aRefusalOnTheTerminalHoldsSigns();
    void aDirectoryWithALineBreakIsNotWorkedIn();
    void aPathWithALineBreakIsNotOffered_data();
    void aPathWithALineBreakIsNotOffered();
    void aFileWithALineBreakCannotBeChosen();
    void aFileWithALineBreakIsNotLoaded();
    void aDirectoryWithALineBreakCannotBeEntered();
    void aBrowserDoesNotStartInADirectoryWithALineBreak();
    void aRecentFileWithALineBreakIsRefused();
    void pastedLinesStayOneCommand_data();
    void pastedLinesStayOneCommand();
    void aStoredFileNameStaysOneCommand();

private:
    QScopedPointer<Bench> bench;
};

void TestUnsafeText::init()
{
    QSettings().clear();
    bench.reset(new Bench);
}

void TestUnsafeText::cleanup()
{
    bench.reset();
    QSettings().clear();
}

void TestUnsafeText::whatEndsACommandIsNoPartOfOne_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isOneLine");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("blanks, tabs, accents") << "a b\tété" << true;
    QTest::newRow("line feed") << "a\nb" << false;
    QTest::newRow("carriage return") << "a\rb" << false;
    QTest::newRow("NUL") << QString("ab").replace(1, 1, QChar()) << false;
    QTest::newRow("at the end") << "a\n" << false;
}

void TestUnsafeText::whatEndsACommandIsNoPartOfOne()
{
    QFETCH(QString, text);
    QTEST(Orvex::isOneLine(text), "isOneLine");
}

void TestUnsafeText::nothingActsOnATerminal_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("printed");
    const auto row = [](const char* name, const QByteArray& bytes, const QByteArray& printed) {
        QTest::newRow(name) << bytes << printed;
    };
    row("plain", "a\tb\nc", "a\tb\nc");
    row("accents", "41.5\xc2\xb0\xe2\x82\xac\xf0\x9f\x98\x80",
        "41.5\xc2\xb0\xe2\x82\xac\xf0\x9f\x98\x80");
    row("escape sequence", "\x1b[2J\x07", "\\x1b[2J\\x07");
    row("line ends of another system", "a\r\nb\r", "a\nb");
    row("carriage return inside", "secret\rshown", "secret\\x0dshown");
    row("NUL", QByteArray("a\0b", 3), "a\\x00b");
    row("one byte that begins a sequence",
        "\x9b"
        "31m",
        "\\x9b31m");
    row("the same in two bytes",
        "\xc2\x9b"
        "31m",
        "\\x9b31m");
    row("text turned around",
        "\xe2\x80\xae"
        "gpj",
        "\\u202egpj");
    row("cut short", "a\xe2\x82", "a\\xe2\\x82");
    row("too long a form", "\xc0\x9b \xe0\x82\x9b \xf0\x80\x82\x9b",
        "\\xc0\\x9b \\xe0\\x82\\x9b \\xf0\\x80\\x82\\x9b");
    row("half a pair", "\xed\xa0\x80", "\\xed\\xa0\\x80");
    row("beyond the last character", "\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80");
}

void TestUnsafeText::nothingActsOnATerminal()
{
    QFETCH(QByteArray, bytes);
    const std::string printed = Orvex::getPrintable(bytes.toStdString());
    QTEST(QByteArray::fromStdString(printed), "printed");
}

void TestUnsafeText::markupIsShownLetterForLetter_data()
{
    addMarkup();
}

void TestUnsafeText::markupIsShownLetterForLetter()
{
    QFETCH(QString, text);
    QCOMPARE(getShown(Orvex::getLiteral(text)), text);
}

void TestUnsafeText::theToolsReadingsAreNoMarkup()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       Bench::reply("board monitor get",
                                    "<b>Core</b>: <i>1V</i> <s>2A</s>\n<u>Fan</u>: &lt;9&gt;\n"
                                    "COMMAND SUCCEEDED\n"));
    const Panel panel;
    const auto* const page = panel.find<Board::MonitoringLeaf>();
    QStringList shown;
    for (const QLabel* const label :
         page->findChild<QWidget*>("monitoringWidget")->findChildren<QLabel*>()) {
        shown << getShown(*label);
    }
    for (const char* const text :
         {"<b>Core</b>", "<i>1V</i>", "<s>2A</s>", "<u>Fan</u>", "&lt;9&gt;"}) {
        QVERIFY2(shown.contains(text), qPrintable(shown.join('|')));
    }
}

void TestUnsafeText::aMessageBoxShowsItsWordsLetterForLetter_data()
{
    addMarkup();
}

void TestUnsafeText::aMessageBoxShowsItsWordsLetterForLetter()
{
    QFETCH(QString, text);
    QMessageBox box;
    Kestoboard::setWords(&box, "Wrong: " + text, "Do: " + text);
    QStringList shown;
    for (const QLabel* const label : box.findChildren<QLabel*>()) {
        shown << getShown(*label);
    }
    QVERIFY2(shown.contains("Wrong: " + text), qPrintable(shown.join('|')));
    QVERIFY2(shown.contains("Do: " + text), qPrintable(shown.join('|')));
}

void TestUnsafeText::theStatusIsNoMarkup_data()
{
    addMarkup();
}

void TestUnsafeText::theStatusIsNoMarkup()
{
    QFETCH(QString, text);
    Kestoboard::ElidedLabel label(nullptr);
    label.setLine(text);
    QCOMPARE(getShown(label), text);
    QCOMPARE(getShown(label.toolTip()), text);
}

void TestUnsafeText::theToolTipOfAFileIsNoMarkup()
{
    const QString path = bench->writeFile("<b>A & B%1.ksb", "bits");
    const Zandu::FileSystemBrowser browser(QDir::currentPath(), QDir::Files | QDir::AllDirs,
                                           {"*.ksb"}, nullptr);
    const auto* const tree = browser.findChild<QTreeView*>();
    QTRY_VERIFY(findEntry(*tree, "<b>A & B%1.ksb").isValid());
    const QModelIndex index = findEntry(*tree, "<b>A & B%1.ksb");
    QCOMPARE(getShown(index.data(Qt::ToolTipRole).toString()), path);
}

void TestUnsafeText::aCommandFileIsOfferedByItsName()
{
    const Test::DebugMode debug(true);
    const QString name = "<b>A & B%1.cmd";
    bench->writeFile(name, "# nothing\n");
    const Panel panel;
    const QToolButton* files = nullptr;
    for (const QToolButton* const candidate : panel.getWindow()->findChildren<QToolButton*>()) {
        files = candidate->accessibleName() == "Command file" ? candidate : files;
    }
    QVERIFY(files != nullptr);
    QCOMPARE(files->menu()->actions().size(), 1);
    QCOMPARE(files->menu()->actions().first()->text(), name);
    QCOMPARE(getShown(files->toolTip()), name);
    // Two ampersands on a face are one for the reader; one would be swallowed.
    QCOMPARE(QString(files->text()).replace("&&", "&"), name);
    QCOMPARE(files->text().count('&'), 2);
}

void TestUnsafeText::theTitleShowsTheNameOfTheDirectory()
{
    const QString name = "bench [*] %1 <b>";
    QVERIFY(QDir().mkdir(name));
    QVERIFY(QDir::setCurrent(name));
    const FurnishedPanel panel;
    panel.getWindow()->winId();
    const QString title = panel.getWindow()->windowHandle()->title();
    QVERIFY2(title.startsWith(name), qPrintable(title));
}

void TestUnsafeText::aNotificationShowsItsSentence()
{
    QCOMPARE(Kestoboard::getNoticeBody("<a href='x'>A & B</a>", true),
             QString("&lt;a href='x'&gt;A &amp; B&lt;/a&gt;"));
    QCOMPARE(Kestoboard::getNoticeBody("<a>A & B</a>", false), QString("<a>A & B</a>"));
    QCOMPARE(Kestoboard::getNoticeBody("C:\\new\x1b", true), QString("C:\\new\\x1b"));
}

void TestUnsafeText::markupInARecentFileLoadsNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("picture beside") << "<img src=red.png width=100 height=40>";
    QTest::newRow("picture with its path") << "<img src='PATH' width=100 height=40>";
    QTest::newRow("picture as a location") << "<img src='file://PATH' width=100 height=40>";
    QTest::newRow("table background")
        << "<table background=red.png><tr><td>words words</td></tr></table>";
    QTest::newRow("style background")
        << "<p style='background-image:url(red.png)'>words words words</p>";
    QTest::newRow("imported style sheet")
        << "<style>@import url(red.css);</style><p>words words</p>";
}

void TestUnsafeText::markupInARecentFileLoadsNothing()
{
    QFETCH(QString, name);
    const QColor red(255, 0, 0);
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(red);
    QVERIFY(picture.save(bench->getPath("red.png")));
    bench->writeFile("red.css", "b, p, body { color: #ff0000; background-color: #ff0000 }");
    name.replace("PATH", bench->getPath("red.png"));

    const QImage image = paintRecentFile(name);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QVERIFY2(image.pixelColor(x, y) != red, qPrintable(QString("%1, %2").arg(x).arg(y)));
        }
    }
}

void TestUnsafeText::aPictureOfTheProgramIsNotLoadedEither()
{
    const QString name = "<img src='%1' width=100 height=40>";
    const QString picture = ":/qt-project.org/styles/commonstyle/images/dirclosed-32.png";
    QVERIFY(!QImage(picture).isNull());
    QCOMPARE(paintRecentFile(name.arg(picture)), paintRecentFile(name.arg("nothing.png")));
}

void TestUnsafeText::theConsolePrinterPrintsSigns()
{
    const QByteArray output = catchOutput([] {
        const Kestoboard::ConsolePrinter printer;
        Orvex::console->print("Connected \x1b]0;title\x07 %s %n", "");
        Orvex::console->print(std::string("a\0b", 3), "");
    });
    QCOMPARE(output, QByteArray("Connected \\x1b]0;title\\x07 %s %n\na\\x00b\n"));
}

void TestUnsafeText::theLastWordsHoldSigns()
{
    Orvex::console->print("Segmentation \x1b[2J fault", "");
    const std::string text = Kestoboard::LastWords::getText();
    QVERIFY(text.find("Segmentation \\x1b[2J fault\n") != std::string::npos);
    QVERIFY(text.find('\x1b') == std::string::npos);
}

void TestUnsafeText::aRefusalOnTheTerminalHoldsSigns()
{
    Program program;
    QVERIFY(program.run({"gone\x1b[2J%n.ksb"}));
    QCOMPARE(program.getStatus(), 1);
    const QString errors = program.getErrors();
    QVERIFY2(errors.contains("gone\\x1b[2J%n.ksb"), qPrintable(errors));
    QVERIFY(!errors.contains('\x1b'));
}

void TestUnsafeText::aDirectoryWithALineBreakIsNotWorkedIn()
{
    const QString name = QString("bench\n") + secondCommand;
    QVERIFY(QDir().mkdir(name));
    Program program;
    QVERIFY(program.run({"--directory", name}));
    QCOMPARE(program.getStatus(), 1);
    const QString errors = program.getErrors();
    QVERIFY2(errors.contains("line break"), qPrintable(errors));
    QCOMPARE(bench->getJournal(), QStringList());
}

void TestUnsafeText::aPathWithALineBreakIsNotOffered_data()
{
    QTest::addColumn<QString>("separator");
    QTest::newRow("line feed") << "\n";
    QTest::newRow("carriage return") << "\r";
    QTest::newRow("NUL") << QString(QChar());
}

void TestUnsafeText::aPathWithALineBreakIsNotOffered()
{
    QFETCH(QString, separator);
    if (!separator.at(0).isNull()) {
        bench->writeFile("a" + separator + "b.ksb", "bits");
    }
    const QString complaint =
        Kestoboard::getBitstreamComplaint(bench->getPath("a" + separator + "b.ksb"));
    QVERIFY2(complaint.contains("line break"), qPrintable(complaint));
    QVERIFY(Orvex::isOneLine(complaint));
}

void TestUnsafeText::aFileWithALineBreakCannotBeChosen()
{
    const QString name = QString("a\n") + secondCommand + ".ksb";
    const QString path = bench->writeFile(name, "bits");
    bench->writeFile("good.ksb", "bits");
    Zandu::FileSystemBrowser browser(QDir::currentPath(), QDir::Files | QDir::AllDirs, {"*.ksb"},
                                     nullptr);
    browser.resize(640, 480);
    browser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browser));
    auto* const tree = browser.findChild<QTreeView*>();
    QTRY_VERIFY(findEntry(*tree, name).isValid() && findEntry(*tree, "good.ksb").isValid());
    const auto click = [tree](const QString& entry) {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                          tree->visualRect(findEntry(*tree, entry)).center());
    };
    const auto countChosen = [&browser] { return browser.getSelectedItems().getCount(); };
    click("good.ksb");
    QCOMPARE(countChosen(), 1UL);
    QSignalSpy clicks(&browser, &Zandu::FileSystemBrowser::itemClicked);
    click(name);
    QCOMPARE(countChosen(), 0UL);
    QCOMPARE(clicks.count(), 0);
    QVERIFY(browser.findChild<QLabel*>("noticeText")->text().contains("line break"));
    tree->selectAll();
    tree->setCurrentIndex(findEntry(*tree, name));
    QCOMPARE(countChosen(), 0UL);
    browser.setSelectedFile(path);
    QCOMPARE(countChosen(), 0UL);
}

void TestUnsafeText::aFileWithALineBreakIsNotLoaded()
{
    const QString path = bench->writeFile(QString("a\n") + secondCommand + ".ksb", "bits");
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    const FurnishedPanel panel;
    panel.get().findByText<QToolButton>("Browse")->click();
    panel.get().find<Zandu::FileSystemBrowser>()->setSelectedFile(path);
    bench->takeJournal();
    panel.get().findByText<QPushButton>("Load")->click();
    const QStringList journal = bench->takeJournal();
    // Where nothing is chosen, the directory that the browser shows goes to the tool.
    QVERIFY2(journal.contains("chip bitstream load " + QDir::currentPath()),
             qPrintable(journal.join('|')));
    QVERIFY2(journal.filter(secondCommand).isEmpty(), qPrintable(journal.join('|')));
}

void TestUnsafeText::aDirectoryWithALineBreakCannotBeEntered()
{
    const QString name = QString("a\n") + secondCommand;
    QVERIFY(QDir().mkdir(name));
    Zandu::FileSystemBrowser browser(QDir::currentPath(), QDir::Files | QDir::AllDirs, {}, nullptr);
    browser.open(name);
    QVERIFY(browser.findChild<QLabel*>("noticeText")->text().contains("line break"));
    browser.open(".");
    QTRY_VERIFY(findEntry(*browser.findChild<QTreeView*>(), name).isValid());
    QCOMPARE(browser.getPath(), QDir::currentPath());
}

void TestUnsafeText::aBrowserDoesNotStartInADirectoryWithALineBreak()
{
    const QString name = QString("a\n") + secondCommand;
    QVERIFY(QDir().mkdir(name));
    const Zandu::FileSystemBrowser browser(name, QDir::Files | QDir::AllDirs, {}, nullptr);
    QCOMPARE(browser.getPath(), QDir::homePath());
}

void TestUnsafeText::aRecentFileWithALineBreakIsRefused()
{
    const QString good = bench->writeFile("good.ksb", "bits");
    const QString bad = bench->writeFile(QString("a\n") + secondCommand, "bits");
    QSettings().setValue("recentLoadList", QStringList{bad, good});
    const ConsoleRecorder recorder;
    Kestoboard::refuseRecentLoads();
    QCOMPARE(QSettings().value("recentLoadList").toStringList(), QStringList{good});
    QCOMPARE(recorder.getMessages().size(), 1);
    QVERIFY(recorder.getLines().first().contains("a\\x0aboard set reset on"));
}

void TestUnsafeText::pastedLinesStayOneCommand_data()
{
    QTest::addColumn<QString>("field");
    QTest::newRow("command") << "";
    QTest::newRow("export path") << "exportLineEdit";
    QTest::newRow("capture file") << "filenameLineEdit";
}

void TestUnsafeText::pastedLinesStayOneCommand()
{
    QFETCH(QString, field);
    const Test::DebugMode debug(true);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    const QString file = bench->writeFile("good.ksb", "bits");
    QSettings().setValue("recentLoadList", QStringList{file});
    const FurnishedPanel panel;
    auto* const edit = field.isEmpty()
                           ? static_cast<QLineEdit*>(panel.get().find<Board::CommandLineEdit>())
                           : panel.getWindow()->findChild<QLineEdit*>(field);
    QVERIFY(edit != nullptr);
    QApplication::clipboard()->setText(QString("x\n") + secondCommand + "\ny");
    edit->paste();
    QVERIFY2(Orvex::isOneLine(edit->text()), qPrintable(edit->text()));
    bench->takeJournal();
    if (field.isEmpty()) {
        QTest::keyClick(edit, Qt::Key_Return);
    } else if (field == "filenameLineEdit") {
        panel.get().findByText<QPushButton>("Capture")->click();
    } else {
        auto* const list = panel.getWindow()->findChild<QListWidget*>("recentWidget");
        list->setCurrentRow(0);
        panel.get().findByText<QPushButton>("Load")->click();
    }
    const QStringList journal = bench->takeJournal();
    QVERIFY2(!journal.filter(secondCommand).isEmpty(), qPrintable(journal.join('|')));
    QVERIFY2(!journal.contains(secondCommand), qPrintable(journal.join('|')));
}

void TestUnsafeText::aStoredFileNameStaysOneCommand()
{
    const Test::DebugMode debug(true);
    QSettings().setValue("ScopeLeaf/filename", QString("x\n") + secondCommand);
    const FurnishedPanel panel;
    const auto* const edit = panel.getWindow()->findChild<QLineEdit*>("filenameLineEdit");
    QCOMPARE(edit->text(), QString("x ") + secondCommand);
}

KESTOBOARD_TEST_MAIN(TestUnsafeText)
#include "tst_unsafe_text.moc"

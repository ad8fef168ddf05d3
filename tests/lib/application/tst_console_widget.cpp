#include <application/ConsoleWidget.h>

#include <foundation/Console.h>
#include <foundation/Fatal.h>
#include <foundation/Theme.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QThread>
#include <QToolButton>
#include <QTreeView>
#include <QWheelEvent>

#include <QRegularExpression>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>

using Orvex::Theme;

namespace
{

using Lines = QStringList;

/// In milliseconds; only ends a test that fails.
constexpr int longestWait = 30000;

std::string getNumbered(int number)
{
    return "line " + std::to_string(number);
}

/// A picture in which nothing is drawn.
bool isBlank(const QImage& image)
{
    QImage blank(image.size(), image.format());
    blank.fill(image.pixelColor(0, 0));
    return image == blank;
}

} // namespace

class ConsoleWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void showsWhatWasSaidBeforeItWasMade();
    void staysEmptyWithoutAConsole();
    void outlivesTheConsole();
    void showsMessagesAtTheirDepth();
    void theFirstLinesOfATurnAppearAtOnce();
    void aFloodIsShownOverManyTurnsInItsOrder();
    void aTurnThatTookLongToSayGivesTheWindowBackFirst();
    void linesThatComeUnseenAreLaidOutWhenItIsShown();
    void manyUnseenLinesDoNotPileUp();
    void mayBeDestroyedWhileLinesWait();
    void showsAReportFromAnotherThread();
    void textIsShownLiterally_data();
    void textIsShownLiterally();
    void severalLinesStandAsOneBlock();
    void scriptsFromRightToLeftBeginAtTheSameMargin();
    void errorsAndWarningsHaveAColourAndAMark_data();
    void errorsAndWarningsHaveAColourAndAMark();
    void aSwitchOfTheThemeRecoloursWhatIsShown();
    void followsTheEndWhileItStandsThere();
    void followsTheEndOfLinesThatAreWrapped();
    void staysInPlaceWhenThePersonHasScrolledUp();
    void staysInPlaceWhenAKeyHasLedAway();
    void staysAtAMatchThatWasFoundFurtherUp();
    void theJumpButtonLeadsBackToTheEnd();
    void followsTheEndWhenItIsMadeSmaller();
    void aSelectionStaysWhatItWasWhileLinesCome();
    void linesOverTheLimitGoInLargeSteps_data();
    void linesOverTheLimitGoInLargeSteps();
    void aSecondDropAddsToTheFirst();
    void aLowerLimitDropsAtOnce();
    void theViewStaysInPlaceWhenLinesAreDropped();
    void aHugeLineIsShownInPiecesAndCopiedWhole();
    void aPieceNeverEndsWithinACharacter();
    void theFilterHidesWithoutForgetting();
    void theEndIsSeenWholeWhenTheFilterGoes();
    void aCopyLeavesOutWhatTheFilterHides();
    void findsAndCounts();
    void goesToTheMatchWhileOneTypes();
    void typingPrefersTheMatchBelowTheCursor();
    void findsTheNextAndThePreviousAroundTheEnds();
    void findsASingleLetterBackwards();
    void tellsWhichMatchIsSelected();
    void findsWithTheCaseOfTheLetters();
    void findsOnlyWhatIsShown();
    void theCountGoesOnWhileLinesCome();
    void escapeClosesTheFindBar();
    void whatIsFoundIsMarked();
    void copiesTheSelectedText();
    void copiesTimesOnlyWhenWanted();
    void timesAreShownBesideTheText();
    void savesAllOfTheText();
    void savesWhatStillWaitsToBeShown();
    void saysWhyItCouldNotSave_data();
    void saysWhyItCouldNotSave();
    void clearsTheViewOnly();
    void theWheelWithControlChangesTheFontSize();
    void theFontSizeStaysReadable();
    void theTextIsMonospacedAndReadOnly();
    void everyControlHasAnAccessibleName();
    void theDialogOfSavingCutsNoSizeOrDateOff();
    void aScreenReaderHearsTheLevelOfALine();
    void aScreenReaderFindsTheTextAsItIs();
    void aScreenReaderGoesFromUnitToUnit();
    void aScreenReaderMovesTheCursorAndSelects();

private:
    void makeWidget();
    Lines getLines() const;
    Lines getShownLines() const;
    void printLines(int count);
    void showAll();
    QAction* getAction(const QString& text) const;
    QToolButton* getButton(const QString& name) const;
    QLabel* getLabel(const QString& beginning) const;
    QScrollBar* getScrollBar() const { return view->verticalScrollBar(); }
    QTextBlock getFirstSeen() const { return view->cursorForPosition(QPoint(0, 0)).block(); }
    /// Whether the last line is seen from top to bottom.
    bool isEndSeen() const;
    QColor getColor(const QString& line) const;
    QImage getGutter() const;
    int getTextColumn() const;
    void search(const QString& text);

    std::unique_ptr<Theme> theme;
    std::unique_ptr<Orvex::Console> console;
    std::unique_ptr<Zandu::ConsoleWidget> widget;
    QPlainTextEdit* view = nullptr;
};

void ConsoleWidgetTest::initTestCase()
{
    theme = std::make_unique<Theme>(Theme::Scheme::Light);
    Orvex::theme = theme.get();
    theme->apply();
}

void ConsoleWidgetTest::init()
{
    console = std::make_unique<Orvex::Console>();
    Orvex::console = console.get();
    makeWidget();
}

void ConsoleWidgetTest::cleanup()
{
    widget.reset();
    console.reset();
    Orvex::console = nullptr;
}

void ConsoleWidgetTest::makeWidget()
{
    widget = std::make_unique<Zandu::ConsoleWidget>(nullptr);
    view = widget->findChild<QPlainTextEdit*>();
    QVERIFY(view != nullptr);
    widget->resize(600, 300);
    widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(widget.get()));
}

bool ConsoleWidgetTest::isEndSeen() const
{
    QTextCursor end(view->document());
    end.movePosition(QTextCursor::End);
    return view->viewport()->rect().contains(view->cursorRect(end));
}

Lines ConsoleWidgetTest::getLines() const
{
    return view->toPlainText().split(QLatin1Char('\n'));
}

Lines ConsoleWidgetTest::getShownLines() const
{
    Lines lines;
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        if (block.isVisible()) {
            lines.push_back(block.text());
        }
    }
    return lines;
}

void ConsoleWidgetTest::printLines(int count)
{
    for (int number = 0; number < count; ++number) {
        console->print(getNumbered(number), "");
    }
    showAll();
}

void ConsoleWidgetTest::showAll()
{
    widget->getText();
}

QAction* ConsoleWidgetTest::getAction(const QString& text) const
{
    for (QAction* action : widget->findChildren<QAction*>()) {
        if (action->text() == text) {
            return action;
        }
    }
    return nullptr;
}

QToolButton* ConsoleWidgetTest::getButton(const QString& name) const
{
    for (QToolButton* button : widget->findChildren<QToolButton*>()) {
        if (button->accessibleName() == name || button->text() == name) {
            return button;
        }
    }
    return nullptr;
}

QLabel* ConsoleWidgetTest::getLabel(const QString& beginning) const
{
    for (QLabel* label : widget->findChildren<QLabel*>()) {
        if (label->isVisible() && label->text().startsWith(beginning)) {
            return label;
        }
    }
    return nullptr;
}

/// The colour that a line is shown in; that of the palette when it has none of its own.
QColor ConsoleWidgetTest::getColor(const QString& line) const
{
    for (const QTextEdit::ExtraSelection& selection : view->extraSelections()) {
        if (selection.cursor.selectedText() == line) {
            return selection.format.foreground().color();
        }
    }
    return view->palette().color(QPalette::Text);
}

/// What stands left of the first line.
QImage ConsoleWidgetTest::getGutter() const
{
    const QPoint text = view->viewport()->mapTo(view, QPoint(0, 0));
    return view->grab(QRect(2, text.y(), text.x() - 2, 30)).toImage();
}

int ConsoleWidgetTest::getTextColumn() const
{
    const QTextCursor start(view->document()->begin());
    return view->viewport()->x() + view->cursorRect(start).left();
}

void ConsoleWidgetTest::search(const QString& text)
{
    widget->find();
    widget->findChild<QLineEdit*>()->setText(text);
}

void ConsoleWidgetTest::showsWhatWasSaidBeforeItWasMade()
{
    console->print("before", "");
    makeWidget();
    console->print("after", "");
    QCOMPARE(getLines(), Lines({QStringLiteral("before"), QStringLiteral("after")}));
}

void ConsoleWidgetTest::staysEmptyWithoutAConsole()
{
    Orvex::console = nullptr;
    makeWidget();
    QCOMPARE(widget->getText(), QString());
}

void ConsoleWidgetTest::outlivesTheConsole()
{
    console->print("last words", "");
    console.reset();
    Orvex::console = nullptr;
    QCoreApplication::processEvents();
    QCOMPARE(widget->getText(), QStringLiteral("last words"));
}

void ConsoleWidgetTest::showsMessagesAtTheirDepth()
{
    console->print("outside", "");
    console->indent();
    console->warning("one step", "");
    console->indent();
    console->error("two steps", "");
    console->unindent();
    console->unindent();
    console->print("outside again", "");
    QCOMPARE(getLines(),
             Lines({QStringLiteral("outside"), QStringLiteral("    one step"),
                    QStringLiteral("        two steps"), QStringLiteral("outside again")}));
}

void ConsoleWidgetTest::theFirstLinesOfATurnAppearAtOnce()
{
    for (int number = 0; number < 20; ++number) {
        console->print(getNumbered(number), "");
        QCOMPARE(getLines().size(), number + 1);
        QCOMPARE(getLines().last(), QString::fromStdString(getNumbered(number)));
    }
}

void ConsoleWidgetTest::aFloodIsShownOverManyTurnsInItsOrder()
{
    constexpr int count = 100000;
    for (int number = 0; number < count; ++number) {
        console->print(getNumbered(number), "");
    }
    QVERIFY(view->blockCount() < count / 10);
    // Other tasks of the window get their turn while lines are being shown.
    int turns = 0;
    QTimer others;
    connect(&others, &QTimer::timeout, this, [&] { turns += view->blockCount() < count ? 1 : 0; });
    others.start(0);
    QTRY_COMPARE_WITH_TIMEOUT(view->blockCount(), count, 60000);
    QVERIFY(turns > 3);
    int number = 0;
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        QCOMPARE(block.text(), QString::fromStdString(getNumbered(number++)));
    }
}

void ConsoleWidgetTest::aTurnThatTookLongToSayGivesTheWindowBackFirst()
{
    QElapsedTimer saying;
    saying.start();
    int count = 0;
    const qint64 muchLongerThanASlice = 50;
    while (count < 1000 || !saying.hasExpired(muchLongerThanASlice)) {
        console->print(getNumbered(count++), "");
    }
    // Another task of the window that has become due meanwhile.
    int shownBefore = 0;
    QTimer other;
    other.setSingleShot(true);
    connect(&other, &QTimer::timeout, this, [&] { shownBefore = view->blockCount(); });
    other.start(0);
    QTRY_COMPARE_WITH_TIMEOUT(view->blockCount(), count, 60000);
    QVERIFY2(shownBefore < 100, qPrintable(QString::number(shownBefore)));
    QVERIFY(shownBefore > 0);
}

void ConsoleWidgetTest::linesThatComeUnseenAreLaidOutWhenItIsShown()
{
    printLines(100);
    widget->hide();
    console->print("said unseen", "");
    QVERIFY(!getLines().contains(QStringLiteral("said unseen")));
    widget->show();
    QCOMPARE(getLines().last(), QStringLiteral("said unseen"));
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
    QVERIFY(!getButton(QStringLiteral("Jump to end"))->isVisible());

    widget->hide();
    console->print("asked for unseen", "");
    QVERIFY(widget->getText().endsWith(QStringLiteral("\nasked for unseen")));
}

void ConsoleWidgetTest::manyUnseenLinesDoNotPileUp()
{
    widget->hide();
    constexpr int count = 5000;
    for (int number = 0; number < count; ++number) {
        console->print(getNumbered(number), "");
    }
    QTRY_COMPARE_WITH_TIMEOUT(view->blockCount(), count, 60000);
    QCOMPARE(getLines().last(), QString::fromStdString(getNumbered(count - 1)));
    widget->show();
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
}

void ConsoleWidgetTest::mayBeDestroyedWhileLinesWait()
{
    for (int number = 0; number < 1000; ++number) {
        console->print(getNumbered(number), "");
    }
    widget.reset();
    QCoreApplication::processEvents();
    console->print("nobody listens", "");
}

void ConsoleWidgetTest::showsAReportFromAnotherThread()
{
    std::thread worker([this] { console->print(Orvex::Fatal("from the worker")); });
    worker.join();
    QTRY_VERIFY(view->toPlainText().contains(QLatin1String("from the worker")));
}

void ConsoleWidgetTest::textIsShownLiterally_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup") << QByteArray("<b>bold</b> &amp; <img src=x>")
                            << QStringLiteral("<b>bold</b> &amp; <img src=x>");
    QTest::newRow("blanks") << QByteArray("  two   three    ")
                            << QStringLiteral("  two   three    ");
    QTest::newRow("tab") << QByteArray("a\tb") << QStringLiteral("a\tb");
    QTest::newRow("empty") << QByteArray("") << QString();
    QTest::newRow("accents") << QByteArray("caf\xc3\xa9 41.5 \xc2\xb0"
                                           "C")
                             << QStringLiteral("café 41.5 °C");
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9") << QStringLiteral("café");
    QTest::newRow("NUL") << QByteArray("a\0b", 3) << QStringLiteral("a\\x00b");
    QTest::newRow("escape") << QByteArray("\x1b[31mred") << QStringLiteral("\\x1b[31mred");
    QTest::newRow("carriage return within")
        << QByteArray("50%\r100%") << QStringLiteral("50%\\x0d100%");
    QTest::newRow("delete") << QByteArray("\x7f") << QStringLiteral("\\x7f");
    QTest::newRow("high control") << QByteArray("\x85") << QStringLiteral("\\x85");
    QTest::newRow("line separator") << QByteArray("a\xe2\x80\xa8"
                                                  "b")
                                    << QStringLiteral("a\\u2028b");
    QTest::newRow("direction override") << QByteArray("a\xe2\x80\xae"
                                                      "b")
                                        << QStringLiteral("a\\u202eb");
    QTest::newRow("internal mark of documents") << QByteArray("a\xef\xb7\x90"
                                                              "b")
                                                << QStringLiteral("a\\ufdd0b");
    QTest::newRow("CR LF") << QByteArray("a\r\nb") << QStringLiteral("a\nb");
    QTest::newRow("line feed at the end") << QByteArray("a\n") << QStringLiteral("a\n");
}

void ConsoleWidgetTest::textIsShownLiterally()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, shown);
    console->print(bytes.toStdString(), "");
    QCOMPARE(view->toPlainText(), shown);
    QCOMPARE(widget->getText(), shown);
}

void ConsoleWidgetTest::severalLinesStandAsOneBlock()
{
    console->indent();
    console->error("first\n  second\n\nfourth", "");
    QCOMPARE(getLines(), Lines({QStringLiteral("    first"), QStringLiteral("      second"),
                                QStringLiteral("    "), QStringLiteral("    fourth")}));
}

void ConsoleWidgetTest::scriptsFromRightToLeftBeginAtTheSameMargin()
{
    const QString hebrew = QStringLiteral("שלום");
    console->print(hebrew.toStdString(), "");
    QCOMPARE(getLines().last(), hebrew);
    QCOMPARE(view->document()->defaultTextOption().textDirection(), Qt::LeftToRight);
    const QTextLine line = view->document()->lastBlock().layout()->lineAt(0);
    QVERIFY(line.naturalTextRect().left() < 50);
}

void ConsoleWidgetTest::errorsAndWarningsHaveAColourAndAMark_data()
{
    QTest::addColumn<Theme::Scheme>("scheme");
    QTest::newRow("light") << Theme::Scheme::Light;
    QTest::newRow("dark") << Theme::Scheme::Dark;
}

void ConsoleWidgetTest::errorsAndWarningsHaveAColourAndAMark()
{
    QFETCH(Theme::Scheme, scheme);
    theme->setScheme(scheme);
    theme->apply();
    console->print("normal", "");
    QCOMPARE(getColor(QStringLiteral("normal")), theme->getColor("text"));
    QVERIFY(isBlank(getGutter()));
    const int column = getTextColumn();
    widget->clear();
    console->warning("warning", "");
    QCOMPARE(getColor(QStringLiteral("warning")), theme->getColor("warning"));
    QCOMPARE(getTextColumn(), column);
    const QImage warning = getGutter();
    QVERIFY(!isBlank(warning));
    widget->clear();
    console->error("error", "");
    QCOMPARE(getColor(QStringLiteral("error")), theme->getColor("error"));
    QCOMPARE(getTextColumn(), column);
    QVERIFY(!isBlank(getGutter()));
    QVERIFY(getGutter() != warning);
    theme->setScheme(Theme::Scheme::Light);
    theme->apply();
}

void ConsoleWidgetTest::aSwitchOfTheThemeRecoloursWhatIsShown()
{
    console->error("wrong", "");
    const QColor before = getColor(QStringLiteral("wrong"));
    theme->setScheme(Theme::Scheme::Dark);
    theme->apply();
    const QColor after = getColor(QStringLiteral("wrong"));
    QVERIFY(before != after);
    QCOMPARE(after, theme->getColor("error"));
    theme->setScheme(Theme::Scheme::Light);
    theme->apply();
    QCOMPARE(getColor(QStringLiteral("wrong")), before);
}

void ConsoleWidgetTest::followsTheEndWhileItStandsThere()
{
    for (int round = 0; round < 5; ++round) {
        printLines(100);
        QVERIFY(getScrollBar()->maximum() > 0);
        QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
        QVERIFY(!getButton(QStringLiteral("Jump to end"))->isVisible());
    }
}

void ConsoleWidgetTest::followsTheEndOfLinesThatAreWrapped()
{
    for (int length : {10, 300, 20, 1500, 40, 1900}) {
        console->print(std::string(static_cast<std::size_t>(length), 'x'), "");
        QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
        QVERIFY(!getButton(QStringLiteral("Jump to end"))->isVisible());
        const QRect end = view->cursorRect(QTextCursor(view->document()->lastBlock()));
        QVERIFY(end.top() < view->viewport()->height());
    }
    QVERIFY(getScrollBar()->maximum() > 0);
}

void ConsoleWidgetTest::staysInPlaceWhenThePersonHasScrolledUp()
{
    printLines(100);
    getScrollBar()->setValue(10);
    printLines(100);
    QCOMPARE(getScrollBar()->value(), 10);
    QCOMPARE(getFirstSeen().blockNumber(), 10);
    QVERIFY(getButton(QStringLiteral("Jump to end"))->isVisible());
}

void ConsoleWidgetTest::staysInPlaceWhenAKeyHasLedAway()
{
    printLines(100);
    QTest::keyClick(view, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(getScrollBar()->value(), 0);
    QVERIFY(getButton(QStringLiteral("Jump to end"))->isVisible());
    printLines(1);
    QCOMPARE(getScrollBar()->value(), 0);
}

void ConsoleWidgetTest::staysAtAMatchThatWasFoundFurtherUp()
{
    printLines(100);
    search(QStringLiteral("line 3"));
    for (int step = 0; step < 100 && getScrollBar()->value() == getScrollBar()->maximum(); ++step) {
        widget->findPrevious();
    }
    const int value = getScrollBar()->value();
    QVERIFY(value < getScrollBar()->maximum());
    QVERIFY(getButton(QStringLiteral("Jump to end"))->isVisible());
    QVERIFY(!view->extraSelections().isEmpty());
    printLines(1);
    QCOMPARE(getScrollBar()->value(), value);
}

void ConsoleWidgetTest::theJumpButtonLeadsBackToTheEnd()
{
    printLines(100);
    getScrollBar()->setValue(0);
    QToolButton* jump = getButton(QStringLiteral("Jump to end"));
    QVERIFY(jump->isVisible());
    jump->click();
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
    QVERIFY(!jump->isVisible());
    printLines(10);
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
}

void ConsoleWidgetTest::followsTheEndWhenItIsMadeSmaller()
{
    printLines(100);
    widget->resize(300, 150);
    QCoreApplication::processEvents();
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
    printLines(1);
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
}

void ConsoleWidgetTest::aSelectionStaysWhatItWasWhileLinesCome()
{
    printLines(3);
    widget->selectAll();
    const QString before = view->textCursor().selectedText();
    printLines(3);
    QCOMPARE(view->textCursor().selectedText(), before);
}

void ConsoleWidgetTest::linesOverTheLimitGoInLargeSteps_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("step");
    QTest::newRow("a tenth of the limit") << 100 << 10;
    QTest::newRow("no more than is felt") << 30000 << 2000;
}

void ConsoleWidgetTest::linesOverTheLimitGoInLargeSteps()
{
    QFETCH(int, limit);
    QFETCH(int, step);
    widget->setLineLimit(limit);
    printLines(limit + step);
    QCOMPARE(view->blockCount(), limit + step);
    console->print("one more", "");
    showAll();
    QCOMPARE(view->blockCount(), limit);
    const Lines lines = getLines();
    // One line beyond the step, and the one that makes room for the remark.
    QCOMPARE(lines.first(),
             QStringLiteral("(%1 earlier lines were dropped.)").arg(QLocale().toString(step + 2)));
    QCOMPARE(lines.at(1), QString::fromStdString(getNumbered(step + 2)));
    QCOMPARE(lines.last(), QStringLiteral("one more"));
}

void ConsoleWidgetTest::aSecondDropAddsToTheFirst()
{
    widget->setLineLimit(100);
    printLines(111);
    printLines(11);
    QCOMPARE(getLines().first(), QStringLiteral("(23 earlier lines were dropped.)"));
    QCOMPARE(getLines().filter(QStringLiteral("dropped")).size(), 1);
}

void ConsoleWidgetTest::aLowerLimitDropsAtOnce()
{
    printLines(50);
    widget->setLineLimit(10);
    QCOMPARE(widget->getLineLimit(), 10);
    QCOMPARE(view->blockCount(), 10);
    QCOMPARE(getLines().last(), QStringLiteral("line 49"));
    widget->setLineLimit(-3);
    QCOMPARE(widget->getLineLimit(), 1);
    QCOMPARE(view->blockCount(), 1);
    console->print("still alive", "");
    QCOMPARE(view->blockCount(), 1);
}

void ConsoleWidgetTest::theViewStaysInPlaceWhenLinesAreDropped()
{
    widget->setLineLimit(200);
    printLines(220);
    getScrollBar()->setValue(100);
    const QString before = getFirstSeen().text();
    console->print("one more", "");
    showAll();
    QCOMPARE(view->blockCount(), 200);
    QCOMPARE(getFirstSeen().text(), before);
}

void ConsoleWidgetTest::aHugeLineIsShownInPiecesAndCopiedWhole()
{
    constexpr int size = 10 * 1024 * 1024;
    std::string huge(size, 'x');
    huge += "end";
    console->print("before", "");
    console->print(huge, "");
    console->print("after", "");
    QVERIFY(view->blockCount() < 1000);
    QTRY_COMPARE_WITH_TIMEOUT(getLines().last(), QStringLiteral("after"), 60000);
    const Lines lines = getLines();
    for (const QString& line : lines) {
        QVERIFY(line.size() <= 4000);
    }
    QCOMPARE(lines.at(lines.size() - 2),
             QStringLiteral("(One line of %1 characters, shown in pieces of %2.)")
                 .arg(QLocale().toString(size + 3), QLocale().toString(2000)));
    const QString whole =
        QStringLiteral("before\n") + QString::fromStdString(huge) + QStringLiteral("\nafter");
    QVERIFY(widget->getText() == whole);
    widget->selectAll();
    widget->copy();
    QVERIFY(QGuiApplication::clipboard()->text() == whole);
}

void ConsoleWidgetTest::aPieceNeverEndsWithinACharacter()
{
    // One place is taken before characters of two places, so that a piece would end within one.
    QString text = QStringLiteral("a");
    for (int count = 0; count < 5000; ++count) {
        text += QStringLiteral("😀");
    }
    console->print(text.toStdString(), "");
    showAll();
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        QVERIFY(!block.text().at(0).isLowSurrogate());
    }
    QVERIFY(widget->getText() == text);
}

void ConsoleWidgetTest::theFilterHidesWithoutForgetting()
{
    console->print("normal", "");
    console->warning("warning", "");
    console->error("error", "");
    getAction(QStringLiteral("Warnings and errors"))->trigger();
    QCOMPARE(getShownLines(), Lines({QStringLiteral("warning"), QStringLiteral("error")}));
    getAction(QStringLiteral("Errors only"))->trigger();
    QCOMPARE(getShownLines(), Lines({QStringLiteral("error")}));
    console->print("more", "");
    console->error("second error\nover two lines", "");
    QCOMPARE(getShownLines(), Lines({QStringLiteral("error"), QStringLiteral("second error"),
                                     QStringLiteral("over two lines")}));
    QVERIFY(getButton(QStringLiteral("Errors only")) != nullptr);
    const QString all =
        QStringLiteral("normal\nwarning\nerror\nmore\nsecond error\nover two lines");
    QCOMPARE(widget->getText(), all);
    getAction(QStringLiteral("All messages"))->trigger();
    QCOMPARE(getShownLines().join(QLatin1Char('\n')), all);
}

/// In views of many heights: where a line is broken near their upper edge, the end is easily
/// missed.
void ConsoleWidgetTest::theEndIsSeenWholeWhenTheFilterGoes()
{
    for (int height = 150; height < 230; height += 4) {
        cleanup();
        init();
        widget->resize(800, height);
        widget->setFontSize(8);
        const int columns =
            view->viewport()->width() / view->fontMetrics().horizontalAdvance(QLatin1Char('w'));
        for (int group = 0; group < 2; ++group) {
            for (int line = 0; line < 16; ++line) {
                // Some fit into the width as it is, and not beside the times.
                const int words = line % 3 == 1 ? columns - 10 : columns / 2 + 4 * line;
                console->print(std::string(static_cast<std::size_t>(words), 'w') + " ends", "");
            }
            for (int line = 0; line < 4; ++line) {
                console->warning("warning", "");
            }
        }
        showAll();
        getAction(QStringLiteral("Warnings and errors"))->trigger();
        QCoreApplication::processEvents();
        widget->setTimesShown(true);
        QCoreApplication::processEvents();
        getAction(QStringLiteral("All messages"))->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(isEndSeen(), longestWait);
        QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
    }
}

void ConsoleWidgetTest::aCopyLeavesOutWhatTheFilterHides()
{
    console->error("first", "");
    console->print("hidden", "");
    console->error("second", "");
    getAction(QStringLiteral("Errors only"))->trigger();
    widget->selectAll();
    widget->copy();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("first\nsecond"));
}

void ConsoleWidgetTest::findsAndCounts()
{
    console->print("one two one", "");
    console->print("One", "");
    search(QStringLiteral("one"));
    QTRY_VERIFY(getLabel(QStringLiteral("3 of 3")) != nullptr);
    search(QStringLiteral("two"));
    QTRY_VERIFY(getLabel(QStringLiteral("1 of 1")) != nullptr);
    view->moveCursor(QTextCursor::End);
    QVERIFY(getLabel(QStringLiteral("1 match")) != nullptr);
    search(QStringLiteral("three"));
    QTRY_VERIFY(getLabel(QStringLiteral("No match")) != nullptr);
    widget->findNext();
    QVERIFY(getLabel(QStringLiteral("No match")) != nullptr);
}

void ConsoleWidgetTest::goesToTheMatchWhileOneTypes()
{
    console->print("launched", "");
    printLines(300);
    QVERIFY(view->textCursor().atEnd());
    widget->find();
    auto* field = widget->findChild<QLineEdit*>();
    QTest::keyClicks(field, QStringLiteral("line 10"));
    QCOMPARE(view->textCursor().block().text(), QStringLiteral("line 109"));
    QVERIFY(view->viewport()->rect().contains(view->cursorRect()));
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("launched"));
    QCOMPARE(view->textCursor().selectedText(), QStringLiteral("launched"));
    QVERIFY(view->viewport()->rect().contains(view->cursorRect()));
    QTRY_VERIFY(getLabel(QStringLiteral("1 of 1")) != nullptr);
}

void ConsoleWidgetTest::typingPrefersTheMatchBelowTheCursor()
{
    printLines(30);
    view->setTextCursor(QTextCursor(view->document()->findBlockByNumber(15)));
    search(QStringLiteral("line 1"));
    QCOMPARE(view->textCursor().block().text(), QStringLiteral("line 15"));
    search(QStringLiteral("line 2"));
    QCOMPARE(view->textCursor().block().text(), QStringLiteral("line 20"));
}

void ConsoleWidgetTest::findsTheNextAndThePreviousAroundTheEnds()
{
    printLines(300);
    const auto getFound = [this] { return view->textCursor().block().text(); };
    search(QStringLiteral("line 29"));
    view->moveCursor(QTextCursor::Start);
    for (const char* expected : {"line 29", "line 290", "line 291"}) {
        widget->findNext();
        QCOMPARE(getFound(), QString::fromLatin1(expected));
        QCOMPARE(view->textCursor().selectedText(), QStringLiteral("line 29"));
    }
    for (const char* expected : {"line 290", "line 29", "line 299", "line 298"}) {
        widget->findPrevious();
        QCOMPARE(getFound(), QString::fromLatin1(expected));
    }
    widget->findNext();
    widget->findNext();
    QCOMPARE(getFound(), QStringLiteral("line 29"));
}

void ConsoleWidgetTest::findsASingleLetterBackwards()
{
    console->print("axa", "");
    console->print("a", "");
    search(QStringLiteral("a"));
    QCOMPARE(view->textCursor().selectionStart(), 4);
    for (const int expected : {2, 0, 4}) {
        widget->findPrevious();
        QCOMPARE(view->textCursor().selectionStart(), expected);
    }
}

void ConsoleWidgetTest::tellsWhichMatchIsSelected()
{
    console->print("needle and needle", "");
    console->print("hay", "");
    console->print("needle", "");
    view->moveCursor(QTextCursor::Start);
    search(QStringLiteral("needle"));
    for (const char* expected : {"1 of 3", "2 of 3", "3 of 3", "1 of 3"}) {
        QTRY_VERIFY2(getLabel(QString::fromLatin1(expected)) != nullptr, expected);
        widget->findNext();
    }
    widget->findPrevious();
    widget->findPrevious();
    QVERIFY(getLabel(QStringLiteral("3 of 3")) != nullptr);
    // Lines that come do not change which one it is.
    console->print("needle", "");
    QTRY_VERIFY(getLabel(QStringLiteral("3 of 4")) != nullptr);
    view->moveCursor(QTextCursor::Start);
    QVERIFY(getLabel(QStringLiteral("4 matches")) != nullptr);
}

void ConsoleWidgetTest::findsWithTheCaseOfTheLetters()
{
    console->print("one One", "");
    search(QStringLiteral("One"));
    QTRY_VERIFY(getLabel(QStringLiteral("2 of 2")) != nullptr);
    getButton(QStringLiteral("Match upper and lower case"))->click();
    QTRY_VERIFY(getLabel(QStringLiteral("1 of 1")) != nullptr);
    widget->findNext();
    QCOMPARE(view->textCursor().selectedText(), QStringLiteral("One"));
}

void ConsoleWidgetTest::findsOnlyWhatIsShown()
{
    console->print("needle in plain", "");
    console->error("needle in error", "");
    getAction(QStringLiteral("Errors only"))->trigger();
    search(QStringLiteral("needle"));
    QTRY_VERIFY(getLabel(QStringLiteral("1 of 1")) != nullptr);
    widget->findNext();
    widget->findNext();
    QCOMPARE(view->textCursor().block().text(), QStringLiteral("needle in error"));
    getAction(QStringLiteral("All messages"))->trigger();
    QTRY_VERIFY(getLabel(QStringLiteral("2 of 2")) != nullptr);
}

void ConsoleWidgetTest::theCountGoesOnWhileLinesCome()
{
    search(QStringLiteral("line"));
    QTRY_VERIFY(getLabel(QStringLiteral("No match")) != nullptr);
    printLines(5);
    QTRY_VERIFY(getLabel(QStringLiteral("5 matches")) != nullptr);
    printLines(5);
    QTRY_VERIFY(getLabel(QStringLiteral("10 matches")) != nullptr);
    widget->clear();
    QTRY_VERIFY(getLabel(QStringLiteral("No match")) != nullptr);
}

void ConsoleWidgetTest::escapeClosesTheFindBar()
{
    console->print("text", "");
    search(QStringLiteral("text"));
    auto* field = widget->findChild<QLineEdit*>();
    QVERIFY(field->isVisible());
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(!field->isVisible());
    QVERIFY(view->extraSelections().isEmpty());
}

void ConsoleWidgetTest::whatIsFoundIsMarked()
{
    console->print("one two", "");
    search(QStringLiteral("two"));
    QCOMPARE(view->extraSelections().size(), 1);
    QCOMPARE(view->extraSelections().first().cursor.selectedText(), QStringLiteral("two"));
    QCOMPARE(view->extraSelections().first().format.background().color(), theme->getColor("match"));
}

void ConsoleWidgetTest::copiesTheSelectedText()
{
    printLines(3);
    QTextCursor cursor(view->document());
    cursor.setPosition(5);
    cursor.setPosition(11, QTextCursor::KeepAnchor);
    view->setTextCursor(cursor);
    widget->copy();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("0\nline"));
}

void ConsoleWidgetTest::copiesTimesOnlyWhenWanted()
{
    widget->setTimesShown(true);
    console->print("plain", "");
    console->error("wrong\nin two lines", "");
    QCOMPARE(widget->getText(), QStringLiteral("plain\nwrong\nin two lines"));
    widget->setTimesCopied(true);
    static const QRegularExpression dated(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}) (.*)$"));
    const QStringList lines = widget->getText().split(QLatin1Char('\n'));
    const QStringList texts = {QStringLiteral("  plain"), QStringLiteral("✖ wrong"),
                               QStringLiteral("  in two lines")};
    QCOMPARE(lines.size(), texts.size());
    for (int index = 0; index < lines.size(); ++index) {
        const QRegularExpressionMatch match = dated.match(lines.at(index));
        QVERIFY2(match.hasMatch(), qPrintable(lines.at(index)));
        QCOMPARE(match.captured(2), texts.at(index));
    }
}

void ConsoleWidgetTest::timesAreShownBesideTheText()
{
    console->print("text", "");
    const int before = view->viewport()->x();
    QSignalSpy changed(widget.get(), &Zandu::ConsoleWidget::optionsChanged);
    getAction(QStringLiteral("Show times"))->trigger();
    QCOMPARE(changed.count(), 1);
    QVERIFY(widget->areTimesShown());
    QVERIFY(view->viewport()->x() > before);
    QCOMPARE(view->toPlainText(), QStringLiteral("text"));
    widget->setTimesShown(false);
    QVERIFY(!getAction(QStringLiteral("Show times"))->isChecked());
    QCOMPARE(view->viewport()->x(), before);
}

void ConsoleWidgetTest::savesAllOfTheText()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("console äé.txt"));
    console->print("caf\xc3\xa9", "");
    console->print("hidden", "");
    getAction(QStringLiteral("Errors only"))->trigger();
    QVERIFY(widget->saveTo(path));
    QVERIFY(getLabel(QStringLiteral("The console is saved to ") + path) != nullptr);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("caf\xc3\xa9\nhidden\n"));
}

void ConsoleWidgetTest::savesWhatStillWaitsToBeShown()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("console.txt"));
    for (int number = 0; number < 5000; ++number) {
        console->print(getNumbered(number), "");
    }
    QVERIFY(view->blockCount() < 5000);
    QVERIFY(widget->saveTo(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count('\n'), 5000);
}

void ConsoleWidgetTest::saysWhyItCouldNotSave_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no such directory") << QStringLiteral("/no/such/directory/console.txt")
                                       << QStringLiteral("No such file or directory");
    QTest::newRow("full disk") << QStringLiteral("/dev/full")
                               << QStringLiteral("No space left on device");
}

void ConsoleWidgetTest::saysWhyItCouldNotSave()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    printLines(10);
    QVERIFY(!widget->saveTo(path));
    QVERIFY(!QFileInfo(path).isFile());
    const QString sentence =
        QStringLiteral("The console could not be saved to %1: %2.").arg(path, reason);
    QVERIFY(getLabel(sentence) != nullptr);
    QCOMPARE(getLines().size(), 10);
}

void ConsoleWidgetTest::clearsTheViewOnly()
{
    for (int number = 0; number < 1000; ++number) {
        console->print(getNumbered(number), "");
    }
    getAction(QStringLiteral("Clear the view"))->trigger();
    QCOMPARE(widget->getText(), QString());
    console->print("later", "");
    QCOMPARE(widget->getText(), QStringLiteral("later"));
    QCOMPARE(getLines(), Lines({QStringLiteral("later")}));
    QCOMPARE(console->getRecentMessages().size(), std::size_t(1000));
}

void ConsoleWidgetTest::theWheelWithControlChangesTheFontSize()
{
    const qreal before = widget->getFontSize();
    const auto turn = [this](int angle, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(QPointF(50, 50), view->viewport()->mapToGlobal(QPoint(50, 50)), QPoint(),
                          QPoint(0, angle), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &event);
    };
    turn(120, Qt::ControlModifier);
    QCOMPARE(widget->getFontSize(), before + 1);
    QCOMPARE(view->font().pointSizeF(), before + 1);
    turn(-240, Qt::ControlModifier);
    QCOMPARE(widget->getFontSize(), before - 1);
    turn(120, Qt::NoModifier);
    QCOMPARE(widget->getFontSize(), before - 1);
    getAction(QStringLiteral("Text size of the system"))->trigger();
    QCOMPARE(widget->getFontSize(), before);
}

void ConsoleWidgetTest::theFontSizeStaysReadable()
{
    widget->setFontSize(-4);
    QVERIFY(widget->getFontSize() >= 5);
    widget->setFontSize(10000);
    QVERIFY(widget->getFontSize() <= 100);
}

void ConsoleWidgetTest::theTextIsMonospacedAndReadOnly()
{
    // What a font says of itself is not asked: some that are monospaced do not say so.
    const QFontMetricsF metrics(view->font());
    for (char character = '!'; character <= '~'; ++character) {
        QCOMPARE(metrics.horizontalAdvance(QLatin1Char(character)),
                 metrics.horizontalAdvance(QLatin1Char('W')));
    }
    QVERIFY(view->isReadOnly());
    QVERIFY((view->textInteractionFlags() & Qt::TextSelectableByKeyboard) != 0);
    QVERIFY(!view->isUndoRedoEnabled());
}

void ConsoleWidgetTest::theDialogOfSavingCutsNoSizeOrDateOff()
{
    const QTemporaryDir directory;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(directory.path()));
    QFile file(QString("long").repeated(40) + ".txt");
    QVERIFY(file.open(QIODevice::WriteOnly));
    widget->save();
    auto* const dialog = widget->findChild<QFileDialog*>();
    QVERIFY(dialog != nullptr);
    const auto* const list = dialog->findChild<QTreeView*>();
    QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 1);
    const QAbstractItemView* const rows = list;
    for (int column = 1; column < list->model()->columnCount(); ++column) {
        QTRY_VERIFY(list->columnWidth(column) >= rows->sizeHintForColumn(column));
    }
    QTRY_VERIFY(list->header()->length() <= list->viewport()->width());
    QVERIFY(dialog->focusWidget() == dialog->findChild<QLineEdit*>());
    dialog->reject();
    QVERIFY(QDir::setCurrent(before));
}

namespace
{

/// What a screen reader reads at each line that begins where the one before has ended.
QStringList getHeardLines(QAccessibleTextInterface* face)
{
    QStringList lines;
    for (int start = 0, end = 0, next = 0; next <= face->characterCount(); next = end + 1) {
        lines += face->textAtOffset(next, QAccessible::LineBoundary, &start, &end);
    }
    return lines;
}

} // namespace

void ConsoleWidgetTest::aScreenReaderHearsTheLevelOfALine()
{
    console->print("plain", "");
    console->error("bad\nas told", "");
    console->indent();
    console->warning("mind", "");
    console->print("plain again", "");
    QAccessibleInterface* const whole = QAccessible::queryAccessibleInterface(view);
    QCOMPARE(
        getHeardLines(whole->textInterface()),
        QStringList({"plain", "Error: bad", "as told", "Warning:     mind", "    plain again"}));
    QVERIFY(whole->state().readOnly);
    QVERIFY(whole->state().focusable);
    // A line that is too long for the view begins once.
    widget->clear();
    console->error(std::string(300, 'x'), "");
    const QStringList pieces = getHeardLines(whole->textInterface());
    QCOMPARE(pieces.filter("Error: ").size(), 1);
}

void ConsoleWidgetTest::aScreenReaderFindsTheTextAsItIs()
{
    console->error("bad", "");
    console->warning("mind", "");
    QAccessibleInterface* const whole = QAccessible::queryAccessibleInterface(view);
    QAccessibleTextInterface* const face = whole->textInterface();
    QCOMPARE(face->text(0, face->characterCount()), QString("bad\nmind"));
    QCOMPARE(whole->text(QAccessible::Value), QString("bad\nmind"));
    QCOMPARE(face->text(4, 8), QString("mind"));
    QCOMPARE(face->text(4, 1000), QString("mind"));
    QCOMPARE(widget->getText(), QString("bad\nmind"));
    widget->selectAll();
    widget->copy();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("bad\nmind"));
    QCOMPARE(face->offsetAtPoint(face->characterRect(5).center()), 5);
    int start = -1;
    int end = -1;
    QVERIFY(face->attributes(5, &start, &end).isEmpty());
    QCOMPARE(start, 4);
    QCOMPARE(end, 8);
}

void ConsoleWidgetTest::aScreenReaderGoesFromUnitToUnit()
{
    console->error("one two", "");
    console->warning("three", "");
    QAccessibleTextInterface* const face =
        QAccessible::queryAccessibleInterface(view)->textInterface();
    int start = -1;
    int end = -1;
    QCOMPARE(face->textAfterOffset(2, QAccessible::LineBoundary, &start, &end),
             QString("Warning: three"));
    QCOMPARE(start, 8);
    QCOMPARE(end, 13);
    QVERIFY(face->textAfterOffset(9, QAccessible::LineBoundary, &start, &end).isEmpty());
    QCOMPARE(face->textBeforeOffset(9, QAccessible::ParagraphBoundary, &start, &end),
             QString("Error: one two"));
    QVERIFY(face->textBeforeOffset(3, QAccessible::LineBoundary, &start, &end).isEmpty());
    QCOMPARE(face->textAtOffset(5, QAccessible::WordBoundary, &start, &end), QString("two"));
    QCOMPARE(face->textAtOffset(5, QAccessible::CharBoundary, &start, &end), QString("w"));
    QCOMPARE(face->textAfterOffset(5, QAccessible::CharBoundary, &start, &end), QString("o"));
    QCOMPARE(face->textAtOffset(5, QAccessible::NoBoundary, &start, &end),
             QString("one two\nthree"));
}

void ConsoleWidgetTest::aScreenReaderMovesTheCursorAndSelects()
{
    printLines(200);
    QTRY_COMPARE_WITH_TIMEOUT(view->blockCount(), 200, 60000);
    QAccessibleTextInterface* const face =
        QAccessible::queryAccessibleInterface(view)->textInterface();
    face->setCursorPosition(3);
    QCOMPARE(view->textCursor().position(), 3);
    QCOMPARE(face->cursorPosition(), 3);
    QCOMPARE(face->selectionCount(), 0);
    face->addSelection(1, 4);
    QCOMPARE(face->selectionCount(), 1);
    int start = -1;
    int end = -1;
    face->selection(0, &start, &end);
    QCOMPARE(start, 1);
    QCOMPARE(end, 4);
    QCOMPARE(view->textCursor().selectedText(), face->text(1, 4));
    face->removeSelection(0);
    QCOMPARE(face->selectionCount(), 0);
    face->scrollToSubstring(face->characterCount(), face->characterCount());
    QCOMPARE(getScrollBar()->value(), getScrollBar()->maximum());
    face->scrollToSubstring(0, 1);
    QCOMPARE(getScrollBar()->value(), 0);
}

void ConsoleWidgetTest::everyControlHasAnAccessibleName()
{
    widget->find();
    printLines(200);
    getScrollBar()->setValue(0);
    int controls = 0;
    for (QWidget* child : widget->findChildren<QWidget*>()) {
        const bool control = qobject_cast<QAbstractButton*>(child) != nullptr ||
                             qobject_cast<QLineEdit*>(child) != nullptr || child == view;
        // The button that empties a field is a part of the field.
        if (control && child->inherits("QLineEditIconButton")) {
            continue;
        }
        if (control) {
            const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(child);
            QVERIFY2(face != nullptr && !face->text(QAccessible::Name).isEmpty(),
                     child->metaObject()->className());
            ++controls;
        }
    }
    QVERIFY(controls > 8);
}

QTEST_MAIN(ConsoleWidgetTest)

#include "tst_console_widget.moc"

#ifndef APPLICATION_CONSOLEVIEW_H
#define APPLICATION_CONSOLEVIEW_H

#include <application/ConsoleLines.h>

#include <foundation/Message.h>

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTimer>

#include <deque>
#include <optional>

class QToolButton;

namespace Zandu
{

class ConsoleGutter;

/// The text of the console: messages as literal lines, with their marks and times in a gutter.
///
/// Messages are only ever added. They are shown in batches, so that any number of them leaves the
/// window live: the first lines of a turn of the event loop at once, the rest over the following
/// turns. The view follows the end as long as it stands at the end. While it is not to be seen it
/// lays no line out and does not scroll: a line that comes alone would cost most of a command. It
/// catches up when it is shown.
class ConsoleView : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int defaultLineLimit = 200000;

    explicit ConsoleView(QWidget* parent);
    ~ConsoleView() override;

    void add(const Orvex::Message& message);
    /// Shows all that waits to be shown, however long that takes.
    void showAll();
    /// Forgets everything that was added.
    void clearLines();

    /// How many lines are kept. More are held for a while: the oldest go in large steps.
    int getLineLimit() const;
    /// At least 1.
    void setLineLimit(int limit);

    /// Lines of messages of a lower level are hidden, not forgotten.
    Orvex::Level getLowestLevel() const;
    void setLowestLevel(Orvex::Level level);

    bool areTimesShown() const;
    void setTimesShown(bool shown);

    /// Whether copied and saved lines begin with their time and mark.
    bool areTimesCopied() const;
    void setTimesCopied(bool copied);

    bool areLinesWrapped() const;
    void setLinesWrapped(bool wrapped);

    /// In points, kept within what can be read.
    qreal getFontSize() const;
    void setFontSize(qreal size);
    void resetFontSize();

    /// Marks the text wherever it is seen; an empty text marks nothing.
    void setMarkedText(const QString& text, Qt::CaseSensitivity sensitivity);

    /// Nothing has been shown, or all of it was cleared.
    bool isEmpty() const;

    /// All messages, hidden ones too.
    QString getText() const;
    /// The selected lines without hidden ones.
    QString getSelectedText() const;

    /// A few lines: the person may want all the room for something else.
    QSize minimumSizeHint() const override;

    bool isFollowing() const;
    void jumpToEnd();

    /// What a block shows, but for the text, which is the block's own.
    static const ConsoleLine& getLine(const QTextBlock& block);

signals:
    void optionsChanged();
    /// Lines came at the end.
    void linesAdded();
    /// Lines went, or were hidden or shown.
    void linesRearranged();

protected:
    QMimeData* createMimeDataFromSelection() const override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    friend class ConsoleGutter;

    void endTurn();
    void showSlice(int mostLines);
    int insertWaiting(int mostLines);
    void keepSelection(int oldEnd);
    bool hasWaiting() const;
    ConsoleLine takeLine();
    void insertLine(QTextCursor& cursor, const ConsoleLine& line);
    void dropOldLines(int tolerance);
    void hideOrShow(const QTextBlock& block) const;
    void paintSeen();
    QList<QTextEdit::ExtraSelection> getSeen() const;
    void addMarks(const QTextBlock& block, QList<QTextEdit::ExtraSelection>& seen) const;
    QString getText(int begin, int end, bool withHidden) const;
    void placeExtras();
    void followScrolling();
    void followGrowth();
    void settleAtEnd();

    ConsoleGutter* gutter = nullptr;
    QToolButton* jumpButton = nullptr;
    QTimer settleTimer; // until the place of the end is looked at again
    int settlings = 0;  // in a row
    QTimer turnTimer;
    QElapsedTimer sayingTime; // since the first line of the turn; invalid later
    std::deque<Orvex::Message> waiting;
    std::optional<ConsoleLines> current; // the message that is partly shown
    int linesThisTurn = 0;
    int lineLimit = defaultLineLimit;
    qint64 droppedLines = 0;
    Orvex::Level lowestLevel = Orvex::Level::Normal;
    QString markedText;
    Qt::CaseSensitivity markedCase = Qt::CaseInsensitive;
    bool timesCopied = false;
    bool following = true;
    bool growing = false; // what the scroll bar says is answered once, when all lines are there
    bool paintingSeen = false;
    bool seenChanged = false;
};

} // namespace Zandu

#endif

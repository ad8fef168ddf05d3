#ifndef APPLICATION_CONSOLEFINDBAR_H
#define APPLICATION_CONSOLEFINDBAR_H

#include <QTextBlock>
#include <QTimer>
#include <QVector>
#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace Zandu
{

class ConsoleView;

/// Finds a text in the lines that the console shows, tells how often it is there and marks it.
///
/// A match lies within one line. The count goes on in the background while lines come.
class ConsoleFindBar : public QWidget
{
    Q_OBJECT

public:
    ConsoleFindBar(ConsoleView* searchedView, QWidget* parent);

    /// Shows the bar with the cursor in it; a short selection of the view becomes the text.
    void open();
    void close();

    /// Selects the next match, after the last one the first.
    void findNext();
    /// Selects the match before, before the first one the last.
    void findPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void findNearest();
    void restartCount();
    void countSlice();
    void showCount();
    QString getCount() const;
    qint64 getPlaceOfSelection() const;
    void select(const QTextBlock& block, int column);
    bool selectFrom(QTextBlock block, int column);
    bool selectBefore(QTextBlock block, int column);
    int findIn(const QTextBlock& block, int column) const;
    int findLastIn(const QTextBlock& block, int column) const;
    bool isKnownAbsent() const;
    Qt::CaseSensitivity getCase() const;

    ConsoleView* view;
    QLineEdit* field;
    QToolButton* caseButton;
    QLabel* countLabel;
    QTimer countTimer;
    /// For each counted line the number of matches above it.
    QVector<qint64> matchesAbove;
    qint64 matches = 0; // in the counted lines
};

} // namespace Zandu

#endif

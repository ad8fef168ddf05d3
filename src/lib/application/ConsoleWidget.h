#ifndef APPLICATION_CONSOLEWIDGET_H
#define APPLICATION_CONSOLEWIDGET_H

#include <application/Export.h>

#include <QString>
#include <QWidget>

class QAction;
class QActionGroup;
class QMenu;
class QToolButton;

namespace Zandu
{

class ConsoleFindBar;
class ConsoleView;
class NoticeBar;

/// Shows what Orvex::console says, literally and at its depth, with errors and warnings set apart;
/// to be searched, copied, saved, filtered and cleared by a person.
///
/// It shows messages in batches over the turns of the event loop, and keeps them up to a limit of
/// lines. It outlives the console and follows a change of the theme. GUI thread only.
class ZANDU_EXPORT ConsoleWidget : public QWidget
{
    Q_OBJECT

public:
    /// Listens to the Orvex::console of this moment, and shows what it said lately. Without a
    /// console the widget stays empty.
    explicit ConsoleWidget(QWidget* parent);
    ~ConsoleWidget() override;

    /// All messages that were added and neither cleared nor dropped, also those that the filter
    /// hides or that wait to be shown. Lines end with a line feed but for the last.
    QString getText();

    /// Writes all of the text to a file, in UTF-8, and tells the person how that went. An existing
    /// file is replaced as a whole or stays as it was. Returns whether it was written.
    bool saveTo(const QString& path);

    /// How many lines are kept; at least 1.
    /// @{
    int getLineLimit() const;
    void setLineLimit(int limit);
    /// @}

    /// Whether the gutter shows when each message came.
    /// @{
    bool areTimesShown() const;
    void setTimesShown(bool shown);
    /// @}

    /// Whether copied and saved lines begin with the time and the mark of their message.
    /// @{
    bool areTimesCopied() const;
    void setTimesCopied(bool copied);
    /// @}

    /// Whether long lines are broken at the width of the view.
    /// @{
    bool areLinesWrapped() const;
    void setLinesWrapped(bool wrapped);
    /// @}

    /// In points; a size out of the readable is brought back into it.
    /// @{
    qreal getFontSize() const;
    void setFontSize(qreal size);
    /// @}

public slots:
    /// Opens the find bar.
    void find();
    void findNext();
    void findPrevious();
    /// Copies the selected text to the clipboard.
    void copy();
    void selectAll();
    /// Asks for a file and saves to it.
    void save();
    /// Empties the view.
    void clear();

signals:
    /// One of the values above, the filter or the limit changed, by whomever.
    void optionsChanged();

private:
    QWidget* createHeader();
    void createActions();
    void createFilterActions();
    QMenu* createOptionsMenu();
    QMenu* createLimitMenu(QWidget* parent);
    QAction* createAction(const char* iconName, const QString& text, const QString& shortcut,
                          void (ConsoleWidget::*work)());
    QAction* createSwitch(const QString& text, bool (ConsoleWidget::*isOn)() const,
                          void (ConsoleWidget::*turn)(bool));
    QToolButton* createButton(QAction* action);
    void showContextMenu(const QPoint& place);
    void showFilter();

    ConsoleView* view;
    ConsoleFindBar* findBar;
    NoticeBar* notice;
    QMenu* filterMenu;
    QMenu* optionsMenu = nullptr;
    QToolButton* filterButton = nullptr;
    QAction* findAction = nullptr;
    QAction* copyAction = nullptr;
    QAction* selectAllAction = nullptr;
    QAction* saveAction = nullptr;
    QAction* clearAction = nullptr;
};

} // namespace Zandu

#endif

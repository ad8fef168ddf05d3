#ifndef APPLICATION_CONSOLEVIEWFACE_H
#define APPLICATION_CONSOLEVIEWFACE_H

#include <QAccessibleWidget>

namespace Zandu
{

class ConsoleView;

/// What a screen reader finds in the place of the console's view: its text, in which a line that
/// begins an error or a warning is led by that word when it is read as a line. For the others a
/// mark in the gutter says it.
///
/// The word is no part of the text: offsets, the selection and what is copied are those of the
/// view.
class ConsoleViewFace : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    /// Makes every view have one that is asked for from now on.
    static void install();

    explicit ConsoleViewFace(ConsoleView* shown);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text which) const override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

protected:
    /// As the toolkit asks for: nobody but its cache deletes one.
    ~ConsoleViewFace() override;

private:
    int getPlace(int offset) const;
    QString tell(int from, int to, QAccessible::TextBoundaryType boundary, int* start,
                 int* end) const;

    ConsoleView* const view;
};

} // namespace Zandu

#endif

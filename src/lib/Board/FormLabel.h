#ifndef BOARD_FORMLABEL_H
#define BOARD_FORMLABEL_H

class QLabel;
class QString;
class QWidget;

namespace Board
{

/// A label that names `control`, also to assistive tools. It is a sibling of the control.
QLabel* createFormLabel(const QString& text, QWidget* control);

} // namespace Board

#endif

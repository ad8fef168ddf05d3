#ifndef APP_STATEICON_H
#define APP_STATEICON_H

#include <QLabel>

#include <string>

namespace Kestoboard
{

/// A small icon of the theme that stands before words and changes with them.
class StateIcon : public QLabel
{
    Q_OBJECT

public:
    explicit StateIcon(QWidget* parent);

    /// Shows the icon of this name in the colours of the theme at the moment. The same one once
    /// more paints nothing: the bar that it stands in is told of every command.
    void showIcon(const std::string& name);
};

} // namespace Kestoboard

#endif

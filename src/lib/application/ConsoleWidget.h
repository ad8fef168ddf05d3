#ifndef APPLICATION_CONSOLEWIDGET_H
#define APPLICATION_CONSOLEWIDGET_H

#include <application/Export.h>

#include <QWidget>

namespace Zandu
{

/// Shows what Orvex::console says.
class ZANDU_EXPORT ConsoleWidget : public QWidget
{
    Q_OBJECT

public:
    /// Listens to the Orvex::console of this moment, and shows what it said lately.
    explicit ConsoleWidget(QWidget* parent);
};

} // namespace Zandu

#endif

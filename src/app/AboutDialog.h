#ifndef APP_ABOUTDIALOG_H
#define APP_ABOUTDIALOG_H

#include <QDialog>

namespace Kestoboard
{

/// Says what the panel is and what it runs on, as a report that can be copied.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent);

    /// What somebody who looks for a fault wants to know: versions, places and the latest lines of
    /// the console.
    static QString getReport();
};

} // namespace Kestoboard

#endif

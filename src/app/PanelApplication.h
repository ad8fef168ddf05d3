#ifndef APP_PANELAPPLICATION_H
#define APP_PANELAPPLICATION_H

#include <application/Application.h>
#include <foundation/Console.h>
#include <foundation/Theme.h>

#include <QApplication>

#include <memory>

namespace Kestoboard
{

/// The program: it owns what the panel's libraries find through their global pointers, and keeps
/// the program going when a slot fails.
class PanelApplication : public QApplication
{
    Q_OBJECT

public:
    PanelApplication(int& argc, char** argv);
    ~PanelApplication() override;

    /// An exception that leaves a slot is reported on the console, and the program goes on.
    bool notify(QObject* receiver, QEvent* event) override;

    /// Begins an empty console in place of the one so far, which nobody may be using any more.
    void renewConsole();

    /// Sets what the settings and the version are found under. Before any application object.
    static void setNames();

signals:
    /// The session or another part of the desktop asks the program to end.
    void endRequested();

protected:
    bool event(QEvent* event) override;

private:
    std::unique_ptr<Orvex::Console> console;
    Orvex::Theme theme;
    Zandu::Application services;
};

} // namespace Kestoboard

#endif

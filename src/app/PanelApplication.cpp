#include "app/PanelApplication.h"

#include "app/Initiative.h"

#include <foundation/Exception.h>

#include <QEvent>

#include <exception>

namespace Kestoboard
{

PanelApplication::PanelApplication(int& argc, char** argv)
    : QApplication(argc, argv)
    , theme(Orvex::Theme::getSystemScheme())
{
    renewConsole();
    Orvex::theme = &theme;
    Zandu::application = &services;
    // Both would end every wait for the board tool at once; leaving goes another way.
    setQuitOnLastWindowClosed(false);
    setFallbackSessionManagementEnabled(false);
    setWindowIcon(theme.getIcon("kestoboard"));
}

PanelApplication::~PanelApplication()
{
    Zandu::application = nullptr;
    Orvex::theme = nullptr;
    Orvex::console = nullptr;
}

void PanelApplication::renewConsole()
{
    console = std::make_unique<Orvex::Console>();
    Orvex::console = console.get();
}

void PanelApplication::setNames()
{
    setOrganizationName(QStringLiteral("Kestoboard"));
    setApplicationName(QStringLiteral("kestoboard"));
    setApplicationVersion(QStringLiteral(KESTOBOARD_VERSION));
    setDesktopFileName(QStringLiteral("kestoboard"));
}

bool PanelApplication::notify(QObject* receiver, QEvent* event)
{
    const Initiative::Delivery delivery(receiver, event);
    try {
        return QApplication::notify(receiver, event);
    } catch (const Orvex::Exception& failure) {
        console->error(failure);
    } catch (const std::exception& failure) {
        console->error(tr("An action ended early: %1")
                           .arg(QString::fromLocal8Bit(failure.what()))
                           .toStdString(),
                       "");
    } catch (...) {
        console->error(tr("An action ended early for a reason that is not known.").toStdString(),
                       "");
    }
    return false;
}

bool PanelApplication::event(QEvent* event)
{
    if (event->type() != QEvent::Quit) {
        return QApplication::event(event);
    }
    emit endRequested();
    return true;
}

} // namespace Kestoboard

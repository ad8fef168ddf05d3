#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <application/Application.h>
#include <foundation/Console.h>
#include <foundation/Theme.h>

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Orvex::Console console;
    Orvex::console = &console;
    Orvex::Theme theme(Orvex::Theme::Scheme::Light);
    Orvex::theme = &theme;
    Zandu::Application panel;
    Zandu::application = &panel;

    Board::MainWindow window;
    window.show();
    // The first listing has come in, so a board means that the tool was started and has answered.
    const bool hasBoard = !window.getKSBaseHandler()->getTamsas().isEmpty();
    window.getKSBaseHandler()->destroy();
    return hasBoard ? 0 : 1;
}

// One window of your own: the panel, and the page of the power supplies beside it.
//
// The board tool ksbase2_cli must be on the search path. Without hardware, put the simulated one
// there:
//
//   PATH=/prefix/libexec/kestoboard:$PATH build/power-bench

#include <Board/MainWindow.h>
#include <Board/PowerLeaf.h>
#include <application/Application.h>
#include <foundation/Console.h>
#include <foundation/Exception.h>
#include <foundation/Theme.h>

#include <QApplication>
#include <QDockWidget>

#include <cstdio>
#include <cstdlib>

namespace
{

/// Most slots of the library catch nothing, and Qt cannot pass an exception on. Here it becomes a
/// line on the console, and the program goes on.
class BenchApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const Orvex::Exception& failure) {
            Orvex::console->error(failure);
        }
        return false;
    }
};

void addPowerPage(Board::MainWindow* window)
{
    auto* const dock = new QDockWidget(QStringLiteral("Power"), window);
    dock->setObjectName(QStringLiteral("power"));
    dock->setWidget(new Board::PowerLeaf(dock));
    window->addDockWidget(Qt::RightDockWidgetArea, dock);
}

} // namespace

int main(int argc, char** argv)
{
    BenchApplication bench(argc, argv);

    // The pages keep their values in the settings of these names.
    QCoreApplication::setOrganizationName(QStringLiteral("Power Bench"));
    QCoreApplication::setApplicationName(QStringLiteral("power-bench"));

    // What the library reaches through its global pointers. It must be there before the first
    // window is made and outlive the last one.
    Orvex::Console console;
    Orvex::console = &console;
    Orvex::Theme theme(Orvex::Theme::getSystemScheme());
    Orvex::theme = &theme;
    theme.apply();
    Zandu::Application application;
    Zandu::application = &application;

    try {
        // Starts the board tool and waits for its first list of boards.
        Board::MainWindow window;
        window.setWindowTitle(QStringLiteral("Power bench"));
        addPowerPage(&window);
        window.show();
        return QApplication::exec();
    } catch (const Orvex::Exception& failure) {
        // The tool is not on the search path, or the transcript cannot be written here.
        std::fprintf(stderr, "power-bench: %s\n", failure.getMessage().c_str());
        return EXIT_FAILURE;
    }
}

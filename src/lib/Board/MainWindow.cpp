#include <Board/MainWindow.h>

#include <Board/CommandFile.h>
#include <Board/CommandLineEdit.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <application/Application.h>
#include <application/ConsoleWidget.h>
#include <foundation/Console.h>
#include <foundation/Debug.h>
#include <foundation/ForEachControler.h>
#include <foundation/Guard.h>
#include <foundation/PlainText.h>
#include <foundation/Text.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTextStream>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <iterator>

namespace Board
{

namespace
{

using namespace std::chrono_literals;

const char sourceFile[] = "src/lib/Board/MainWindow";
const std::chrono::milliseconds commandFileInterval = 5000ms;
const int statusLabelMargin = 3;
const int lowerPanelSpacing = 4;

/// Runs work that a person asked for; a failure of it ends on the console.
template <class Work>
void runGuarded(const char* function, unsigned long line, Work work)
{
    Orvex::guard(function, sourceFile, line, work,
                 [](const Orvex::Exception& failure) { Orvex::console->error(failure); });
}

/// Sends a raw command and prints the reply line by line.
void printReply(KSBaseHandler* engine, const std::string& command)
{
    const std::string reply = engine->sendCommand(command);
    std::string line;
    for (Orvex::ForEachControler<std::string> loop(line, Orvex::getSplitted(reply, "\n"));
         loop.next();) {
        Orvex::console->print(line, "");
    }
}

/// Echoes a command and prints its reply one step further in.
void runCommand(KSBaseHandler* engine, const char* function, unsigned long line,
                const std::string& command)
{
    Orvex::console->print(command, "");
    Orvex::console->indent();
    runGuarded(function, line, [&] { printReply(engine, command); });
    Orvex::console->unindent();
}

/// An entry whose text is the name, and whose face on a button and tool tip show it letter for
/// letter: neither as a mnemonic nor as markup.
QAction* makeEntry(QMenu& menu, const QString& name)
{
    auto* const action = new QAction(name, &menu);
    action->setIconText(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
    action->setToolTip(Orvex::getLiteral(name));
    return action;
}

/// As QMenu::clear does with all of them: an entry that something else shows as well lives on.
void removeEntry(QMenu& menu, QAction* entry)
{
    menu.removeAction(entry);
    if (entry->associatedWidgets().isEmpty()) {
        delete entry;
    }
}

/// Brings the menu to exactly these entries, with the default action beside them. What is the same
/// at its beginning and its end stays: thousands of entries that are made anew every few seconds
/// would be felt.
void offer(const QStringList& names, QMenu& menu, const QAction* defaultAction)
{
    const auto isSame = [defaultAction](const QAction* entry, const QString& name) {
        return entry != defaultAction && entry->text() == name;
    };
    const QList<QAction*> entries = menu.actions();
    const auto head =
        std::mismatch(entries.begin(), entries.end(), names.begin(), names.end(), isSame);
    const auto tail =
        std::mismatch(entries.rbegin(), std::make_reverse_iterator(head.first), names.rbegin(),
                      std::make_reverse_iterator(head.second), isSame);
    std::for_each(tail.first, std::make_reverse_iterator(head.first),
                  [&menu](QAction* entry) { removeEntry(menu, entry); });
    // From the end to the beginning, where a menu finds the place in a step.
    QAction* next = tail.first == entries.rbegin() ? nullptr : *std::prev(tail.first);
    std::for_each(tail.second, std::make_reverse_iterator(head.second), [&](const QString& name) {
        QAction* const entry = makeEntry(menu, name);
        menu.insertAction(next, entry);
        next = entry;
    });
}

/// Runs the commands of a command file, one after the other.
void runCommandLines(KSBaseHandler* engine, QTextStream* lines)
{
    std::string command;
    while (readCommand(lines, &command)) {
        Orvex::console->print("Executing command '" + command + "'", "");
        printReply(engine, command);
    }
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , folio(nullptr)
    , ksBaseHandler(nullptr)
    , commandLineEdit(nullptr)
    , fileButton(nullptr)
{
    // Here, so that who finds the window while its engine is made finds none in it.
    ksBaseHandler = KSBaseHandler::create(this);
    connect(ksBaseHandler, &QObject::destroyed, this, [this] { ksBaseHandler = nullptr; });
    buildStatusBar();
    buildWidgets();
    setMinimumSize(800, 600);
    Orvex::console->print("Kestoboard succesfully launched", "");
    ksBaseHandler->refreshTamsaMap();

    auto* const commandFileTimer = new QTimer(this);
    commandFileTimer->setInterval(commandFileInterval);
    connect(commandFileTimer, SIGNAL(timeout()), this, SLOT(refreshFileButton()));
    commandFileTimer->start();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildStatusBar()
{
    QStatusBar* const bar = statusBar();
    auto* const label = new QLabel(Zandu::application->getCopyright(false), bar);
    label->setMargin(statusLabelMargin);
    bar->addPermanentWidget(label, 0);
    bar->setSizeGripEnabled(true);
}

void MainWindow::buildWidgets()
{
    auto* const center = new QWidget(this);
    auto* const layout = new QVBoxLayout;
    auto* const splitter = new QSplitter(Qt::Vertical, center);
    folio = new Folio(center);
    splitter->addWidget(folio);

    auto* const lowerPanel = new QWidget(center);
    auto* const grid = new QGridLayout(lowerPanel);
    grid->setSpacing(lowerPanelSpacing);
    grid->setContentsMargins(0, 0, 0, 0);
    int consoleRow = 0;
    if (Orvex::isDebug()) {
        buildCommandRow(lowerPanel, grid);
        consoleRow = 1;
    }
    grid->addWidget(new Zandu::ConsoleWidget(lowerPanel), consoleRow, 0, 1, -1);

    splitter->addWidget(lowerPanel);
    layout->addWidget(splitter);
    center->setLayout(layout);
    setCentralWidget(center);
}

void MainWindow::buildCommandRow(QWidget* lowerPanel, QGridLayout* grid)
{
    commandLineEdit = new CommandLineEdit(lowerPanel);
    commandLineEdit->setAccessibleName(QStringLiteral("Command"));
    auto* const sendButton = new QPushButton(QStringLiteral("Send"), lowerPanel);
    auto* const helpButton = new QPushButton(QStringLiteral("Help"), lowerPanel);
    fileButton = new QToolButton(lowerPanel);
    fileButton->setAccessibleName(QStringLiteral("Command file"));
    fileButton->setMenu(new QMenu(fileButton));
    fileButton->setPopupMode(QToolButton::MenuButtonPopup);
    fileButton->setAutoRaise(true);
    refreshFileButton();

    connect(commandLineEdit, SIGNAL(returnPressed()), this, SLOT(onSendCommand()));
    connect(sendButton, SIGNAL(clicked(bool)), this, SLOT(onSendCommand()));
    connect(helpButton, SIGNAL(clicked(bool)), this, SLOT(onHelp()));
    connect(fileButton, SIGNAL(triggered(QAction*)), this, SLOT(onFileLaunch(QAction*)));

    int column = 0;
    for (QWidget* const widget :
         {static_cast<QWidget*>(commandLineEdit), static_cast<QWidget*>(sendButton),
          static_cast<QWidget*>(helpButton), static_cast<QWidget*>(fileButton)}) {
        grid->addWidget(widget, 0, column++);
    }
}

void MainWindow::onSendCommand()
{
    if (!Orvex::isDebug() || commandLineEdit == nullptr || ksBaseHandler == nullptr) {
        return;
    }
    const std::string command = Orvex::getLabel(commandLineEdit->text());
    if (command.empty()) {
        return;
    }
    commandLineEdit->clear();
    runCommand(ksBaseHandler, "onSendCommand", __LINE__, command);
}

void MainWindow::onHelp()
{
    if (!Orvex::isDebug() || ksBaseHandler == nullptr) {
        return;
    }
    runCommand(ksBaseHandler, "onHelp", __LINE__, "help");
}

void MainWindow::refreshFileButton()
{
    if (fileButton == nullptr) {
        return;
    }
    const QStringList names =
        QDir(QDir::currentPath())
            .entryList({QStringLiteral("*.cmd")}, QDir::NoFilter, QDir::NoSort);
    QMenu* const menu = fileButton->menu();
    offer(names, *menu, fileButton->defaultAction());
    if (fileButton->defaultAction() == nullptr && !names.isEmpty()) {
        fileButton->setDefaultAction(menu->actions().first());
    }
    fileButton->setVisible(!names.isEmpty());
}

/// Puts an action on the button's face. The one before leaves the button, so that its list of
/// actions does not grow with each run: later, since its own run may be going on.
void MainWindow::makeDefaultAction(QAction* action)
{
    const QPointer<QAction> previous = fileButton->defaultAction();
    fileButton->setDefaultAction(action);
    QTimer::singleShot(0, fileButton, [this, previous] {
        if (!previous || previous == fileButton->defaultAction()) {
            return;
        }
        fileButton->removeAction(previous);
        if (previous->associatedWidgets().isEmpty()) {
            previous->deleteLater();
        }
    });
}

void MainWindow::onFileLaunch(QAction* action)
{
    if (action == nullptr || fileButton == nullptr || ksBaseHandler == nullptr) {
        return;
    }
    makeDefaultAction(action);
    const QString name = action->text();
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return;
    }
    QTextStream lines(&file);
    Orvex::console->print("Executing file '" + Orvex::getLabel(name) + "'", "");
    Orvex::console->indent();
    runGuarded("onFileLaunch", __LINE__, [&] { runCommandLines(ksBaseHandler, &lines); });
    Orvex::console->unindent();
}

} // namespace Board

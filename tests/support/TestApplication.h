#ifndef SUPPORT_TESTAPPLICATION_H
#define SUPPORT_TESTAPPLICATION_H

#include <application/Application.h>
#include <foundation/Console.h>
#include <foundation/Theme.h>

#include <QApplication>
#include <QStringList>
#include <QTemporaryDir>

namespace Test
{

/// What an application provides to the panel: the globals, the names and the place of the settings.
///
/// The settings are in a directory of their own, empty at the start.
class TestApplication : public QApplication
{
    Q_OBJECT

public:
    TestApplication(int& argc, char** argv);
    ~TestApplication() override;

    /// An exception that leaves a slot is remembered, and the program goes on.
    bool notify(QObject* receiver, QEvent* event) override;

    /// The messages of the exceptions that left a slot since the last call.
    QStringList takeEscapedExceptions();

    static TestApplication* get();

private:
    QTemporaryDir settingsDirectory;
    Orvex::Console console;
    Orvex::Theme theme;
    Zandu::Application application;
    QStringList escapedExceptions;
};

/// Switches debug mode for as long as it lives.
class DebugMode
{
public:
    explicit DebugMode(bool isOn);
    ~DebugMode();
    DebugMode(const DebugMode&) = delete;
    DebugMode& operator=(const DebugMode&) = delete;

private:
    const bool wasOn;
};

} // namespace Test

#endif

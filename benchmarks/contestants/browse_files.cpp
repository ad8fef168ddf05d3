// Shows a directory of many files in the file browser, and then again with one file more.
//
// Usage: browse_files COUNT
#include "Arguments.h"
#include "EmptyFile.h"
#include "Figures.h"
#include "StallMeter.h"
#include "Stopwatch.h"

#include <application/FileSystemBrowser.h>
#include <foundation/Theme.h>

#include <QApplication>
#include <QDir>
#include <QTreeView>

namespace
{

void makeDesign(long number)
{
    Bench::makeFile(QStringLiteral("files/design_%1.ksb").arg(number));
}

void waitForRows(const QTreeView& tree, long count)
{
    while (tree.model()->rowCount() != count) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const Bench::Arguments arguments(argc, argv, 1);
    const long count = arguments.getNumber(0);
    Orvex::Theme theme(Orvex::Theme::Scheme::Light);
    Orvex::theme = &theme;
    QDir().mkdir(QStringLiteral("files"));
    for (long number = 0; number < count; ++number) {
        makeDesign(number);
    }

    Zandu::FileSystemBrowser browser(QStringLiteral("."), QDir::AllDirs | QDir::Files,
                                     {QStringLiteral("*.ksb")}, nullptr);
    browser.resize(500, 400);
    browser.show();
    const auto* const tree = browser.findChild<QTreeView*>();
    waitForRows(*tree, 1);

    const Bench::Stopwatch watch;
    Bench::StallMeter opening;
    browser.open(QStringLiteral("files"));
    waitForRows(*tree, count);
    const double opened = watch.getMilliseconds();
    opening.settle();
    const double openingStall = opening.getLongestMilliseconds();

    Bench::StallMeter changing;
    makeDesign(count);
    waitForRows(*tree, count + 1);
    changing.settle();
    Bench::Figures()
        .add("ms", opened)
        .add("stall_ms", openingStall)
        .add("change_stall_ms", changing.getLongestMilliseconds())
        .print();
}

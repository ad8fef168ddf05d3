#include "app/WindowState.h"

#include "app/FirstGeometry.h"

#include <Board/MainWindow.h>
#include <application/ConsoleWidget.h>
#include <application/FixedFont.h>

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStyle>

namespace Kestoboard
{

namespace
{

/// Goes up when the meaning of what is stored changes.
const int currentVersion = 1;
/// The pages get this share of the height, in percent.
const int pagesShare = 65;

QString getGroup()
{
    return QStringLiteral("Window");
}

QString getVersionKey()
{
    return QStringLiteral("version");
}

QString getGeometryKey()
{
    return QStringLiteral("geometry");
}

QString getSplitterKey()
{
    return QStringLiteral("splitter");
}

QString getFontKey()
{
    return QStringLiteral("consoleFontSize");
}

QString getTimesKey()
{
    return QStringLiteral("consoleTimes");
}

QString getCopyTimesKey()
{
    return QStringLiteral("consoleTimesCopied");
}

QString getWrapKey()
{
    return QStringLiteral("consoleWrap");
}

QString getLimitKey()
{
    return QStringLiteral("consoleLimit");
}

/// Before a window has been shown nobody knows its frame: a title bar of the style is close to it.
QSize getFrame(const QWidget& window)
{
    const QSize known = window.frameGeometry().size() - window.size();
    const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return known.expandedTo(QSize(2 * border, title + border));
}

} // namespace

WindowState::WindowState(Board::MainWindow* panel)
    : window(panel)
    , console(panel->findChild<Zandu::ConsoleWidget*>())
{
}

void WindowState::restore()
{
    reset();
    QSettings settings;
    settings.beginGroup(getGroup());
    if (settings.value(getVersionKey()).toInt() != currentVersion) {
        return;
    }
    // A place on a monitor that has gone is corrected by Qt.
    window->restoreGeometry(settings.value(getGeometryKey()).toByteArray());
    if (auto* const splitter = window->findChild<QSplitter*>()) {
        splitter->restoreState(settings.value(getSplitterKey()).toByteArray());
        // Whatever was stored, both halves can be seen and the bar between them is level.
        splitter->setOrientation(Qt::Vertical);
    }
    restoreConsole(settings);
}

void WindowState::restoreConsole(const QSettings& settings)
{
    if (console == nullptr) {
        return;
    }
    const qreal fontSize = settings.value(getFontKey()).toReal();
    if (fontSize > 0) {
        console->setFontSize(fontSize);
    }
    const int limit = settings.value(getLimitKey()).toInt();
    if (limit > 0) {
        console->setLineLimit(limit);
    }
    console->setTimesShown(settings.value(getTimesKey()).toBool());
    console->setTimesCopied(settings.value(getCopyTimesKey()).toBool());
    console->setLinesWrapped(settings.value(getWrapKey(), console->areLinesWrapped()).toBool());
}

void WindowState::save() const
{
    QSettings settings;
    settings.beginGroup(getGroup());
    settings.setValue(getVersionKey(), currentVersion);
    settings.setValue(getGeometryKey(), window->saveGeometry());
    if (const auto* const splitter = window->findChild<QSplitter*>()) {
        settings.setValue(getSplitterKey(), splitter->saveState());
    }
    if (console != nullptr) {
        // The size of the system goes on to follow the system.
        if (qFuzzyCompare(console->getFontSize(), Zandu::getFixedFont().pointSizeF())) {
            settings.remove(getFontKey());
        } else {
            settings.setValue(getFontKey(), console->getFontSize());
        }
        settings.setValue(getLimitKey(), console->getLineLimit());
        settings.setValue(getTimesKey(), console->areTimesShown());
        settings.setValue(getCopyTimesKey(), console->areTimesCopied());
        settings.setValue(getWrapKey(), console->areLinesWrapped());
    }
    settings.sync();
}

void WindowState::reset()
{
    window->setWindowState(window->windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QRect available = screen != nullptr ? screen->availableGeometry() : QRect();
    const FirstGeometry first =
        getFirstGeometry(available, window->minimumSize(), getFrame(*window));
    const QSize size = first.size;
    window->resize(size);
    window->move(first.place);
    if (auto* const splitter = window->findChild<QSplitter*>()) {
        const int pages = size.height() * pagesShare / 100;
        splitter->setSizes({pages, size.height() - pages});
    }
}

} // namespace Kestoboard

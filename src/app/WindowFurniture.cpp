#include "app/WindowFurniture.h"

#include "app/ActivityBrief.h"
#include "app/ActivityIndicator.h"
#include "app/DropTarget.h"
#include "app/EmptyListRemark.h"
#include "app/Menus.h"
#include "app/OneLineValidator.h"
#include "app/PageScroller.h"
#include "app/PathTips.h"
#include "app/RestingCursor.h"
#include "app/SimulatedTool.h"
#include "app/TranscriptWatch.h"

#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/MainWindow.h>
#include <application/FileSystemBrowser.h>

#include <foundation/PlainText.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTreeView>

namespace Kestoboard
{

WindowFurniture::WindowFurniture(Board::MainWindow* panel, SchemeChoice* schemes,
                                 Shutdown* shutdown)
    : window(panel)
    , state(panel)
{
    setTitle();
    keepFieldsToOneLine();
    showTicksAtOnce();
    addIndicator();
    addRemarks();
    letPagesScroll();
    new RestingCursor(RestingCursor::usualPatience, window);
    new TranscriptWatch(window->getKSBaseHandler(), window);
    auto* const drops = new DropTarget(window);
    new Menus(window, {shutdown, &state, schemes, drops});
    state.restore();
    focusFirstControl();
}

void WindowFurniture::setTitle()
{
    // Doubled, the placeholder of the mark for unsaved work is ordinary text.
    const QString placeholder = QStringLiteral("[*]");
    const QString place = Orvex::getVisible(QDir(QDir::currentPath()).dirName())
                              .replace(placeholder, placeholder + placeholder);
    window->setWindowTitle(
        SimulatedTool::isEnabled()
            ? QCoreApplication::translate("Kestoboard::WindowFurniture",
                                          "%1 – Kestoboard on simulated boards")
                  .arg(place)
            : QCoreApplication::translate("Kestoboard::WindowFurniture", "%1 – Kestoboard")
                  .arg(place));
}

void WindowFurniture::keepFieldsToOneLine()
{
    for (QLineEdit* const field : window->findChildren<QLineEdit*>()) {
        // Number fields have a validator of their own.
        if (field->validator() == nullptr) {
            auto* const validator = new OneLineValidator(field);
            field->setValidator(validator);
            // What the field holds already came from the settings.
            QString text = field->text();
            int position = 0;
            validator->validate(text, position);
            field->setText(text);
        }
    }
}

/// A box whose page waits for the board tool in the middle of the change would be painted only when
/// the answer has come.
void WindowFurniture::showTicksAtOnce()
{
    for (QCheckBox* const box : window->findChildren<QCheckBox*>()) {
        QObject::connect(box, &QCheckBox::toggled, box, [box] { box->update(); });
    }
}

void WindowFurniture::addIndicator()
{
    QStatusBar* const bar = window->statusBar();
    indicator = new ActivityIndicator(window->getKSBaseHandler(), bar);
    // The bar takes it away for as long as the engine's message stands in its place.
    bar->addWidget(indicator, 1);
    // Before the label that the window has put there.
    bar->insertPermanentWidget(1, new ActivityBrief(indicator, bar));
}

QString WindowFurniture::getUnfinished() const
{
    return indicator->getUnfinished();
}

void WindowFurniture::addRemarks()
{
    if (auto* const recent = window->findChild<Board::BrowseFolio::RecentWidget*>()) {
        new EmptyListRemark(recent, QCoreApplication::translate(
                                        "Kestoboard::WindowFurniture",
                                        "The bitstreams that were loaded last will be here. Choose "
                                        "one under Browse, or drop it on the window."));
        new PathTips(recent);
    }
}

void WindowFurniture::letPagesScroll()
{
    const QString anyName;
    if (auto* const pages =
            window->getFolio()->findChild<QStackedWidget*>(anyName, Qt::FindDirectChildrenOnly)) {
        new PageScroller(pages);
    }
}

/// The page that shows at the start is there to choose a file, under Recent or, when one is named
/// already, under Browse: each half remembers its list as the place to begin at.
void WindowFurniture::focusFirstControl()
{
    if (const auto* const browser = window->findChild<Zandu::FileSystemBrowser*>()) {
        browser->findChild<QTreeView*>()->setFocus();
    }
    if (auto* const recent = window->findChild<Board::BrowseFolio::RecentWidget*>()) {
        recent->setFocus();
    }
}

} // namespace Kestoboard

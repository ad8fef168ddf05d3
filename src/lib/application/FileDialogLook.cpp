#include <application/FileDialogLook.h>

#include <QFileDialog>
#include <QHeaderView>
#include <QSplitter>
#include <QTreeView>

namespace Zandu
{

namespace
{

const QSize usualSize(760, 480);
const int placesWidth = 140;

} // namespace

void arrangeFileDialog(QFileDialog* dialog)
{
    const auto* const list = dialog->findChild<QTreeView*>();
    if (list == nullptr) {
        return;
    }
    dialog->resize(usualSize);
    // Names take what the other columns leave, and those are never cut off.
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    if (auto* const parts = dialog->findChild<QSplitter*>()) {
        parts->setSizes({placesWidth, usualSize.width() - placesWidth});
    }
}

} // namespace Zandu

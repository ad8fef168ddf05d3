#include "app/DropTarget.h"

#include "app/BitstreamPath.h"
#include "app/ChosenBitstream.h"

#include <Board/MainWindow.h>
#include <foundation/Console.h>

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

namespace Kestoboard
{

namespace
{

void refuse(const QString& sentence)
{
    Orvex::console->warning(sentence.toUtf8().constData(), "");
}

} // namespace

DropTarget::DropTarget(Board::MainWindow* panel)
    : QObject(panel)
    , window(panel)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
    // A field that may be typed into would take the address of a file as its text.
    for (QLineEdit* const field : window->findChildren<QLineEdit*>()) {
        field->installEventFilter(this);
    }
}

bool DropTarget::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto* const drop = static_cast<QDropEvent*>(event);
    if (!drop->mimeData()->hasUrls()) {
        return QObject::eventFilter(watched, event);
    }
    // Copied, never moved: the file stays where it is.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        take(*drop->mimeData());
    }
    return true;
}

void DropTarget::take(const QMimeData& dropped)
{
    const QList<QUrl> urls = dropped.urls();
    if (urls.size() != 1) {
        refuse(
            tr("%1 things were dropped: only one bitstream file can be chosen.").arg(urls.size()));
    } else if (!urls.first().isLocalFile()) {
        refuse(tr("\"%1\" is not a file on this computer: save it, and drop the file.")
                   .arg(urls.first().toDisplayString()));
    } else {
        offer(urls.first().toLocalFile());
    }
}

void DropTarget::offer(const QString& path)
{
    const QString complaint = getBitstreamComplaint(path);
    if (complaint.isEmpty()) {
        showChosenBitstream(*window, path);
    } else {
        refuse(complaint);
    }
}

} // namespace Kestoboard

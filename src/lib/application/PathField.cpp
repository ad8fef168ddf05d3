#include <application/PathField.h>

#include <application/DirectoryWatch.h>
#include <application/PlaceholderColor.h>

#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>

namespace Zandu
{

namespace
{

const QChar slash = QLatin1Char('/');

/// "~" stands for the home directory, as in a shell.
QString getExpanded(const QString& typed)
{
    QString path = typed.trimmed();
    if (path == QLatin1String("~") || path.startsWith(QLatin1String("~/"))) {
        return QDir::homePath() + path.mid(1);
    }
    return path;
}

} // namespace

PathField::PathField(QDir::Filters entryFilters, const QStringList& entryNameFilters,
                     QWidget* parent)
    : QLineEdit(parent)
    , filters(entryFilters)
    , nameFilters(entryNameFilters)
    , offers(new QStringListModel(this))
{
    setAccessibleName(tr("Directory or file"));
    setPlaceholderText(tr("Directory or file"));
    new PlaceholderColor(this);
    auto* pathCompleter = new QCompleter(offers, this);
    pathCompleter->setModelSorting(QCompleter::UnsortedModel);
    setCompleter(pathCompleter);
    connect(this, &QLineEdit::textEdited, this, &PathField::offer);
    connect(this, &QLineEdit::returnPressed, this, [this] {
        const QString path = getExpanded(text());
        if (!path.isEmpty()) {
            emit pathEntered(QDir::cleanPath(QDir(shownPath).absoluteFilePath(path)));
        }
    });
}

void PathField::setPath(const QString& path)
{
    shownPath = path;
    setText(QDir::toNativeSeparators(path));
}

void PathField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        setPath(shownPath);
        selectAll();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

/// Reads the directory that is being typed, when it is another than before.
void PathField::offer(const QString& typed)
{
    const QString folder = typed.left(typed.lastIndexOf(slash) + 1);
    if (folder.isEmpty() || folder == offeredFolder) {
        return;
    }
    offeredFolder = folder;
    offers->setStringList({});
    delete watch;
    watch =
        new DirectoryWatch(DirectoryRequest{QDir(shownPath).absoluteFilePath(getExpanded(folder)),
                                            filters, nameFilters},
                           this);
    connect(watch, &DirectoryWatch::listed, this, &PathField::fill);
}

void PathField::fill(const DirectoryListing& listing)
{
    QStringList paths;
    for (const DirectoryEntry& entry : listing.entries) {
        paths.push_back(offeredFolder + entry.name +
                        (entry.isDirectory ? QString(slash) : QString()));
    }
    offers->setStringList(paths);
    if (hasFocus()) {
        completer()->complete();
    }
}

} // namespace Zandu

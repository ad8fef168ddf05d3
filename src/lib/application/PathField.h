#ifndef APPLICATION_PATHFIELD_H
#define APPLICATION_PATHFIELD_H

#include <application/DirectoryListing.h>

#include <QLineEdit>

class QStringListModel;

namespace Zandu
{

class DirectoryWatch;

/// A field for a path, which completes what is typed from what is on the disk.
class PathField : public QLineEdit
{
    Q_OBJECT

public:
    /// Offers what the filters let through.
    PathField(QDir::Filters entryFilters, const QStringList& entryNameFilters, QWidget* parent);

    /// Shows a path; nothing is completed from it.
    void setPath(const QString& path);

signals:
    /// The person asked for a path, absolute and clean.
    void pathEntered(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void offer(const QString& typed);
    void fill(const DirectoryListing& listing);

    QDir::Filters filters;
    QStringList nameFilters;
    QStringListModel* offers;
    DirectoryWatch* watch = nullptr;
    QString shownPath;
    QString offeredFolder; // of the paths on offer, as it was typed, with its slash
};

} // namespace Zandu

#endif

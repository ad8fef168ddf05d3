#include <application/FileSystemBrowser.h>

#include <foundation/OwnedListCollection.h>
#include <foundation/Text.h>

#include <QFileInfo>

#include <list>

namespace Zandu
{

FileSystemBrowser::FileSystemBrowser(const QString& path, QDir::Filters, const QStringList&,
                                     QWidget* parent)
    : QWidget(parent)
    , directory(path)
{
}

FileSystemBrowser::~FileSystemBrowser() = default;

Orvex::Collection<std::string> FileSystemBrowser::getSelectedItems() const
{
    std::list<std::string> paths;
    if (!chosenFile.isEmpty()) {
        paths.push_back(Orvex::getLabel(chosenFile));
    }
    return Orvex::OwnedListCollection<std::string>(paths);
}

QString FileSystemBrowser::getPath() const
{
    return directory;
}

void FileSystemBrowser::setSelectedFile(const QString& path)
{
    chosenFile = path;
    directory = QFileInfo(path).absolutePath();
}

} // namespace Zandu

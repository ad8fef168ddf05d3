#include "app/ChosenBitstream.h"

#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/MainWindow.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Encoding.h>

namespace Kestoboard
{

namespace
{

Zandu::FileSystemBrowser* getBrowser(const Board::MainWindow& window)
{
    return window.findChild<Zandu::FileSystemBrowser*>();
}

} // namespace

void showChosenBitstream(const Board::MainWindow& window, const QString& path)
{
    Board::Folio* const folio = window.getFolio();
    auto* const pages = window.findChild<Board::BrowseFolio*>();
    Zandu::FileSystemBrowser* const browser = getBrowser(window);
    if (folio == nullptr || pages == nullptr || browser == nullptr) {
        return;
    }
    folio->raiseLeaf(static_cast<unsigned long>(folio->getBitstreamIndex()));
    pages->raiseLeaf(static_cast<unsigned long>(pages->getBrowseIndex()));
    browser->setSelectedFile(path);
}

QString getChosenBitstream(const Board::MainWindow& window)
{
    const Zandu::FileSystemBrowser* const browser = getBrowser(window);
    return browser != nullptr ? Orvex::getReadable(browser->getSelectedItems().getFirst())
                              : QString();
}

} // namespace Kestoboard

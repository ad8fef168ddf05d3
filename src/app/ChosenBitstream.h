#ifndef APP_CHOSENBITSTREAM_H
#define APP_CHOSENBITSTREAM_H

#include <QString>

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

/// Shows a file chosen on the Bitstream page. It is not loaded. Nothing happens in a window that is
/// still being built.
void showChosenBitstream(const Board::MainWindow& window, const QString& path);

/// What the browser of the Bitstream page has chosen; empty when nothing is.
QString getChosenBitstream(const Board::MainWindow& window);

} // namespace Kestoboard

#endif

#ifndef BOARD_BITSTREAMLEAF_H
#define BOARD_BITSTREAMLEAF_H

#include <Board/Export.h>

#include <QWidget>

#include <string>

class QGridLayout;
class QLineEdit;

namespace Board
{

class BrowseFolio;
class Folio;
class KSBaseHandler;

/// The page from which a bitstream file is chosen and sent: into the chip, into the chip after a
/// reset pulse, or into the SPI flash.
///
/// Everything runs on the GUI thread; sending waits in a nested event loop. A button that is
/// pressed meanwhile starts its own action, whose commands queue up behind.
class BOARD_EXPORT BitstreamLeaf : public QWidget
{
    Q_OBJECT

public:
    explicit BitstreamLeaf(QWidget* parent);
    ~BitstreamLeaf() override;

    /// The nearest page container above, or null.
    Folio* getFolio() const;
    /// The engine, or null without a page container. Not owned.
    KSBaseHandler* getKSBaseHandler() const;

    /// The file system shows in the chooser.
    bool isBrowsing() const;
    /// The files that were loaded last show in the chooser.
    bool isSelectingRecent() const;

    /// Empties the export path. Nothing in the library calls it.
    void initialize();

private slots:
    void onLoad();
    void onReset();
    void onResetLoad();
    void onPathChange();
    void onProgramFlash();

private:
    void buildErrorHandlerRows(QGridLayout* layout);
    void buildButtonRow(QGridLayout* layout);
    std::string getChosenPath() const;
    std::string takeChosenPath();
    std::string getExportPath() const;

    BrowseFolio* browseFolio;
    QLineEdit* exportLineEdit;
    /// The page is being loaded: no slot does anything.
    bool initializing;
};

} // namespace Board

#endif

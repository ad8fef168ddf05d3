#ifndef BOARD_BASICLEAF_H
#define BOARD_BASICLEAF_H

#include <Board/Export.h>

#include <QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;

namespace Board
{

class Folio;
class KSBaseHandler;

/// The page of the operating mode and the three service bits of the selected board.
///
/// It holds no state of the board: the widgets are loaded from the engine, and each action of a
/// person is one command. A check box is not corrected when the tool refuses its command; it shows
/// the truth again after the next `initialize`.
class BOARD_EXPORT BasicLeaf : public QWidget
{
    Q_OBJECT

public:
    explicit BasicLeaf(QWidget* parent);
    ~BasicLeaf() override;

    /// The nearest page container above, or null.
    Folio* getFolio() const;
    /// The engine, or null without a page container. Not owned.
    KSBaseHandler* getKSBaseHandler() const;

    /// Loads the widgets from the engine, in nested waits; without a board they stay as they are.
    ///
    /// An exception of the engine passes through and leaves the page mute: no later action of a
    /// person reaches the board.
    void initialize();

private slots:
    void onReset(int state);
    void onClock(int state);
    void onForceMode(int state);
    void onModeChange(const QString& text);

private:
    void buildModeRow(QGridLayout* layout);
    QCheckBox* buildBitRow(QGridLayout* layout, int row, const char* slot, const QString& text,
                           const QString& name);
    void load();
    void setBit(void (KSBaseHandler::*set)(bool), int state);

    QComboBox* modeComboBox;
    QCheckBox* resetCheckBox;
    QCheckBox* clockCheckBox;
    QCheckBox* forceModeCheckBox;
    /// The widgets are being loaded: what they signal is no action of a person.
    bool initializing;
};

} // namespace Board

#endif

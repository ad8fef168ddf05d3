#ifndef BOARD_POWERLEAF_H
#define BOARD_POWERLEAF_H

#include <Board/Export.h>

#include <QWidget>

class QGridLayout;

namespace Board
{

/// A form of the board's power supplies that an application can place. It is inert: nothing that it
/// holds is sent or stored.
class BOARD_EXPORT PowerLeaf : public QWidget
{
    Q_OBJECT

public:
    explicit PowerLeaf(QWidget* parent);
    ~PowerLeaf() override;

private:
    QWidget* createSlotTree();
    void buildSourceRows(QGridLayout* layout);
    void buildValueRow(QGridLayout* layout, int row, const QString& text, const QString& name,
                       double value);
    void buildSequenceRows(QGridLayout* layout);
};

} // namespace Board

#endif

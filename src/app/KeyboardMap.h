#ifndef APP_KEYBOARDMAP_H
#define APP_KEYBOARDMAP_H

#include <QDialog>

class QMainWindow;
class QTreeWidget;

namespace Kestoboard
{

/// Lists what the keys do in a window: its actions and those of its parts.
class KeyboardMap : public QDialog
{
    Q_OBJECT

public:
    explicit KeyboardMap(QMainWindow* window);

private:
    void addActions(const QMainWindow& window);
    void addFixedKeys();
    int getListWidth() const;
    void addRow(const QString& keys, const QString& effect);

    QTreeWidget* list;
};

} // namespace Kestoboard

#endif

#include "PageProbe.h"

#include <Board/KSBaseHandler.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QStyledItemDelegate>
#include <QTimer>

namespace Test
{

namespace
{

QString describeWidget(const QWidget& widget)
{
    const QString className = widget.metaObject()->className();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return className + " '" + label->text() + '\'';
    }
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (button != nullptr && !button->text().isEmpty()) {
        return className + " '" + button->text() + '\'';
    }
    return className + ' ' + widget.objectName();
}

QString describeAlignment(Qt::Alignment alignment)
{
    if (alignment == Qt::Alignment()) {
        return {};
    }
    if (alignment == Qt::AlignLeft) {
        return "left ";
    }
    if (alignment == Qt::AlignRight) {
        return "right ";
    }
    return QString("alignment %1 ").arg(static_cast<int>(alignment));
}

const QGridLayout& getGrid(const QWidget& widget)
{
    const auto* grid = qobject_cast<const QGridLayout*>(widget.layout());
    if (grid == nullptr) {
        qFatal("there is no grid");
    }
    return *grid;
}

void addMetric(QStringList* metrics, const QString& what, int index, int value)
{
    if (value != 0) {
        *metrics += QString("%1 %2: %3").arg(what).arg(index).arg(value);
    }
}

} // namespace

FragilePanel::FragilePanel()
    : window(new Board::MainWindow)
    , engine(window->getKSBaseHandler())
{
}

FragilePanel::~FragilePanel()
{
    delete window.data();
    engine->destroy();
}

void FragilePanel::deleteWindowOnceReceived(Bench* bench, const QString& command)
{
    doOnceReceived(bench, command, [this, bench] {
        delete window.data();
        bench->release();
    });
}

void doOnceReceived(Bench* bench, const QString& command, const std::function<void()>& work)
{
    const int before = bench->count(command);
    auto* journalTimer = new QTimer(qApp);
    QObject::connect(journalTimer, &QTimer::timeout, [=] {
        if (bench->count(command) > before) {
            journalTimer->stop();
            journalTimer->deleteLater();
            work();
        }
    });
    journalTimer->start(1);
}

void doInNextWait(const std::function<void()>& work)
{
    QTimer::singleShot(0, work);
}

void setScenario(Bench* bench, Board::KSBaseHandler* engine, const QString& text)
{
    bench->setScenario(text);
    engine->refreshTamsaMap();
}

QStringList takeCommands(Bench* bench)
{
    QStringList commands = bench->takeJournal();
    commands.removeAll("board list");
    return commands;
}

QStringList describeGrid(const QWidget& widget)
{
    const QGridLayout& grid = getGrid(widget);
    QStringList entries;
    for (int index = 0; index < grid.count(); ++index) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid.getItemPosition(index, &row, &column, &rows, &columns);
        QLayoutItem* const item = grid.itemAt(index);
        entries += QString("%1,%2 %3x%4 ").arg(row).arg(column).arg(rows).arg(columns) +
                   describeAlignment(item->alignment()) + describeWidget(*item->widget());
    }
    return entries;
}

QStringList describeMetrics(const QWidget& widget)
{
    const QGridLayout& grid = getGrid(widget);
    QStringList metrics(QString("spacing: %1").arg(grid.spacing()));
    for (int column = 0; column < grid.columnCount(); ++column) {
        addMetric(&metrics, "column minimum", column, grid.columnMinimumWidth(column));
        addMetric(&metrics, "column stretch", column, grid.columnStretch(column));
    }
    for (int row = 0; row < grid.rowCount(); ++row) {
        addMetric(&metrics, "row minimum", row, grid.rowMinimumHeight(row));
        addMetric(&metrics, "row stretch", row, grid.rowStretch(row));
    }
    return metrics;
}

QStringList describeMethods(const QMetaObject& meta)
{
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        const QString access = method.access() == QMetaMethod::Public ? "public" : "private";
        const QString kind = method.methodType() == QMetaMethod::Slot ? "slot" : "other";
        methods += access + ' ' + kind + ' ' + method.methodSignature();
    }
    return methods;
}

bool isEnriched(const QComboBox& comboBox)
{
    // The combo box's own delegate is of another kind.
    return qobject_cast<QStyledItemDelegate*>(comboBox.itemDelegate()) != nullptr;
}

QList<int> getMargins(const QWidget& widget)
{
    const QMargins margins = widget.layout()->contentsMargins();
    return {margins.left(), margins.top(), margins.right(), margins.bottom()};
}

} // namespace Test

#ifndef BOARD_MONITORINGLEAF_H
#define BOARD_MONITORINGLEAF_H

#include <Board/Export.h>
#include <foundation/Collection.h>

#include <QLabel>
#include <QPointer>
#include <QWidget>

#include <list>
#include <map>
#include <string>

class QGridLayout;
class QSpinBox;
class QTimer;

namespace Board
{

class Folio;
class KSBaseHandler;

/// The page of what the selected board measures: a table of channels with a voltage and a current.
///
/// The channels are learnt from the board's own reply by `initialize`, which builds the table;
/// `fillMonitoringTable` writes new texts into the labels that exist, by a timer while the page
/// shows. Values are text from end to end. GUI thread; reading waits in a nested event loop.
class BOARD_EXPORT MonitoringLeaf : public QWidget
{
    Q_OBJECT

public:
    explicit MonitoringLeaf(QWidget* parent);
    ~MonitoringLeaf() override;

    /// The nearest page container above, or null.
    Folio* getFolio() const;
    /// The engine, or null without a page container. Not owned.
    KSBaseHandler* getKSBaseHandler() const;

    /// The names of the channels in the order of the reply, repeated where it repeats them: a live
    /// view.
    Orvex::Collection<std::string> getMonitoringChannels() const;
    /// The value label of a channel, or null. Owned by the page; replaced by `initialize`.
    ///
    /// @throws Orvex::InvalidRequest for an empty name.
    QLabel* getMonitoringVoltageLabel(const std::string& name) const;
    QLabel* getMonitoringCurrentLabel(const std::string& name) const;

    /// Replaces the channels and their value labels by those of a fresh reply; none without a
    /// board.
    ///
    /// @throws Orvex::Fatal when the container of the table has gone.
    void generateMonitoringLabels();
    /// Lays out the headings and a row for each channel, in place of what was laid out.
    ///
    /// @throws Orvex::InvalidRequest when the container of the table has gone, or for a channel
    /// without a name, which leaves the table incomplete.
    void createMonitoringTable();
    /// Builds the table anew for the selected board.
    void initialize();

public slots:
    /// Refreshes the texts of the table. The timer's ticks are lost while the reply is waited for.
    void fillMonitoringTable();
    /// @param value the time between two refreshes, in seconds
    void onIntervalChanged(int value);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// By channel name. A label is owned by the container of the table, which may go before.
    using Labels = std::map<std::string, QPointer<QLabel>>;

    void buildIntervalRow(QGridLayout* layout);
    void storeLabel(Labels* labels, const std::string& name, const QString& text);
    QGridLayout* getTableLayout();
    void addChannelRow(QGridLayout* table, int row, const std::string& name);

    QSpinBox* intervalSpinBox;
    std::list<std::string> monitoringChannels;
    Labels monitoringVoltageLabels;
    Labels monitoringCurrentLabels;
    QPointer<QWidget> monitoringWidget; ///< null when somebody deleted it
    QTimer* monitoringTimer;
};

} // namespace Board

#endif

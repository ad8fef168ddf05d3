#ifndef BOARD_SCOPELEAF_H
#define BOARD_SCOPELEAF_H

#include <Board/Export.h>

#include <QWidget>

#include <string>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QSettings;
class QSpinBox;

namespace Board
{

class Folio;
class KSBaseHandler;

/// The page that has the board tool capture signals into a file.
///
/// The four values of the form are read from the settings when the page is made and written when it
/// is destroyed. GUI thread; a capture waits in a nested event loop.
class BOARD_EXPORT ScopeLeaf : public QWidget
{
    Q_OBJECT

public:
    explicit ScopeLeaf(QWidget* parent);
    /// Saves the settings.
    ~ScopeLeaf() override;

    /// The nearest page container above, or null.
    Folio* getFolio() const;
    /// The engine, or null without a page container. Not owned.
    KSBaseHandler* getKSBaseHandler() const;

    /// Marks the page as not initialized; nothing depends on the mark.
    void initialize();
    /// Writes the four values of the form to the settings at once.
    void saveSettings();

private slots:
    void onCapture();

private:
    void buildImmediateRow(QGridLayout* layout, const QSettings& settings);
    void buildFrequencyRow(QGridLayout* layout, const QSettings& settings);
    void buildFilenameRow(QGridLayout* layout, const QSettings& settings);
    std::string getFrequency() const;
    bool isReady(const std::string& filename, const std::string& frequency) const;

    QCheckBox* immediateCheckBox;
    QSpinBox* frequencySpinBox;
    QComboBox* frequencyUnitComboBox;
    QLineEdit* filenameLineEdit;
    bool initialized;
};

} // namespace Board

#endif

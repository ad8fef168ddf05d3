#include <Board/BitstreamLeaf.h>

#include <Board/Ancestor.h>
#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/FormLabel.h>
#include <Board/KSBaseHandler.h>
#include <Board/RecentLoadList.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Console.h>
#include <foundation/Guard.h>
#include <foundation/Text.h>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/BitstreamLeaf";
const char errorHandlerName[] = "Text";

// Runs `work` under a heading on the console. Its failures are reported there and end here, so that
// the console comes back to its depth.
template <class Work>
void transfer(const std::string& path, const std::string& function, unsigned long line, Work work)
{
    Orvex::console->print("Loading " + path, "");
    Orvex::console->indent();
    Orvex::guard(function, sourceFile, line, work,
                 [](const Orvex::Exception& failure) { Orvex::console->error(failure); });
    Orvex::console->unindent();
}

} // namespace

BitstreamLeaf::BitstreamLeaf(QWidget* parent)
    : QWidget(parent)
    , browseFolio(nullptr)
    , exportLineEdit(nullptr)
    , initializing(false)
{
    auto* layout = new QGridLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->setColumnStretch(2, 1);

    browseFolio = new BrowseFolio(this);
    browseFolio->setObjectName(QStringLiteral("browseFolio"));
    layout->addWidget(browseFolio, 0, 0, 1, -1);
    layout->setRowMinimumHeight(1, 20);
    buildErrorHandlerRows(layout);
    layout->setRowMinimumHeight(4, 20);
    buildButtonRow(layout);
    setLayout(layout);
}

BitstreamLeaf::~BitstreamLeaf() = default;

void BitstreamLeaf::buildErrorHandlerRows(QGridLayout* layout)
{
    layout->addWidget(new QLabel(QStringLiteral("Error handler<hr />"), this), 2, 0, 1, -1);
    exportLineEdit = new QLineEdit(this);
    exportLineEdit->setObjectName(QStringLiteral("exportLineEdit"));
    layout->addWidget(createFormLabel(QStringLiteral("Export to"), exportLineEdit), 3, 0);
    layout->addWidget(exportLineEdit, 3, 1, 1, -1);
}

void BitstreamLeaf::buildButtonRow(QGridLayout* layout)
{
    const auto addButton = [this, layout](int column, const QString& text, const QString& name,
                                          const char* slot) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(name);
        connect(button, SIGNAL(pressed()), this, slot);
        layout->addWidget(button, 5, column, Qt::AlignRight);
    };
    addButton(2, QStringLiteral("Reset"), QStringLiteral("resetButton"), SLOT(onReset()));
    addButton(3, QStringLiteral("Load"), QStringLiteral("loadButton"), SLOT(onLoad()));
    addButton(4, QStringLiteral("Reset && Load"), QStringLiteral("resetLoadButton"),
              SLOT(onResetLoad()));
    addButton(5, QStringLiteral("Program flash memory"), QStringLiteral("programFlashButton"),
              SLOT(onProgramFlash()));
}

Folio* BitstreamLeaf::getFolio() const
{
    return getAncestor<Folio>(*this);
}

KSBaseHandler* BitstreamLeaf::getKSBaseHandler() const
{
    const Folio* folio = getFolio();
    return folio != nullptr ? folio->getKSBaseHandler() : nullptr;
}

bool BitstreamLeaf::isBrowsing() const
{
    return browseFolio->getCurrentIndex() == browseFolio->getBrowseIndex();
}

bool BitstreamLeaf::isSelectingRecent() const
{
    return browseFolio->getCurrentIndex() == browseFolio->getRecentIndex();
}

void BitstreamLeaf::initialize()
{
    initializing = true;
    exportLineEdit->clear();
    initializing = false;
}

void BitstreamLeaf::onLoad()
{
    if (initializing) {
        return;
    }
    const std::string path = takeChosenPath();
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (path.empty() || ksBaseHandler == nullptr) {
        return;
    }
    ksBaseHandler->setErrorHandler(errorHandlerName, getExportPath());
    transfer(path, "onLoad", __LINE__,
             [ksBaseHandler, &path] { ksBaseHandler->sendBitstream(path); });
}

void BitstreamLeaf::onReset()
{
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (initializing || ksBaseHandler == nullptr) {
        return;
    }
    ksBaseHandler->setResetBit(true);
    ksBaseHandler->setResetBit(false);
}

void BitstreamLeaf::onResetLoad()
{
    if (initializing) {
        return;
    }
    const QPointer<BitstreamLeaf> self(this);
    onReset();
    // The window may have been deleted in the waits of the reset pulse.
    if (self != nullptr) {
        onLoad();
    }
}

void BitstreamLeaf::onPathChange()
{
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (initializing || ksBaseHandler == nullptr) {
        return;
    }
    ksBaseHandler->setErrorHandler(errorHandlerName, getExportPath());
}

void BitstreamLeaf::onProgramFlash()
{
    if (initializing) {
        return;
    }
    const std::string path = takeChosenPath();
    KSBaseHandler* ksBaseHandler = getKSBaseHandler();
    if (path.empty() || ksBaseHandler == nullptr) {
        return;
    }
    transfer(path, "onProgramFlash", __LINE__,
             [ksBaseHandler, &path] { ksBaseHandler->programFlash(path); });
}

// What is selected on the page of the chooser that shows. Without a selection in the file system it
// is where the browser stands; nothing asks whether that is a file.
std::string BitstreamLeaf::getChosenPath() const
{
    if (isSelectingRecent()) {
        return browseFolio->recentWidget->getSelectedItem();
    }
    if (!isBrowsing()) {
        return {};
    }
    const Zandu::FileSystemBrowser& browser = *browseFolio->fileSystemBrowser;
    const Orvex::Collection<std::string> items = browser.getSelectedItems();
    return items.isEmpty() ? Orvex::getLabel(browser.getPath()) : items.getFirst();
}

// Remembers the chosen path as the most recent one and returns it; empty, after a warning, when
// nothing is chosen. A file stays remembered also when its transfer fails.
std::string BitstreamLeaf::takeChosenPath()
{
    std::string path = getChosenPath();
    if (path.empty()) {
        Orvex::console->warning("No bitstream file selected !", "");
        return path;
    }
    addRecentLoad(QString::fromStdString(path));
    // A file chosen from the recent list leaves the list on the screen, with its selection.
    if (!isSelectingRecent()) {
        browseFolio->recentWidget->refresh();
    }
    return path;
}

std::string BitstreamLeaf::getExportPath() const
{
    return Orvex::getLabel(exportLineEdit->text());
}

} // namespace Board

#include <Board/BrowseFolio.h>

#include <Board/BitstreamDelegate.h>
#include <Board/ExclusiveButtonGroup.h>
#include <Board/PageIndex.h>
#include <Board/RecentLoadList.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Console.h>
#include <foundation/Debug.h>
#include <foundation/Fatal.h>
#include <foundation/Raise.h>
#include <foundation/Text.h>
#include <foundation/Theme.h>

#include <QButtonGroup>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QRegExp>
#include <QStackedWidget>
#include <QToolButton>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/BrowseFolio";

// The pattern does not depend on the debug mode, unlike what the browser offers.
void echoBitstreamFile(const QString& text)
{
    const QRegExp pattern(QStringLiteral(".*\\.(ksb|bbs|bts)"), Qt::CaseSensitive, QRegExp::RegExp);
    if (pattern.exactMatch(text)) {
        Orvex::console->print("Selecting bitstream file '" + Orvex::getLabel(text) + "'", "");
    }
}

QStringList getNameFilters()
{
    QStringList filters(QStringLiteral("*.ksb"));
    if (Orvex::isDebug()) {
        filters << QStringLiteral("*.bbs") << QStringLiteral("*.bts");
    }
    return filters;
}

QListWidgetItem* createRecentItem(const QString& path)
{
    auto* item = new QListWidgetItem(QFileInfo(path).fileName());
    item->setTextAlignment(Qt::AlignHCenter);
    item->setIcon(Orvex::theme->getIcon("recent"));
    item->setData(Qt::UserRole, path);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

} // namespace

BrowseFolio::BrowseFolio(QWidget* parent)
    : QWidget(parent)
    , buttonGroup(nullptr)
    , stackedWidget(nullptr)
    , fileSystemBrowser(nullptr)
    , recentWidget(nullptr)
{
    auto* buttonRow = new QWidget(this);
    auto* row = new QHBoxLayout(buttonRow);
    row->setSpacing(12);
    row->setContentsMargins(0, 0, 12, 0);

    stackedWidget = new QStackedWidget(this);
    stackedWidget->setObjectName(QStringLiteral("stackedWidget"));
    buttonGroup = createExclusiveButtonGroup();
    addRecentPage(row);
    addBrowsePage(row);
    row->addStretch(1);
    connect(buttonGroup, SIGNAL(buttonClicked(int)), this, SLOT(setLeaf(int)));

    auto* layout = new QGridLayout;
    layout->addWidget(buttonRow, 0, 0);
    layout->addWidget(stackedWidget, 1, 0);
    layout->setRowStretch(1, 1);
    setLayout(layout);
}

BrowseFolio::~BrowseFolio() = default;

void BrowseFolio::addRecentPage(QHBoxLayout* row)
{
    addButton(row, 0, createButton(tr("Recent"), "recent", true));
    recentWidget = new RecentWidget(this);
    recentWidget->setObjectName(QStringLiteral("recentWidget"));
    recentWidget->setAccessibleName(tr("Recent"));
    connect(recentWidget, SIGNAL(itemClicked(QListWidgetItem*)), this,
            SLOT(onItemClicked(QListWidgetItem*)));
    stackedWidget->addWidget(recentWidget);
}

void BrowseFolio::addBrowsePage(QHBoxLayout* row)
{
    addButton(row, 1, createButton(tr("Browse"), "browse", false));
    fileSystemBrowser = new Zandu::FileSystemBrowser(
        QDir::currentPath(), QDir::Files | QDir::AllDirs, getNameFilters(), this);
    fileSystemBrowser->setObjectName(QStringLiteral("fileSystemBrowser"));
    connect(fileSystemBrowser, SIGNAL(itemClicked(const QModelIndex&)), this,
            SLOT(onItemClicked(const QModelIndex&)));
    stackedWidget->addWidget(fileSystemBrowser);
}

void BrowseFolio::addButton(QHBoxLayout* row, int id, QToolButton* button)
{
    row->addWidget(button);
    buttonGroup->addButton(button, id);
}

QToolButton* BrowseFolio::createButton(const QString& text, const std::string& iconName,
                                       bool checked)
{
    auto* button = new QToolButton;
    button->setObjectName(QString::fromStdString(iconName + "Button"));
    button->setText(text);
    button->setAutoRaise(true);
    button->setCheckable(true);
    button->setChecked(checked);
    button->setIconSize(QSize(24, 24));
    button->setIcon(Orvex::theme->getIcon(iconName));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    return button;
}

long BrowseFolio::getRecentIndex() const
{
    return getPageIndex<RecentWidget>(*stackedWidget);
}

long BrowseFolio::getBrowseIndex() const
{
    return getPageIndex<Zandu::FileSystemBrowser>(*stackedWidget);
}

long BrowseFolio::getCurrentIndex() const
{
    return stackedWidget->currentIndex();
}

void BrowseFolio::enableLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->setEnabled(true);
    }
}

void BrowseFolio::disableLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->setEnabled(false);
    }
}

void BrowseFolio::raiseLeaf(unsigned long index)
{
    if (QAbstractButton* button = getButton(*buttonGroup, index)) {
        button->click();
    }
}

void BrowseFolio::setLeaf(int index)
{
    stackedWidget->setCurrentIndex(index);
}

void BrowseFolio::onItemClicked(QModelIndex index)
{
    if (index.isValid()) {
        echoBitstreamFile(index.data(Qt::DisplayRole).toString());
    }
}

void BrowseFolio::onItemClicked(QListWidgetItem* item)
{
    if (item != nullptr) {
        echoBitstreamFile(item->data(Qt::DisplayRole).toString());
    }
}

BrowseFolio::RecentWidget::RecentWidget(BrowseFolio* parent)
    : QListWidget(parent)
{
    setSpacing(12);
    setAttribute(Qt::WA_MouseTracking, true);
    setUniformItemSizes(true);
    setMovement(QListView::Static);
    setViewMode(QListView::IconMode);
    setResizeMode(QListView::Adjust);
    Orvex::theme->enrich(this);
    setItemDelegate(new BitstreamDelegate(this));
    refresh();
}

BrowseFolio::RecentWidget::~RecentWidget() = default;

void BrowseFolio::RecentWidget::refresh()
{
    clear();
    const QStringList paths = getRecentLoadList();
    for (const QString& path : paths) {
        if (QFile::exists(path)) {
            addItem(createRecentItem(path));
        }
    }
}

std::string BrowseFolio::RecentWidget::getSelectedItem() const
{
    const QList<QListWidgetItem*> items = selectedItems();
    if (items.size() > 1) {
        Orvex::raise(Orvex::Fatal("More than one selected item"), "getSelectedItem", sourceFile,
                     __LINE__);
    }
    return items.isEmpty() ? std::string()
                           : Orvex::getLabel(items.first()->data(Qt::UserRole).toString());
}

void BrowseFolio::RecentWidget::mouseMoveEvent(QMouseEvent* event)
{
    // The list's own handling of moves stays off; the path under the mouse is read and not used.
    if (const QListWidgetItem* item = itemAt(event->pos())) {
        static_cast<void>(item->data(Qt::UserRole).toString());
    }
}

} // namespace Board

#include <application/FileSystemBrowser.h>

#include <application/DirectoryModel.h>
#include <application/DirectoryView.h>
#include <application/DirectoryWatch.h>
#include <application/IconButton.h>
#include <application/NoticeBar.h>
#include <application/PathField.h>

#include <foundation/OwnedListCollection.h>
#include <foundation/PlainText.h>
#include <foundation/Text.h>
#include <foundation/Theme.h>

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include <chrono>
#include <list>
#include <tuple>

namespace Zandu
{

namespace
{

using State = DirectoryListing::State;

/// What takes less time to open is not spoken of.
constexpr std::chrono::milliseconds openingPatience(400);
/// A listing waits for a mouse button to be released: looked at so often, and so many times at
/// most.
constexpr std::chrono::milliseconds displayDelay(50);
constexpr int mostDelays = 20;
constexpr int columnMargin = 24;

bool isFailure(const DirectoryListing& listing)
{
    return listing.state == State::Missing || listing.state == State::Unreadable ||
           listing.state == State::Exhausted;
}

QString getStartDirectory(const QString& path)
{
    const QString directory = QDir::cleanPath(QDir(path).absolutePath());
    return Orvex::isOneLine(directory) ? directory : QDir::homePath();
}

QString getParent(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

} // namespace

FileSystemBrowser::FileSystemBrowser(const QString& path, QDir::Filters entryFilters,
                                     const QStringList& entryNameFilters, QWidget* parent)
    : QWidget(parent)
    , directory(getStartDirectory(path))
    , filters(entryFilters)
    , nameFilters(entryNameFilters)
    , pathField(new PathField(entryFilters, entryNameFilters, this))
    , tree(new DirectoryView(this))
    , remark(new QLabel(tree->viewport()))
    , notice(new NoticeBar(this))
    , model(new DirectoryModel(this))
{
    buildTree();
    createSortActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(createPathRow());
    layout->addWidget(tree, 1);
    layout->addWidget(notice);

    openingTimer.setSingleShot(true);
    openingTimer.setInterval(openingPatience);
    displayTimer.setSingleShot(true);
    connect(&displayTimer, &QTimer::timeout, this, &FileSystemBrowser::displayLatest);
    connect(pathField, &PathField::pathEntered, this, &FileSystemBrowser::open);

    pathField->setPath(directory);
    shown = new DirectoryWatch(getRequest(directory), this);
    connect(shown, &DirectoryWatch::listed, this, &FileSystemBrowser::onShownListed);
}

FileSystemBrowser::~FileSystemBrowser() = default;

Orvex::Collection<std::string> FileSystemBrowser::getSelectedItems() const
{
    const QString path = chosenFile.isEmpty() ? getSelectedPath() : chosenFile;
    std::list<std::string> paths;
    if (!path.isEmpty()) {
        paths.push_back(Orvex::getLabel(path));
    }
    return Orvex::OwnedListCollection<std::string>(paths);
}

QString FileSystemBrowser::getPath() const
{
    return directory;
}

void FileSystemBrowser::setSelectedFile(const QString& path)
{
    open(path);
    if (Orvex::isOneLine(path)) {
        chosenFile = QDir::cleanPath(QDir(directory).absoluteFilePath(path));
    }
}

void FileSystemBrowser::open(const QString& path)
{
    const QString wanted = QDir::cleanPath(QDir(directory).absoluteFilePath(path));
    if (!Orvex::isOneLine(wanted)) {
        refuseToTake(wanted);
        return;
    }
    delete opening;
    chosenFile.clear();
    opening = new DirectoryWatch(getRequest(wanted), this);
    connect(opening, &DirectoryWatch::listed, this, &FileSystemBrowser::onOpeningListed);
    openingTimer.disconnect();
    connect(&openingTimer, &QTimer::timeout, notice, [this, wanted] {
        notice->inform(tr("Opening %1 takes a while.").arg(QDir::toNativeSeparators(wanted)));
    });
    openingTimer.start();
}

bool FileSystemBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != tree || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool up = key->key() == Qt::Key_Up && (key->modifiers() & Qt::AltModifier) != 0;
    if (up || key->key() == Qt::Key_Backspace) {
        openParent();
        return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        activate(tree->currentIndex());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void FileSystemBrowser::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    shown->setPolling(true);
}

void FileSystemBrowser::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    shown->setPolling(false);
}

void FileSystemBrowser::buildTree()
{
    Orvex::theme->enrich(tree);
    tree->setModel(model);
    tree->setAccessibleName(tr("Directories and files"));
    tree->setRootIsDecorated(false);
    tree->setItemsExpandable(false);
    tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    tree->setSelectionMode(QAbstractItemView::SingleSelection);
    tree->installEventFilter(this);

    QHeaderView* header = tree->header();
    const QLocale locale;
    const QFontMetrics metrics = fontMetrics();
    const QString longSize = locale.formattedDataSize(qint64(1023) * 1023, 1);
    const QString longDate =
        locale.toString(QDateTime(QDate(2000, 12, 28), QTime(22, 58)), QLocale::ShortFormat);
    header->setStretchLastSection(false);
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->resizeSection(1, metrics.horizontalAdvance(longSize) + columnMargin);
    header->resizeSection(2, metrics.horizontalAdvance(longDate) + columnMargin);
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(0, Qt::AscendingOrder);
    connect(header, &QHeaderView::sortIndicatorChanged, this, &FileSystemBrowser::sort);

    remark->setAlignment(Qt::AlignCenter);
    remark->setTextFormat(Qt::PlainText);
    remark->setWordWrap(true);
    remark->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(tree->viewport()))->addWidget(remark);

    connect(tree, &QTreeView::doubleClicked, this, &FileSystemBrowser::activate);
    connect(tree, &QTreeView::clicked, this, &FileSystemBrowser::onClicked);
    // What a person selects, by whatever means, counts more than what was chosen before.
    connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!isArranging) {
            chosenFile.clear();
        }
    });
}

/// What a click on a column does, for the keys and the context menu.
void FileSystemBrowser::createSortActions()
{
    const std::tuple<QString, const char*, DirectoryColumn> columns[] = {
        {tr("Sort by &name"), "Alt+1", DirectoryColumn::Name},
        {tr("Sort by &size"), "Alt+2", DirectoryColumn::Size},
        {tr("Sort by &date"), "Alt+3", DirectoryColumn::Modified},
    };
    for (const auto& [text, keys, column] : columns) {
        auto* action = new QAction(text, this);
        action->setShortcut(QKeySequence::fromString(QString::fromLatin1(keys)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this,
                [this, section = static_cast<int>(column)] { sortBy(section); });
        addAction(action);
    }
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &QWidget::customContextMenuRequested, this, &FileSystemBrowser::showContextMenu);
}

void FileSystemBrowser::showContextMenu(const QPoint& place)
{
    // Shown and not waited for: whoever waits for the board tool goes on in the meantime.
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    menu->popup(tree->viewport()->mapToGlobal(place));
}

QWidget* FileSystemBrowser::createPathRow()
{
    QToolButton* parentButton =
        createIconButton("parent", tr("To the parent directory (Alt+Up)"), this);
    QToolButton* homeButton = createIconButton("home", tr("To the home directory"), this);
    connect(parentButton, &QToolButton::clicked, this, &FileSystemBrowser::openParent);
    connect(homeButton, &QToolButton::clicked, this, [this] { open(QDir::homePath()); });
    auto* toField = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_L), this);
    toField->setContext(Qt::WidgetWithChildrenShortcut);
    connect(toField, &QShortcut::activated, pathField, [this] {
        pathField->setFocus();
        pathField->selectAll();
    });

    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(parentButton);
    layout->addWidget(homeButton);
    layout->addWidget(pathField, 1);
    return row;
}

void FileSystemBrowser::openParent()
{
    open(getParent(directory));
}

void FileSystemBrowser::activate(const QModelIndex& index)
{
    if (model->isDirectory(index)) {
        open(model->getPath(index));
    }
}

void FileSystemBrowser::onOpeningListed(const DirectoryListing& listing)
{
    openingTimer.stop();
    if (isFailure(listing)) {
        refuse(listing);
    } else {
        arrive(listing);
    }
}

/// The directory that was asked for takes the place of the one that is shown.
void FileSystemBrowser::arrive(const DirectoryListing& listing)
{
    const QString cameFrom = directory;
    delete shown;
    shown = opening;
    opening = nullptr;
    shown->disconnect(this);
    connect(shown, &DirectoryWatch::listed, this, &FileSystemBrowser::onShownListed);
    shown->setPolling(isVisible());

    directory = listing.directory;
    pathField->setPath(directory);
    notice->hide();
    latest.reset();
    if (chosenFile.isEmpty() && !listing.chosen.isEmpty()) {
        // It may be among what is still to come.
        chosenFile = QDir(directory).filePath(listing.chosen);
    }
    const QScopedValueRollback<bool> arriving(isArranging, true);
    tree->clearSelection();
    display(listing);
    if (getParent(cameFrom) == directory) {
        const QModelIndex index = model->find(QFileInfo(cameFrom).fileName());
        tree->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        tree->scrollTo(index);
    }
    select(listing.chosen);
}

/// The browser stays where it is.
void FileSystemBrowser::refuse(const DirectoryListing& listing)
{
    opening->deleteLater();
    opening->disconnect(this);
    opening = nullptr;
    chosenFile.clear();
    notice->warn(getRemark(listing));
}

/// Nothing stays chosen: what a person loads next is not what they clicked before.
void FileSystemBrowser::refuseToTake(const QString& path)
{
    chosenFile.clear();
    tree->clearSelection();
    notice->warn(tr("\"%1\" holds a line break, which no command can take: rename it.")
                     .arg(Orvex::getVisible(QDir::toNativeSeparators(path))));
}

void FileSystemBrowser::onClicked(const QModelIndex& index)
{
    if (!model->isTakeable(index)) {
        refuseToTake(model->getPath(index));
        return;
    }
    chosenFile.clear();
    emit itemClicked(index.siblingAtColumn(0));
}

/// A list that changes between the press and the release of a button would swallow the click.
void FileSystemBrowser::onShownListed(const DirectoryListing& listing)
{
    latest = std::make_unique<DirectoryListing>(listing);
    displayDelays = 0;
    displayLatest();
}

void FileSystemBrowser::displayLatest()
{
    if (!latest) {
        return;
    }
    if (QApplication::mouseButtons() != Qt::NoButton && displayDelays < mostDelays) {
        ++displayDelays;
        displayTimer.start(displayDelay);
        return;
    }
    const std::unique_ptr<DirectoryListing> listing = std::move(latest);
    display(*listing);
}

/// Selection and place stay what they were, as far as the entries are still there.
void FileSystemBrowser::display(const DirectoryListing& listing)
{
    const QScopedValueRollback<bool> displaying(isArranging, true);
    const QString selected = QFileInfo(getSelectedPath()).fileName();
    const QString current =
        model->data(tree->currentIndex().siblingAtColumn(0), Qt::DisplayRole).toString();
    const int place = tree->verticalScrollBar()->value();
    model->setListing(listing);
    tree->selectionModel()->setCurrentIndex(model->find(current), QItemSelectionModel::NoUpdate);
    if (!selected.isEmpty()) {
        tree->selectionModel()->select(model->find(selected), QItemSelectionModel::ClearAndSelect |
                                                                  QItemSelectionModel::Rows);
    }
    tree->verticalScrollBar()->setValue(place);
    if (opening == nullptr && listing.state != State::Reading) {
        select(QFileInfo(chosenFile).fileName());
        chosenFile.clear();
    }
    remark->setText(getRemark(listing));
}

void FileSystemBrowser::select(const QString& name)
{
    const QModelIndex index = name.isEmpty() ? QModelIndex() : model->find(name);
    if (index.isValid()) {
        tree->setCurrentIndex(index);
        tree->scrollTo(index, QAbstractItemView::PositionAtCenter);
    }
}

/// By the column that it is sorted by already: the other way round.
void FileSystemBrowser::sortBy(int column)
{
    QHeaderView* header = tree->header();
    const bool reversed = header->sortIndicatorSection() == column &&
                          header->sortIndicatorOrder() == Qt::AscendingOrder;
    header->setSortIndicator(column, reversed ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void FileSystemBrowser::sort()
{
    const DirectoryRequest request = getRequest(directory);
    for (DirectoryWatch* watch : {shown, opening}) {
        if (watch != nullptr) {
            watch->sort(request.column, request.order);
        }
    }
}

DirectoryRequest FileSystemBrowser::getRequest(const QString& path) const
{
    const QHeaderView* header = tree->header();
    return DirectoryRequest{path, filters, nameFilters,
                            static_cast<DirectoryColumn>(header->sortIndicatorSection()),
                            header->sortIndicatorOrder()};
}

/// What is to be said in place of entries; nothing where entries are shown.
QString FileSystemBrowser::getRemark(const DirectoryListing& listing) const
{
    const QString path = QDir::toNativeSeparators(listing.directory);
    switch (listing.state) {
    case State::Missing:
        return tr("There is no file or directory %1.").arg(path);
    case State::Unreadable:
        return tr("The directory %1 cannot be read: you have no right to read it.").arg(path);
    case State::Exhausted:
        return tr("The directory %1 cannot be read now: the system allows no more open files or "
                  "threads. Close what is not needed and open the directory again.")
            .arg(path);
    case State::Reading:
        return QString();
    case State::Complete:
        break;
    }
    if (!listing.entries.isEmpty()) {
        return QString();
    }
    return nameFilters.isEmpty() ? tr("This directory is empty.")
                                 : tr("Here is no directory, and no file that matches %1.")
                                       .arg(nameFilters.join(tr(" or ")));
}

QString FileSystemBrowser::getSelectedPath() const
{
    const QModelIndexList rows = tree->selectionModel()->selectedRows();
    return rows.isEmpty() || !model->isTakeable(rows.first()) ? QString()
                                                              : model->getPath(rows.first());
}

} // namespace Zandu

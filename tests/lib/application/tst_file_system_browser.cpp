#include <application/FileSystemBrowser.h>

#include <application/DirectoryListing.h>

#include <foundation/ForEachControler.h>
#include <foundation/Theme.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QCompleter>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <string>

#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Names = QStringList;
using Zandu::DirectoryListing;

constexpr int patience = 20000; // in milliseconds; only ends a test that fails

const char mount[] = "mounted";
/// While it is set, a directory of that name does not answer.
std::atomic<bool> isMountStill{false};

/// As the pages connect: by name, to a slot.
class ClickRecorder : public QObject
{
    Q_OBJECT

public:
    QStringList names;
    QList<int> columns;

public slots:
    void onItemClicked(const QModelIndex& index)
    {
        names.push_back(index.data().toString());
        columns.push_back(index.column());
    }
};

/// The rights of somebody who is nobody, for as long as it lives; root may read everything.
class NoRights
{
public:
    NoRights()
    {
        if (root && ::setresuid(65534, 65534, 0) != 0) {
            qFatal("the rights cannot be given up");
        }
    }
    ~NoRights()
    {
        if (root && ::setresuid(0, 0, 0) != 0) {
            qFatal("the rights cannot be taken back");
        }
    }

private:
    const bool root = ::geteuid() == 0;
};

} // namespace

// In place of the C library's, which comes after the program.
extern "C" __attribute__((visibility("default"))) DIR* opendir(const char* path)
{
    using Open = DIR* (*)(const char*);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "opendir"));
    while (isMountStill && std::strstr(path, mount) != nullptr) {
        ::usleep(1000);
    }
    return open(path);
}

class FileSystemBrowserTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void standsOnItsPathAtOnce();
    void aRelativePathIsMadeAbsolute();
    void listsDirectoriesAndTheFilesThatMatch();
    void suffixesMatchInUpperCaseToo();
    void listsAllFilesWithoutNameFilters();
    void nothingIsSelectedAtFirst();
    void theRowOfTheKeysLooksOtherThanASelectedOne();
    void anEmptyPathFieldDoesNotLookFilledIn();
    void aClickTellsTheIndexOfTheName();
    void aClickSelectsTheFullPath();
    void aPathWithAccentsIsGivenInUtf8();
    void aClickOnADirectorySelectsIt();
    void aDoubleClickEntersADirectory();
    void theSelectionStaysBehindWhenADirectoryIsEntered();
    void aDoubleClickOnAFileStaysHere();
    void returnEntersADirectory();
    void backspaceAndTheButtonGoToTheParent();
    void theParentShowsWhereOneCameFrom();
    void theHomeButtonGoesHome();
    void aTypedDirectoryIsEntered_data();
    void aTypedDirectoryIsEntered();
    void aTypedFileIsChosen();
    void aTypedFileIsChosenWhenItIsListedLate();
    void aSelectionByKeysReplacesWhatIsNotListedYet();
    void aTypedPathThatIsNotThereIsRefused();
    void escapeBringsThePathBack();
    void thePathFieldOffersWhatIsThere();
    void anUnreadableDirectorySaysSo();
    void anEmptyDirectorySaysSo();
    void aMissingStartDirectorySaysSo();
    void aDirectoryThatIsRemovedSaysSoAndComesBack();
    void newFilesAppear();
    void newFilesAppearWhileItIsHidden();
    void removedFilesDisappear();
    void aChangedSizeIsShown();
    void theSelectionOutlivesAChangeOfTheDirectory();
    void theSelectionGoesWithItsFile();
    void sortsNamesAsAPersonDoes();
    void sortsBySizeAndDateWithDirectoriesFirst();
    void theKeysSortAndTurnTheOrderRound();
    void theContextMenuSorts();
    void theSelectionOutlivesSorting();
    void typingFindsAnEntry();
    void aFileIsChosenFromOutside();
    void aChosenFileCountsBeforeItIsListed();
    void aFileThatTheFiltersHideCanBeChosen();
    void aChosenFileThatIsNotThereIsGivenUp();
    void aClickReplacesWhatWasChosenFromOutside();
    void aLargeDirectoryLeavesTheWindowLive();
    void aDirectoryThatDoesNotAnswerLeavesTheWindowLive();
    void mayBeDestroyedWhileItReads();
    void isFoundByItsClass();
    void everyControlHasAnAccessibleName();

private:
    void makeBrowser(const QStringList& nameFilters = {QStringLiteral("*.ksb")});
    void makeFile(const QString& name, int size = 10) const;
    QString getFullPath(const QString& name) const { return directory->filePath(name); }
    Names getNames() const;
    QStringList getSelected() const;
    QModelIndex find(const QString& name, int column = 0) const;
    void click(const QString& name, int column = 0);
    void doubleClick(const QString& name);
    QAbstractButton* getButton(const QString& beginning) const;
    bool isSaid(const QString& sentence) const;
    void type(const QString& path);
    /// A directory that `isMountStill` keeps from answering, with the files early and late.
    void makeMount() const;
    /// Opens the late file in it, and has only the early one been read so far.
    void openHalfRead(void (Zandu::FileSystemBrowser::*open)(const QString& path));

    std::unique_ptr<Orvex::Theme> theme;
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<Zandu::FileSystemBrowser> browser;
    QTreeView* tree = nullptr;
};

void FileSystemBrowserTest::initTestCase()
{
    theme = std::make_unique<Orvex::Theme>(Orvex::Theme::Scheme::Light);
    Orvex::theme = theme.get();
    theme->apply();
}

void FileSystemBrowserTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    ::chmod(QFile::encodeName(directory->path()).constData(), 0755);
    QDir(directory->path()).mkdir(QStringLiteral("designs"));
    makeFile(QStringLiteral("blinky.ksb"), 300);
    makeFile(QStringLiteral("counter.ksb"), 20);
    makeFile(QStringLiteral("other.bbs"));
    makeFile(QStringLiteral("notes.txt"));
    makeFile(QStringLiteral(".hidden.ksb"));
    makeFile(QStringLiteral("designs/inner.ksb"));
    makeBrowser();
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 3, patience);
}

void FileSystemBrowserTest::cleanup()
{
    browser.reset();
    directory.reset();
}

void FileSystemBrowserTest::makeBrowser(const QStringList& nameFilters)
{
    browser = std::make_unique<Zandu::FileSystemBrowser>(
        directory->path(), QDir::AllDirs | QDir::Files, nameFilters, nullptr);
    tree = browser->findChild<QTreeView*>();
    QVERIFY(tree != nullptr);
    browser->resize(640, 480);
    browser->show();
    QVERIFY(QTest::qWaitForWindowExposed(browser.get()));
}

void FileSystemBrowserTest::makeFile(const QString& name, int size) const
{
    QFile file(getFullPath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(size, 'x')), qint64(size));
}

void FileSystemBrowserTest::makeMount() const
{
    QDir(directory->path()).mkdir(QLatin1String(mount));
    makeFile(QStringLiteral("mounted/early.ksb"));
    makeFile(QStringLiteral("mounted/late.ksb"));
}

Names FileSystemBrowserTest::getNames() const
{
    Names names;
    for (int row = 0; row < tree->model()->rowCount(); ++row) {
        names.push_back(tree->model()->index(row, 0).data().toString());
    }
    return names;
}

QStringList FileSystemBrowserTest::getSelected() const
{
    QStringList paths;
    std::string path;
    for (Orvex::ForEachControler<std::string> loop(path, browser->getSelectedItems());
         loop.next();) {
        paths.push_back(QString::fromStdString(path));
    }
    return paths;
}

QModelIndex FileSystemBrowserTest::find(const QString& name, int column) const
{
    return tree->model()->index(getNames().indexOf(name), column);
}

void FileSystemBrowserTest::click(const QString& name, int column)
{
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree->visualRect(find(name, column)).center());
}

void FileSystemBrowserTest::doubleClick(const QString& name)
{
    click(name);
    const QPoint place = tree->visualRect(find(name)).center();
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseRelease(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

QAbstractButton* FileSystemBrowserTest::getButton(const QString& beginning) const
{
    for (QAbstractButton* button : browser->findChildren<QAbstractButton*>()) {
        if (button->accessibleName().startsWith(beginning)) {
            return button;
        }
    }
    return nullptr;
}

bool FileSystemBrowserTest::isSaid(const QString& sentence) const
{
    const QList<QLabel*> labels = browser->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
        return label->isVisible() && label->text() == sentence;
    });
}

void FileSystemBrowserTest::type(const QString& path)
{
    auto* field = browser->findChild<QLineEdit*>();
    field->setText(path);
    QTest::keyClick(field, Qt::Key_Return);
}

void FileSystemBrowserTest::standsOnItsPathAtOnce()
{
    const Zandu::FileSystemBrowser fresh(directory->path(), QDir::AllDirs | QDir::Files, {},
                                         nullptr);
    QCOMPARE(fresh.getPath(), directory->path());
}

void FileSystemBrowserTest::aRelativePathIsMadeAbsolute()
{
    const Zandu::FileSystemBrowser fresh(QStringLiteral("."), QDir::AllDirs | QDir::Files, {},
                                         nullptr);
    QCOMPARE(fresh.getPath(), QDir::currentPath());
}

void FileSystemBrowserTest::listsDirectoriesAndTheFilesThatMatch()
{
    QCOMPARE(getNames(), Names({QStringLiteral("designs"), QStringLiteral("blinky.ksb"),
                                QStringLiteral("counter.ksb")}));
}

void FileSystemBrowserTest::suffixesMatchInUpperCaseToo()
{
    makeFile(QStringLiteral("LOUD.KSB"));
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(QLatin1String("LOUD.KSB")), patience);
}

void FileSystemBrowserTest::listsAllFilesWithoutNameFilters()
{
    makeBrowser({});
    QTRY_COMPARE_WITH_TIMEOUT(getNames(),
                              Names({QStringLiteral("designs"), QStringLiteral("blinky.ksb"),
                                     QStringLiteral("counter.ksb"), QStringLiteral("notes.txt"),
                                     QStringLiteral("other.bbs")}),
                              patience);
}

void FileSystemBrowserTest::nothingIsSelectedAtFirst()
{
    QVERIFY(browser->getSelectedItems().isEmpty());
    QCOMPARE(getSelected(), QStringList());
}

void FileSystemBrowserTest::theRowOfTheKeysLooksOtherThanASelectedOne()
{
    browser->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(browser.get()));
    tree->clearFocus();
    QTest::keyClick(browser->findChild<QLineEdit*>(), Qt::Key_Tab);
    tree->setFocus(Qt::TabFocusReason);
    QCOMPARE(tree->currentIndex().row(), 0);
    QVERIFY(getSelected().isEmpty());
    const QRect row = tree->visualRect(find(QStringLiteral("designs"), 1));
    const QImage seen = tree->viewport()->grab().toImage();
    QCOMPARE(seen.pixelColor(row.center()), theme->getColor("base"));
    QCOMPARE(seen.pixelColor(row.center().x(), row.top()), theme->getColor("accent"));
    QTest::keyClick(tree, Qt::Key_Space);
    QCOMPARE(tree->viewport()->grab().toImage().pixelColor(row.center()),
             theme->getColor("button_checked"));
}

void FileSystemBrowserTest::anEmptyPathFieldDoesNotLookFilledIn()
{
    const auto* field = browser->findChild<QLineEdit*>();
    const auto getShade = [field] { return field->palette().color(QPalette::PlaceholderText); };
    const auto restore = qScopeGuard([this] {
        theme->setScheme(Orvex::Theme::Scheme::Light);
        theme->apply();
    });
    for (const auto scheme : {Orvex::Theme::Scheme::Dark, Orvex::Theme::Scheme::Light}) {
        theme->setScheme(scheme);
        theme->apply();
        QCOMPARE(getShade(), theme->getColor("text_light"));
        QCOMPARE(field->palette().color(QPalette::Text), theme->getColor("text"));
    }
}

void FileSystemBrowserTest::aClickTellsTheIndexOfTheName()
{
    ClickRecorder recorder;
    QVERIFY(connect(browser.get(), SIGNAL(itemClicked(const QModelIndex&)), &recorder,
                    SLOT(onItemClicked(const QModelIndex&))));
    click(QStringLiteral("blinky.ksb"));
    click(QStringLiteral("counter.ksb"), 1);
    click(QStringLiteral("designs"), 2);
    QCOMPARE(recorder.names,
             QStringList({QStringLiteral("blinky.ksb"), QStringLiteral("counter.ksb"),
                          QStringLiteral("designs")}));
    QCOMPARE(recorder.columns, QList<int>({0, 0, 0}));
}

void FileSystemBrowserTest::aClickSelectsTheFullPath()
{
    click(QStringLiteral("counter.ksb"), 2);
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("counter.ksb"))));
    click(QStringLiteral("blinky.ksb"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("blinky.ksb"))));
}

void FileSystemBrowserTest::aPathWithAccentsIsGivenInUtf8()
{
    const QString name = QStringLiteral("café ü.ksb");
    makeFile(name);
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(name), patience);
    click(name);
    QCOMPARE(browser->getSelectedItems().getFirst(),
             directory->path().toStdString() + "/caf\xc3\xa9 \xc3\xbc.ksb");
}

void FileSystemBrowserTest::aClickOnADirectorySelectsIt()
{
    click(QStringLiteral("designs"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("designs"))));
    QCOMPARE(browser->getPath(), directory->path());
}

void FileSystemBrowserTest::aDoubleClickEntersADirectory()
{
    doubleClick(QStringLiteral("designs"));
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), Names({QStringLiteral("inner.ksb")}), patience);
    QCOMPARE(getSelected(), QStringList());
    QCOMPARE(browser->findChild<QLineEdit*>()->text(), getFullPath(QStringLiteral("designs")));
}

void FileSystemBrowserTest::theSelectionStaysBehindWhenADirectoryIsEntered()
{
    makeFile(QStringLiteral("designs/blinky.ksb"));
    click(QStringLiteral("blinky.ksb"));
    browser->open(QStringLiteral("designs"));
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 2, patience);
    QCOMPARE(getSelected(), QStringList());
}

void FileSystemBrowserTest::aDoubleClickOnAFileStaysHere()
{
    doubleClick(QStringLiteral("blinky.ksb"));
    QCoreApplication::processEvents();
    QCOMPARE(browser->getPath(), directory->path());
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("blinky.ksb"))));
}

void FileSystemBrowserTest::returnEntersADirectory()
{
    tree->setCurrentIndex(find(QStringLiteral("designs")));
    QTest::keyClick(tree, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
}

void FileSystemBrowserTest::backspaceAndTheButtonGoToTheParent()
{
    browser->open(getFullPath(QStringLiteral("designs")));
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTest::keyClick(tree, Qt::Key_Backspace);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), directory->path(), patience);
    getButton(QStringLiteral("To the parent directory"))->click();
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), QFileInfo(directory->path()).absolutePath(),
                              patience);
}

void FileSystemBrowserTest::theParentShowsWhereOneCameFrom()
{
    browser->open(getFullPath(QStringLiteral("designs")));
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTest::keyClick(tree, Qt::Key_Up, Qt::AltModifier);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), directory->path(), patience);
    QCOMPARE(tree->currentIndex().data().toString(), QStringLiteral("designs"));
    QCOMPARE(getSelected(), QStringList());
}

void FileSystemBrowserTest::theHomeButtonGoesHome()
{
    getButton(QStringLiteral("To the home directory"))->click();
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), QDir::homePath(), patience);
}

void FileSystemBrowserTest::aTypedDirectoryIsEntered_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("relative") << QStringLiteral("designs");
    QTest::newRow("with a slash") << QStringLiteral("designs/");
    QTest::newRow("with blanks around") << QStringLiteral("  designs ");
    QTest::newRow("absolute") << QStringLiteral("%1/designs");
    QTest::newRow("with detours") << QStringLiteral("%1/./designs/../designs");
}

void FileSystemBrowserTest::aTypedDirectoryIsEntered()
{
    QFETCH(QString, typed);
    type(typed.contains(QLatin1String("%1")) ? typed.arg(directory->path()) : typed);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
}

void FileSystemBrowserTest::aTypedFileIsChosen()
{
    type(getFullPath(QStringLiteral("designs/inner.ksb")));
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(
        getSelected(), QStringList(getFullPath(QStringLiteral("designs/inner.ksb"))), patience);
}

void FileSystemBrowserTest::openHalfRead(
    void (Zandu::FileSystemBrowser::*open)(const QString& path))
{
    makeMount();
    isMountStill = true;
    (browser.get()->*open)(getFullPath(QStringLiteral("mounted/late.ksb")));
    QObject* reading = nullptr;
    for (QObject* const child : browser->children()) {
        if (std::strcmp(child->metaObject()->className(), "Zandu::DirectoryWatch") == 0) {
            reading = child;
        }
    }
    DirectoryListing half;
    half.directory = getFullPath(QLatin1String(mount));
    half.chosen = QStringLiteral("late.ksb");
    half.entries.push_back({QStringLiteral("early.ksb"), false, 10, QDateTime::currentDateTime()});
    QVERIFY(QMetaObject::invokeMethod(reading, "listed", Q_ARG(Zandu::DirectoryListing, half)));
    QCOMPARE(getNames(), Names(QStringLiteral("early.ksb")));
}

void FileSystemBrowserTest::aTypedFileIsChosenWhenItIsListedLate()
{
    const auto release = qScopeGuard([] { isMountStill = false; });
    openHalfRead(&Zandu::FileSystemBrowser::open);
    isMountStill = false;
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 2, patience);
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("mounted/late.ksb"))));
    QCOMPARE(tree->selectionModel()->selectedRows().size(), 1);
}

void FileSystemBrowserTest::aSelectionByKeysReplacesWhatIsNotListedYet()
{
    const auto release = qScopeGuard([] { isMountStill = false; });
    openHalfRead(&Zandu::FileSystemBrowser::setSelectedFile);
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Space);
    const QStringList early(getFullPath(QStringLiteral("mounted/early.ksb")));
    QCOMPARE(getSelected(), early);
    isMountStill = false;
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 2, patience);
    QCOMPARE(getSelected(), early);
}

void FileSystemBrowserTest::aTypedPathThatIsNotThereIsRefused()
{
    type(QStringLiteral("nowhere"));
    QTRY_VERIFY_WITH_TIMEOUT(isSaid(QStringLiteral("There is no file or directory %1.")
                                        .arg(getFullPath(QStringLiteral("nowhere")))),
                             patience);
    QCOMPARE(browser->getPath(), directory->path());
    QCOMPARE(getNames().size(), 3);
}

void FileSystemBrowserTest::escapeBringsThePathBack()
{
    auto* field = browser->findChild<QLineEdit*>();
    field->setText(QStringLiteral("half a pa"));
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), directory->path());
}

void FileSystemBrowserTest::thePathFieldOffersWhatIsThere()
{
    auto* field = browser->findChild<QLineEdit*>();
    field->setFocus();
    field->clear();
    QTest::keyClicks(field, directory->path() + QStringLiteral("/"));
    QAbstractItemModel* offers = field->completer()->model();
    QTRY_COMPARE_WITH_TIMEOUT(offers->rowCount(), 3, patience);
    QCOMPARE(offers->index(0, 0).data().toString(), getFullPath(QStringLiteral("designs/")));
    QCOMPARE(offers->index(1, 0).data().toString(), getFullPath(QStringLiteral("blinky.ksb")));
    QTest::keyClicks(field, QStringLiteral("c"));
    QCOMPARE(field->completer()->completionCount(), 1);
    QCOMPARE(field->completer()->currentCompletion(), getFullPath(QStringLiteral("counter.ksb")));
}

void FileSystemBrowserTest::anUnreadableDirectorySaysSo()
{
    const QString path = getFullPath(QStringLiteral("designs"));
    ::chmod(QFile::encodeName(path).constData(), 0);
    {
        const NoRights nobody;
        browser->open(path);
        QTRY_VERIFY_WITH_TIMEOUT(
            isSaid(QStringLiteral("The directory %1 cannot be read: you have no right to read it.")
                       .arg(path)),
            patience);
    }
    ::chmod(QFile::encodeName(path).constData(), 0755);
    QCOMPARE(browser->getPath(), directory->path());
    QCOMPARE(getNames().size(), 3);
}

void FileSystemBrowserTest::anEmptyDirectorySaysSo()
{
    QVERIFY(QFile::remove(getFullPath(QStringLiteral("designs/inner.ksb"))));
    browser->open(getFullPath(QStringLiteral("designs")));
    QTRY_VERIFY_WITH_TIMEOUT(
        isSaid(QStringLiteral("Here is no directory, and no file that matches *.ksb.")), patience);
    QCOMPARE(browser->getPath(), getFullPath(QStringLiteral("designs")));
}

void FileSystemBrowserTest::aMissingStartDirectorySaysSo()
{
    browser = std::make_unique<Zandu::FileSystemBrowser>(
        QStringLiteral("/no/such/directory"), QDir::AllDirs | QDir::Files, QStringList(), nullptr);
    browser->show();
    QTRY_VERIFY_WITH_TIMEOUT(
        isSaid(QStringLiteral("There is no file or directory /no/such/directory.")), patience);
    QCOMPARE(browser->getPath(), QStringLiteral("/no/such/directory"));
    QVERIFY(browser->getSelectedItems().isEmpty());
}

void FileSystemBrowserTest::aDirectoryThatIsRemovedSaysSoAndComesBack()
{
    const QString path = getFullPath(QStringLiteral("designs"));
    browser->open(path);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), path, patience);
    QVERIFY(QDir(path).removeRecursively());
    QTRY_VERIFY_WITH_TIMEOUT(isSaid(QStringLiteral("There is no file or directory %1.").arg(path)),
                             patience);
    QVERIFY(getNames().isEmpty());
    QVERIFY(QDir().mkdir(path));
    makeFile(QStringLiteral("designs/again.ksb"));
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), Names({QStringLiteral("again.ksb")}), patience);
    QVERIFY(!isSaid(QStringLiteral("There is no file or directory %1.").arg(path)));
}

void FileSystemBrowserTest::newFilesAppear()
{
    makeFile(QStringLiteral("aaa.ksb"));
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(QLatin1String("aaa.ksb")), patience);
    QCOMPARE(getNames().size(), 4);
}

void FileSystemBrowserTest::newFilesAppearWhileItIsHidden()
{
    browser->hide();
    makeFile(QStringLiteral("aaa.ksb"));
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(QLatin1String("aaa.ksb")), patience);
}

void FileSystemBrowserTest::removedFilesDisappear()
{
    QVERIFY(QFile::remove(getFullPath(QStringLiteral("blinky.ksb"))));
    QTRY_VERIFY_WITH_TIMEOUT(!getNames().contains(QLatin1String("blinky.ksb")), patience);
}

void FileSystemBrowserTest::aChangedSizeIsShown()
{
    // More than once: the look at the disk is repeated.
    for (const int size : {5020, 10020}) {
        QFile file(getFullPath(QStringLiteral("counter.ksb")));
        QVERIFY(file.open(QIODevice::Append));
        file.write(QByteArray(5000, 'x'));
        file.close();
        QTRY_COMPARE_WITH_TIMEOUT(find(QStringLiteral("counter.ksb"), 1).data().toString(),
                                  QLocale().formattedDataSize(size, 1), patience);
    }
}

void FileSystemBrowserTest::theSelectionOutlivesAChangeOfTheDirectory()
{
    click(QStringLiteral("counter.ksb"));
    makeFile(QStringLiteral("aaa.ksb"));
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 4, patience);
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("counter.ksb"))));
    QCOMPARE(tree->currentIndex().data().toString(), QStringLiteral("counter.ksb"));
}

void FileSystemBrowserTest::theSelectionGoesWithItsFile()
{
    click(QStringLiteral("counter.ksb"));
    QVERIFY(QFile::remove(getFullPath(QStringLiteral("counter.ksb"))));
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 2, patience);
    QVERIFY(browser->getSelectedItems().isEmpty());
}

void FileSystemBrowserTest::sortsNamesAsAPersonDoes()
{
    for (const char* name : {"v10.ksb", "V9.ksb", "v1.ksb", "Zebra.ksb", "apple.ksb"}) {
        makeFile(QString::fromLatin1(name));
    }
    QTRY_COMPARE_WITH_TIMEOUT(
        getNames(),
        Names({QStringLiteral("designs"), QStringLiteral("apple.ksb"), QStringLiteral("blinky.ksb"),
               QStringLiteral("counter.ksb"), QStringLiteral("v1.ksb"), QStringLiteral("V9.ksb"),
               QStringLiteral("v10.ksb"), QStringLiteral("Zebra.ksb")}),
        patience);
}

void FileSystemBrowserTest::sortsBySizeAndDateWithDirectoriesFirst()
{
    QFile old(getFullPath(QStringLiteral("counter.ksb")));
    QVERIFY(old.open(QIODevice::ReadWrite));
    QVERIFY(old.setFileTime(QDateTime(QDate(2001, 2, 3), QTime(4, 5)),
                            QFileDevice::FileModificationTime));
    old.close();
    makeBrowser();
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), 3, patience);
    const Names small = {QStringLiteral("designs"), QStringLiteral("counter.ksb"),
                         QStringLiteral("blinky.ksb")};
    const Names large = {QStringLiteral("designs"), QStringLiteral("blinky.ksb"),
                         QStringLiteral("counter.ksb")};
    tree->header()->setSortIndicator(1, Qt::AscendingOrder);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), small, patience);
    tree->header()->setSortIndicator(1, Qt::DescendingOrder);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), large, patience);
    tree->header()->setSortIndicator(2, Qt::AscendingOrder);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), small, patience);
    tree->header()->setSortIndicator(0, Qt::DescendingOrder);
    tree->header()->setSortIndicator(2, Qt::DescendingOrder);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), large, patience);
}

void FileSystemBrowserTest::theKeysSortAndTurnTheOrderRound()
{
    const Names up = {QStringLiteral("designs"), QStringLiteral("blinky.ksb"),
                      QStringLiteral("counter.ksb")};
    const Names down = {QStringLiteral("designs"), QStringLiteral("counter.ksb"),
                        QStringLiteral("blinky.ksb")};
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_1, Qt::AltModifier);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), down, patience);
    QTest::keyClick(tree, Qt::Key_1, Qt::AltModifier);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), up, patience);
    QTest::keyClick(tree, Qt::Key_2, Qt::AltModifier);
    QCOMPARE(tree->header()->sortIndicatorSection(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(getNames(), down, patience);
    // From the path field as well.
    browser->findChild<QLineEdit*>()->setFocus();
    QTest::keyClick(browser->findChild<QLineEdit*>(), Qt::Key_3, Qt::AltModifier);
    QCOMPARE(tree->header()->sortIndicatorSection(), 2);
    QCOMPARE(tree->header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

void FileSystemBrowserTest::theContextMenuSorts()
{
    emit tree->customContextMenuRequested(QPoint(20, 20));
    const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 3);
    QTest::keyClick(menu.data(), Qt::Key_S);
    QTRY_VERIFY_WITH_TIMEOUT(!menu, patience);
    QCOMPARE(tree->header()->sortIndicatorSection(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(getNames().at(1), QStringLiteral("counter.ksb"), patience);
}

void FileSystemBrowserTest::theSelectionOutlivesSorting()
{
    click(QStringLiteral("counter.ksb"));
    tree->header()->setSortIndicator(0, Qt::DescendingOrder);
    QTRY_COMPARE_WITH_TIMEOUT(getNames().at(1), QStringLiteral("counter.ksb"), patience);
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("counter.ksb"))));
}

void FileSystemBrowserTest::typingFindsAnEntry()
{
    tree->setFocus();
    QTest::keyClicks(tree, QStringLiteral("cou"));
    QCOMPARE(tree->currentIndex().data().toString(), QStringLiteral("counter.ksb"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("counter.ksb"))));
}

void FileSystemBrowserTest::aFileIsChosenFromOutside()
{
    const QString path = getFullPath(QStringLiteral("designs/inner.ksb"));
    browser->setSelectedFile(path);
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), getFullPath(QStringLiteral("designs")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(tree->selectionModel()->selectedRows().size(), 1, patience);
    QCOMPARE(tree->selectionModel()->selectedRows().first().data().toString(),
             QStringLiteral("inner.ksb"));
    QCOMPARE(getSelected(), QStringList(path));
}

void FileSystemBrowserTest::aChosenFileCountsBeforeItIsListed()
{
    // The listing of the directory that it began with comes first: the other takes longer.
    for (int number = 0; number < 3000; ++number) {
        makeFile(QStringLiteral("designs/file_%1.ksb").arg(number), 0);
    }
    browser = std::make_unique<Zandu::FileSystemBrowser>(
        directory->path(), QDir::AllDirs | QDir::Files, QStringList(), nullptr);
    const QString path = getFullPath(QStringLiteral("designs/inner.ksb"));
    browser->setSelectedFile(path);
    QCOMPARE(getSelected(), QStringList(path));
    while (browser->getPath() == directory->path()) {
        QCOMPARE(getSelected(), QStringList(path));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCOMPARE(getSelected(), QStringList(path));
}

void FileSystemBrowserTest::aFileThatTheFiltersHideCanBeChosen()
{
    const QString path = getFullPath(QStringLiteral("notes.txt"));
    browser->setSelectedFile(path);
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(QLatin1String("notes.txt")), patience);
    QCOMPARE(getSelected(), QStringList(path));
    QVERIFY(!getNames().contains(QLatin1String("other.bbs")));
}

void FileSystemBrowserTest::aChosenFileThatIsNotThereIsGivenUp()
{
    const QString path = getFullPath(QStringLiteral("gone.ksb"));
    browser->setSelectedFile(path);
    QTRY_VERIFY_WITH_TIMEOUT(isSaid(QStringLiteral("There is no file or directory %1.").arg(path)),
                             patience);
    QVERIFY(browser->getSelectedItems().isEmpty());
    QCOMPARE(browser->getPath(), directory->path());
}

void FileSystemBrowserTest::aClickReplacesWhatWasChosenFromOutside()
{
    browser->setSelectedFile(getFullPath(QStringLiteral("notes.txt")));
    click(QStringLiteral("counter.ksb"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("counter.ksb"))));
    QTRY_VERIFY_WITH_TIMEOUT(getNames().contains(QLatin1String("notes.txt")), patience);
    click(QStringLiteral("blinky.ksb"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("blinky.ksb"))));
}

void FileSystemBrowserTest::aLargeDirectoryLeavesTheWindowLive()
{
    constexpr int count = 50000;
    for (int number = 0; number < count; ++number) {
        makeFile(QStringLiteral("designs/file_%1.ksb").arg(number), 0);
    }
    int turns = 0;
    QTimer others;
    connect(&others, &QTimer::timeout, this,
            [&] { turns += browser->getPath() == directory->path() ? 1 : 0; });
    others.start(0);
    browser->open(getFullPath(QStringLiteral("designs")));
    QCOMPARE(getNames().size(), 3);
    QTRY_COMPARE_WITH_TIMEOUT(getNames().size(), count + 1, 60000);
    QVERIFY(turns > 3);
    QCOMPARE(getNames().first(), QStringLiteral("file_0.ksb"));
    QCOMPARE(getNames().at(count - 1), QStringLiteral("file_%1.ksb").arg(count - 1));
}

void FileSystemBrowserTest::aDirectoryThatDoesNotAnswerLeavesTheWindowLive()
{
    const QString path = getFullPath(QString::fromLatin1(mount));
    QVERIFY(QDir().mkdir(path));
    makeFile(QStringLiteral("mounted/far.ksb"));
    isMountStill = true;
    const auto answer = qScopeGuard([] { isMountStill = false; });
    browser->open(path);
    QTRY_VERIFY_WITH_TIMEOUT(isSaid(QStringLiteral("Opening %1 takes a while.").arg(path)),
                             patience);
    // What is shown goes on to be of use.
    QCOMPARE(browser->getPath(), directory->path());
    click(QStringLiteral("blinky.ksb"));
    QCOMPARE(getSelected(), QStringList(getFullPath(QStringLiteral("blinky.ksb"))));
    isMountStill = false;
    QTRY_COMPARE_WITH_TIMEOUT(browser->getPath(), path, patience);
    QCOMPARE(getNames(), QStringList(QStringLiteral("far.ksb")));
}

void FileSystemBrowserTest::mayBeDestroyedWhileItReads()
{
    for (int round = 0; round < 50; ++round) {
        makeBrowser();
        browser->open(QStringLiteral("designs"));
        browser->open(QStringLiteral("/usr/lib"));
        browser.reset();
    }
    QCoreApplication::processEvents();
}

void FileSystemBrowserTest::isFoundByItsClass()
{
    QWidget* widget = browser.get();
    QVERIFY(dynamic_cast<Zandu::FileSystemBrowser*>(widget) != nullptr);
    QVERIFY(dynamic_cast<Zandu::FileSystemBrowser*>(static_cast<QWidget*>(tree)) == nullptr);
}

void FileSystemBrowserTest::everyControlHasAnAccessibleName()
{
    int controls = 0;
    for (QWidget* child : browser->findChildren<QWidget*>()) {
        const bool control = qobject_cast<QAbstractButton*>(child) != nullptr ||
                             qobject_cast<QLineEdit*>(child) != nullptr || child == tree;
        if (control) {
            const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(child);
            QVERIFY(face != nullptr && !face->text(QAccessible::Name).isEmpty());
            ++controls;
        }
    }
    QVERIFY(controls >= 4);
}

QTEST_MAIN(FileSystemBrowserTest)

#include "tst_file_system_browser.moc"

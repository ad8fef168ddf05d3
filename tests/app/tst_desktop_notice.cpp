// Notifications of the desktop, on a bus of its session that only this program uses.

#include "app/ActivityIndicator.h"
#include "app/DesktopNotice.h"
#include "app/SessionBus.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/PrivateBus.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/KSBaseHandler.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDialog>
#include <QStatusBar>

#include <cstdlib>

using Kestoboard::ActivityIndicator;
using Test::Bench;
using Test::Panel;

namespace
{

const char service[] = "org.freedesktop.Notifications";
const int longestWait = 60'000;
const char path[] = "/org/freedesktop/Notifications";

struct Notice {
    QString application;
    uint replaced = 0;
    QString icon;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int time = 0;
};

} // namespace

/// The part of a desktop that shows notifications. It lives on the thread of the panel: whoever
/// waited for its answer there would never get it.
class Desktop : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit Desktop(const QStringList& abilities = {"body"})
        : capabilities(abilities)
        , bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                            "desktop"))
    {
        bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
        bus.registerService(service);
    }
    ~Desktop() override
    {
        bus.unregisterService(service);
        QDBusConnection::disconnectFromBus("desktop");
    }

    const QVector<Notice>& getNotices() const { return notices; }

    /// From now on questions are left unanswered until `answer`.
    void hold() { isHolding = true; }
    int countHeld() const { return held.size(); }
    void answer()
    {
        isHolding = false;
        for (const QDBusMessage& question : qAsConst(held)) {
            bus.send(question.createReply(capabilities));
        }
        held.clear();
    }

public slots:
    QStringList GetCapabilities()
    {
        if (isHolding) {
            setDelayedReply(true);
            held += message();
        }
        return capabilities;
    }
    uint Notify(const QString& application, uint replaced, const QString& icon,
                const QString& summary, const QString& body, const QStringList& actions,
                const QVariantMap& hints, int time)
    {
        notices += {application, replaced, icon, summary, body, actions, hints, time};
        return static_cast<uint>(notices.size());
    }

private:
    const QStringList capabilities;
    QVector<Notice> notices;
    QVector<QDBusMessage> held;
    bool isHolding = false;
    QDBusConnection bus;
};

class TestDesktopNotice : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aSentenceIsShownUnderTheNameOfThePanel_data();
    void aSentenceIsShownUnderTheNameOfThePanel();
    void theWindowThatThePersonIsAtNeedsNone();
    void nobodyIsWaitedFor();
    void withoutSomebodyToShowItNothingHappens();
    void withoutABusNothingHappens();
    void aWindowThatGoesMeanwhileHasNothingShown();
    void aLongTransferInTheBackgroundIsTold_data();
    void aLongTransferInTheBackgroundIsTold();

private:
    /// Whether these sentences have been shown by now, and no others: one more is, after whatever
    /// is on its way.
    bool isShown(const QStringList& sentences);
    void bringToFront(QWidget* window);

    QScopedPointer<Desktop> desktop;
    QScopedPointer<QWidget> front;
    QScopedPointer<QWidget> back;
};

void TestDesktopNotice::init()
{
    desktop.reset(new Desktop);
    back.reset(new QWidget);
    front.reset(new QWidget);
    back->show();
    bringToFront(front.data());
}

void TestDesktopNotice::cleanup()
{
    front.reset();
    back.reset();
    desktop.reset();
}

void TestDesktopNotice::bringToFront(QWidget* window)
{
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window, longestWait));
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window, longestWait));
}

bool TestDesktopNotice::isShown(const QStringList& sentences)
{
    QWidget other;
    Kestoboard::notify(&other, "the last");
    QStringList shown;
    const bool isSettled = QTest::qWaitFor(
        [&] {
            shown.clear();
            for (const Notice& notice : desktop->getNotices()) {
                shown += notice.body;
            }
            return shown.endsWith("the last");
        },
        longestWait);
    if (!isSettled || shown != sentences + QStringList("the last")) {
        qWarning() << "shown:" << shown;
        return false;
    }
    return true;
}

void TestDesktopNotice::aSentenceIsShownUnderTheNameOfThePanel_data()
{
    QTest::addColumn<QStringList>("abilities");
    QTest::addColumn<QString>("body");
    QTest::newRow("with markup") << QStringList{"actions", "body", "body-markup"}
                                 << "&quot;load &lt;b&gt;&amp; C:\\new\\x1b&quot; – è";
    QTest::newRow("without") << QStringList{"body"} << "\"load <b>& C:\\new\\x1b\" – è";
}

void TestDesktopNotice::aSentenceIsShownUnderTheNameOfThePanel()
{
    QFETCH(QStringList, abilities);
    desktop.reset();
    desktop.reset(new Desktop(abilities));
    QGuiApplication::setDesktopFileName("kestoboard");
    Kestoboard::notify(back.data(), "\"load <b>& C:\\new\x1b\" – è");
    QTRY_COMPARE(desktop->getNotices().size(), 1);
    const Notice notice = desktop->getNotices().first();
    QCOMPARE(notice.application, QString("Kestoboard"));
    QCOMPARE(notice.replaced, 0U);
    QCOMPARE(notice.icon, QString("kestoboard"));
    QCOMPARE(notice.summary, QString("Kestoboard"));
    QTEST(notice.body, "body");
    QCOMPARE(notice.actions, QStringList());
    QCOMPARE(notice.hints, (QVariantMap{{"desktop-entry", "kestoboard"}}));
    QCOMPARE(notice.time, -1);
}

void TestDesktopNotice::theWindowThatThePersonIsAtNeedsNone()
{
    Kestoboard::notify(front.data(), "in sight");
    Kestoboard::notify(back.data(), "behind");
    QDialog dialog(front.data());
    bringToFront(&dialog);
    Kestoboard::notify(front.data(), "behind a dialog of its own");
    QVERIFY(isShown({"behind"}));
}

void TestDesktopNotice::nobodyIsWaitedFor()
{
    desktop->hold();
    Kestoboard::notify(back.data(), "later");
    QTRY_COMPARE(desktop->countHeld(), 1);
    QVERIFY(desktop->getNotices().isEmpty());
    desktop->answer();
    QVERIFY(isShown({"later"}));
}

void TestDesktopNotice::withoutSomebodyToShowItNothingHappens()
{
    desktop.reset();
    Kestoboard::notify(back.data(), "to nobody");
    // The bus has seen that by the time it answers this.
    QVERIFY(Kestoboard::getSessionBus().interface()->isServiceRegistered("org.freedesktop.DBus"));
    desktop.reset(new Desktop);
    QVERIFY(isShown({}));
}

void TestDesktopNotice::withoutABusNothingHappens()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    Kestoboard::notify(back.data(), "without a bus");
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    QVERIFY(isShown({}));
}

void TestDesktopNotice::aWindowThatGoesMeanwhileHasNothingShown()
{
    desktop->hold();
    Kestoboard::notify(back.data(), "of a window that goes");
    QTRY_COMPARE(desktop->countHeld(), 1);
    back.reset();
    desktop->answer();
    QVERIFY(isShown({}));
}

void TestDesktopNotice::aLongTransferInTheBackgroundIsTold_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("isInFront");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("ten seconds") << "chip bitstream load x.ksb" << 10'000 << false
                                 << QStringList(
                                        "\"chip bitstream load x.ksb\" succeeded after 10.0 s");
    QTest::newRow("a flash") << "board spi flash program x.ksb" << 83'000 << false
                             << QStringList(
                                    "\"board spi flash program x.ksb\" succeeded after 0:01:23");
    QTest::newRow("less") << "chip bitstream load x.ksb" << 9'999 << false << QStringList();
    QTest::newRow("in sight") << "chip bitstream load x.ksb" << 10'000 << true << QStringList();
    QTest::newRow("no transfer") << "board set force_bit on" << 10'000 << false << QStringList();
}

void TestDesktopNotice::aLongTransferInTheBackgroundIsTold()
{
    QFETCH(QString, command);
    QFETCH(int, milliseconds);
    QFETCH(bool, isInFront);
    QFETCH(QStringList, told);
    Bench bench;
    bench.writeFile("x.ksb", "bits");
    bench.setScenario(Bench::board("KS-Dev A", "selected = true") + bench.hold(command));
    const Test::DebugMode mode(true);
    const Panel panel;
    qint64 now = 1000;
    auto* const indicator =
        new ActivityIndicator(panel.getEngine(), panel.getWindow(), [&now] { return now; });
    panel.getWindow()->statusBar()->addWidget(indicator);
    bringToFront(panel.getWindow());
    if (!isInFront) {
        bringToFront(front.data());
    }
    // It runs when the tool has it.
    Test::when(
        panel.getWindow(), [&] { return bench.count(command) == 1; },
        [&] {
            now += milliseconds;
            bench.release();
        });
    panel.getEngine()->sendCommand(command.toStdString());
    QTRY_VERIFY2(indicator->getText().startsWith(QString("\"%1\" ").arg(command)),
                 qPrintable(indicator->getText()));
    QVERIFY(isShown(told));
}

int main(int argc, char** argv)
{
    Test::TestApplication application(argc, argv);
    const Test::PrivateBus bus;
    if (!bus.isThere()) {
        return EXIT_FAILURE;
    }
    TestDesktopNotice test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_desktop_notice.moc"

// Light or dark as the desktop is, on a bus of the desktop's session that only this program uses.

#include "app/SchemeChoice.h"

#include "app/LastWordsDialog.h"
#include "app/Shutdown.h"
#include "support/PrivateBus.h"
#include "support/TestMain.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMessageBox>
#include <QSettings>
#include <QStyleFactory>
#include <QWidget>

#include <cstdlib>

using Kestoboard::DesktopScheme;
using Kestoboard::SchemeChoice;
using Scheme = Orvex::Theme::Scheme;

Q_DECLARE_METATYPE(Scheme)

namespace
{

const char service[] = "org.freedesktop.portal.Desktop";
const char path[] = "/org/freedesktop/portal/desktop";
const char space[] = "org.freedesktop.appearance";
const char key[] = "color-scheme";
const int patience = 60'000;

/// The palette that a desktop gives to a program.
QPalette getPalette(Scheme scheme)
{
    QPalette palette(Qt::lightGray);
    if (scheme == Scheme::Dark) {
        palette.setColor(QPalette::Window, Qt::black);
        palette.setColor(QPalette::WindowText, Qt::white);
    }
    return palette;
}

} // namespace

/// Hears what the portal tells, after all others.
class Listener : public QObject
{
    Q_OBJECT

public:
    int marks = 0;

public slots:
    void hear(const QString& settingSpace, const QString& /*settingKey*/,
              const QDBusVariant& /*value*/)
    {
        marks += settingSpace == "test" ? 1 : 0;
    }
};

/// The part of a desktop that knows the settings of the person.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit Portal(const QVariant& first)
        : value(first)
        , bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                            "portal"))
    {
        bus.registerObject(path, this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(service);
        QDBusConnection::sessionBus().connect(service, path, "org.freedesktop.portal.Settings",
                                              "SettingChanged", &listener,
                                              SLOT(hear(QString, QString, QDBusVariant)));
    }
    ~Portal() override
    {
        bus.unregisterService(service);
        QDBusConnection::disconnectFromBus("portal");
    }

    void set(const QVariant& newValue)
    {
        value = newValue;
        tell(space, key, value);
    }
    void tell(const QString& settingSpace, const QString& settingKey, const QVariant& newValue)
    {
        emit SettingChanged(settingSpace, settingKey, QDBusVariant(newValue));
    }
    /// Returns when all that was told before, answers included, has been heard.
    bool settle()
    {
        const int heard = listener.marks;
        tell("test", "mark", 0U);
        return QTest::qWaitFor([&] { return listener.marks > heard; }, patience);
    }
    bool waitForQuestions(int count)
    {
        return QTest::qWaitFor([&] { return questions >= count; }, patience) && settle();
    }

public slots:
    QDBusVariant Read(const QString& wantedSpace, const QString& wantedKey)
    {
        ++questions;
        const bool isKnown = wantedSpace == space && wantedKey == key;
        // As portals do: wrapped twice.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(isKnown ? value : QVariant(7U))));
    }

signals:
    void SettingChanged(const QString& settingSpace, const QString& settingKey,
                        const QDBusVariant& newValue);

private:
    QVariant value;
    int questions = 0;
    QDBusConnection bus;
    Listener listener;
};

class TestSchemeChoice : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theDesktopsPreferenceIsAskedFor_data();
    void theDesktopsPreferenceIsAskedFor();
    void aChangeOfTheDesktopIsFollowed_data();
    void aChangeOfTheDesktopIsFollowed();
    void aChangeBeforeTheFirstWindowIsSeenInIt();
    void aSchemeThatThePersonChoseStays();
    void otherSettingsAreNotMistakenForIt();
    void aPortalThatComesLaterIsHeard();
    void theDesktopsPaletteIsFollowed();
    void aForeignPaletteDoesNotStay_data();
    void aForeignPaletteDoesNotStay();
    void theFocusStaysWhereItIs();
    void withoutABusThePaletteCounts();

private:
    /// Whether the panel shows this scheme, and only this.
    static bool isShown(Scheme scheme);
};

void TestSchemeChoice::init()
{
    QSettings().clear();
    qApp->setStyleSheet(QString());
    QApplication::setPalette(getPalette(Scheme::Light));
    Orvex::theme->setScheme(Scheme::Light);
}

bool TestSchemeChoice::isShown(Scheme scheme)
{
    return Orvex::theme->getScheme() == scheme &&
           QApplication::palette().color(QPalette::Window) == Orvex::theme->getColor("window") &&
           qApp->styleSheet() == Orvex::theme->getStyleSheet();
}

void TestSchemeChoice::theDesktopsPreferenceIsAskedFor_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Scheme>("palette");
    QTest::addColumn<Scheme>("scheme");
    QTest::newRow("dark") << QVariant(1U) << Scheme::Light << Scheme::Dark;
    QTest::newRow("light") << QVariant(2U) << Scheme::Dark << Scheme::Light;
    QTest::newRow("none, light") << QVariant(0U) << Scheme::Light << Scheme::Light;
    QTest::newRow("none, dark") << QVariant(0U) << Scheme::Dark << Scheme::Dark;
    QTest::newRow("nonsense") << QVariant("purple") << Scheme::Dark << Scheme::Dark;
}

void TestSchemeChoice::theDesktopsPreferenceIsAskedFor()
{
    QFETCH(QVariant, value);
    QFETCH(Scheme, palette);
    QFETCH(Scheme, scheme);
    Portal portal(value);
    QApplication::setPalette(getPalette(palette));
    SchemeChoice schemes;
    schemes.apply();
    QVERIFY(isShown(palette));
    QVERIFY(portal.waitForQuestions(1));
    QVERIFY(isShown(scheme));
}

void TestSchemeChoice::aChangeOfTheDesktopIsFollowed_data()
{
    QTest::addColumn<QVariant>("first");
    QTest::addColumn<QVariant>("second");
    QTest::addColumn<Scheme>("scheme");
    QTest::newRow("to dark") << QVariant(2U) << QVariant(1U) << Scheme::Dark;
    QTest::newRow("to light") << QVariant(1U) << QVariant(2U) << Scheme::Light;
    QTest::newRow("to none") << QVariant(1U) << QVariant(0U) << Scheme::Light;
    QTest::newRow("to a value of later") << QVariant(1U) << QVariant(3U) << Scheme::Light;
    QTest::newRow("to nonsense") << QVariant(1U) << QVariant("purple") << Scheme::Light;
}

void TestSchemeChoice::aChangeOfTheDesktopIsFollowed()
{
    QFETCH(QVariant, first);
    QFETCH(QVariant, second);
    QFETCH(Scheme, scheme);
    Portal portal(first);
    SchemeChoice schemes;
    schemes.apply();
    QVERIFY(portal.waitForQuestions(1));
    QVERIFY(isShown(first == 1U ? Scheme::Dark : Scheme::Light));
    portal.set(second);
    QVERIFY(portal.settle());
    QVERIFY(isShown(scheme));
}

void TestSchemeChoice::aChangeBeforeTheFirstWindowIsSeenInIt()
{
    Portal portal(0U);
    SchemeChoice schemes;
    schemes.prepare();
    QVERIFY(portal.waitForQuestions(1));
    portal.set(1U);
    QVERIFY(portal.settle());
    QCOMPARE(QApplication::palette().color(QPalette::Window), Orvex::theme->getColor("window"));
    QCOMPARE(Orvex::theme->getScheme(), Scheme::Dark);
    QVERIFY(qApp->styleSheet().isEmpty());
    QWidget window;
    window.show();
    QVERIFY(isShown(Scheme::Dark));
}

void TestSchemeChoice::aSchemeThatThePersonChoseStays()
{
    Portal portal(2U);
    SchemeChoice schemes;
    schemes.choose(SchemeChoice::Choice::Light);
    QVERIFY(portal.waitForQuestions(1));
    portal.set(1U);
    QVERIFY(portal.settle());
    QVERIFY(isShown(Scheme::Light));
    // What the desktop wants is known all the same.
    schemes.choose(SchemeChoice::Choice::System);
    QVERIFY(isShown(Scheme::Dark));
}

void TestSchemeChoice::otherSettingsAreNotMistakenForIt()
{
    Portal portal(1U);
    SchemeChoice schemes;
    schemes.apply();
    QVERIFY(portal.waitForQuestions(1));
    portal.tell(space, "accent-color", 2U);
    QVERIFY(portal.settle());
    QVERIFY(isShown(Scheme::Dark));
    portal.tell("org.gnome.desktop.interface", key, 2U);
    QVERIFY(portal.settle());
    QVERIFY(isShown(Scheme::Dark));
}

void TestSchemeChoice::aPortalThatComesLaterIsHeard()
{
    SchemeChoice schemes;
    schemes.apply();
    Portal portal(0U);
    portal.set(1U);
    QVERIFY(portal.settle());
    QVERIFY(isShown(Scheme::Dark));
}

void TestSchemeChoice::theDesktopsPaletteIsFollowed()
{
    Portal portal(0U);
    SchemeChoice schemes;
    schemes.apply();
    QVERIFY(portal.waitForQuestions(1));
    for (const Scheme scheme : {Scheme::Dark, Scheme::Light}) {
        // As the parts do that some desktops have in the toolkit.
        QApplication::setPalette(getPalette(scheme));
        QTRY_VERIFY(isShown(scheme));
    }
}

void TestSchemeChoice::aForeignPaletteDoesNotStay_data()
{
    QTest::addColumn<SchemeChoice::Choice>("choice");
    QTest::addColumn<QVariant>("preference");
    QTest::newRow("the person chose light") << SchemeChoice::Choice::Light << QVariant(0U);
    QTest::newRow("the desktop prefers light") << SchemeChoice::Choice::System << QVariant(2U);
}

void TestSchemeChoice::aForeignPaletteDoesNotStay()
{
    QFETCH(SchemeChoice::Choice, choice);
    QFETCH(QVariant, preference);
    Portal portal(preference);
    SchemeChoice schemes;
    schemes.choose(choice);
    QVERIFY(portal.waitForQuestions(1));
    QVERIFY(isShown(Scheme::Light));
    QApplication::setPalette(getPalette(Scheme::Dark));
    QVERIFY(!isShown(Scheme::Light));
    QTRY_VERIFY(isShown(Scheme::Light));
}

void TestSchemeChoice::theFocusStaysWhereItIs()
{
    SchemeChoice schemes;
    schemes.choose(SchemeChoice::Choice::Light);
    Kestoboard::LastWordsDialog dialog("the last line\n", "kept.log", [] { return true; });
    const QScopedPointer<QMessageBox> question(Kestoboard::Shutdown::makeQuestion(nullptr));
    for (QDialog* const shown : std::initializer_list<QDialog*>{&dialog, question.data()}) {
        shown->show();
        QVERIFY(QTest::qWaitForWindowActive(shown));
        const QString focused = shown->focusWidget()->objectName();
        schemes.choose(SchemeChoice::Choice::Dark);
        QCOMPARE(shown->focusWidget()->objectName(), focused);
        schemes.choose(SchemeChoice::Choice::Light);
        QCOMPARE(shown->focusWidget()->objectName(), focused);
        QVERIFY(focused == "startAgainButton" || focused == "stayButton");
    }
}

void TestSchemeChoice::withoutABusThePaletteCounts()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    QVERIFY(!Kestoboard::getSessionBus().isConnected());
    QApplication::setPalette(getPalette(Scheme::Dark));
    QCOMPARE(DesktopScheme().get(), Scheme::Dark);
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    QVERIFY(Kestoboard::getSessionBus().isConnected());
}

int main(int argc, char** argv)
{
    Test::TestApplication application(argc, argv);
    const Test::PrivateBus bus;
    if (!bus.isThere()) {
        return EXIT_FAILURE;
    }
    TestSchemeChoice test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scheme_choice.moc"

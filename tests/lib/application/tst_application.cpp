#include <application/Application.h>

#include <QTest>
#include <QTextDocument>

class ApplicationTest : public QObject
{
    Q_OBJECT

private slots:
    void thePageIndicesAreNotDisabledAtFirst();
    void theCopyrightIsOneLineOfPlainText();
    void theDetailedCopyrightIsRichText();
    void theCopyrightStaysWhereItIs();
};

void ApplicationTest::thePageIndicesAreNotDisabledAtFirst()
{
    QVERIFY(!Zandu::Application().leafIndexDisabled);
}

void ApplicationTest::theCopyrightIsOneLineOfPlainText()
{
    const Zandu::Application application;
    const QString& text = application.getCopyright(false);
    QVERIFY(text.startsWith(QStringLiteral("Kestoboard 1.0 ©")));
    QVERIFY(!text.contains(QLatin1Char('\n')));
    QVERIFY(!Qt::mightBeRichText(text));
}

void ApplicationTest::theDetailedCopyrightIsRichText()
{
    const Zandu::Application application;
    QVERIFY(Qt::mightBeRichText(application.getCopyright(true)));
    QVERIFY(application.getCopyright(true) != application.getCopyright(false));
}

void ApplicationTest::theCopyrightStaysWhereItIs()
{
    const Zandu::Application application;
    QCOMPARE(&application.getCopyright(false), &application.getCopyright(false));
}

QTEST_GUILESS_MAIN(ApplicationTest)

#include "tst_application.moc"

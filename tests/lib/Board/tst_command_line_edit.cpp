#include <Board/CommandLineEdit.h>

#include <QSignalSpy>
#include <QtTest>

/// The command field and its history.
class TestCommandLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyHistoryIgnoresTheKeys();
    void upWalksToTheFirstEntryAndStays();
    void downWalksBackToTheDraft_data();
    void downWalksBackToTheDraft();
    void downAtRestChangesNothing();
    void downWithOneEntryDoesNothing();
    void theSameCommandTwiceIsStoredOnce();
    void anOlderDuplicateIsStoredAgain();
    void blanksAreACommand();
    void clearingAnEmptyFieldStoresNothing();
    void aCommandSentWhileBrowsingLeavesTheDraftInTheHistory();
    void aCommandEqualToTheDraftKeepsTheBrowse();
    void otherKeysEditTheText();
    void returnIsAnnounced();
    void theKeysAreAccepted();
    void theClassHasOneSlot();

private:
    static void send(Board::CommandLineEdit* field, const QString& command)
    {
        field->setText(command);
        field->clear();
    }
    /// What each press of Up shows until nothing changes any more, newest first.
    static QStringList browse(Board::CommandLineEdit* field, int presses)
    {
        QStringList shown;
        for (int press = 0; press < presses; ++press) {
            QTest::keyClick(field, Qt::Key_Up);
            shown += field->text();
        }
        return shown;
    }
};

void TestCommandLineEdit::anEmptyHistoryIgnoresTheKeys()
{
    Board::CommandLineEdit field(nullptr);
    field.setText("typed");
    QTest::keyClick(&field, Qt::Key_Up);
    QCOMPARE(field.text(), QString("typed"));
    QTest::keyClick(&field, Qt::Key_Down);
    QCOMPARE(field.text(), QString("typed"));
    // No draft was stored: the first command is the only entry.
    send(&field, "a");
    QCOMPARE(browse(&field, 3), QStringList({"a", "a", "a"}));
}

void TestCommandLineEdit::upWalksToTheFirstEntryAndStays()
{
    Board::CommandLineEdit field(nullptr);
    for (const char* const command : {"a", "b", "c"}) {
        send(&field, command);
    }
    QCOMPARE(browse(&field, 5), QStringList({"c", "b", "a", "a", "a"}));
}

void TestCommandLineEdit::downWalksBackToTheDraft_data()
{
    QTest::addColumn<QString>("draft");
    QTest::newRow("some text") << "half a command";
    QTest::newRow("empty") << "";
    QTest::newRow("like an entry") << "b";
}

void TestCommandLineEdit::downWalksBackToTheDraft()
{
    QFETCH(QString, draft);
    Board::CommandLineEdit field(nullptr);
    for (const char* const command : {"a", "b"}) {
        send(&field, command);
    }
    for (int round = 0; round < 3; ++round) {
        field.setText(draft);
        QCOMPARE(browse(&field, 3), QStringList({"b", "a", "a"}));
        QTest::keyClick(&field, Qt::Key_Down);
        QCOMPARE(field.text(), QString("b"));
        QTest::keyClick(&field, Qt::Key_Down);
        QCOMPARE(field.text(), draft);
        // At rest again, and the draft is no entry.
        QTest::keyClick(&field, Qt::Key_Down);
        QCOMPARE(field.text(), draft);
    }
}

void TestCommandLineEdit::downAtRestChangesNothing()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "a");
    send(&field, "b");
    field.setText("typed");
    QTest::keyClick(&field, Qt::Key_Down);
    QCOMPARE(field.text(), QString("typed"));
}

void TestCommandLineEdit::downWithOneEntryDoesNothing()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "a");
    field.setText("typed");
    QTest::keyClick(&field, Qt::Key_Down);
    QCOMPARE(field.text(), QString("typed"));
}

void TestCommandLineEdit::theSameCommandTwiceIsStoredOnce()
{
    Board::CommandLineEdit field(nullptr);
    for (const char* const command : {"a", "b", "b", "b"}) {
        send(&field, command);
    }
    QCOMPARE(browse(&field, 3), QStringList({"b", "a", "a"}));
}

void TestCommandLineEdit::anOlderDuplicateIsStoredAgain()
{
    Board::CommandLineEdit field(nullptr);
    for (const char* const command : {"a", "b", "a"}) {
        send(&field, command);
    }
    QCOMPARE(browse(&field, 4), QStringList({"a", "b", "a", "a"}));
}

void TestCommandLineEdit::blanksAreACommand()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "  ");
    QCOMPARE(browse(&field, 1), QStringList({"  "}));
}

void TestCommandLineEdit::clearingAnEmptyFieldStoresNothing()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "a");
    send(&field, "");
    QCOMPARE(browse(&field, 2), QStringList({"a", "a"}));
}

void TestCommandLineEdit::aCommandSentWhileBrowsingLeavesTheDraftInTheHistory()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "a");
    send(&field, "b");
    QTest::keyClick(&field, Qt::Key_Up);
    QCOMPARE(field.text(), QString("b"));
    field.clear();
    QCOMPARE(field.text(), QString());
    // a, b, the empty draft, b
    QCOMPARE(browse(&field, 5), QStringList({"b", "", "b", "a", "a"}));
}

void TestCommandLineEdit::aCommandEqualToTheDraftKeepsTheBrowse()
{
    Board::CommandLineEdit field(nullptr);
    send(&field, "a");
    field.setText("a");
    QTest::keyClick(&field, Qt::Key_Up);
    QCOMPARE(field.text(), QString("a"));
    field.clear();
    QCOMPARE(field.text(), QString());
    QTest::keyClick(&field, Qt::Key_Down);
    QCOMPARE(field.text(), QString("a"));
    // The single entry, at rest.
    field.setText("typed");
    QTest::keyClick(&field, Qt::Key_Down);
    QCOMPARE(field.text(), QString("typed"));
    QCOMPARE(browse(&field, 2), QStringList({"a", "a"}));
}

void TestCommandLineEdit::otherKeysEditTheText()
{
    Board::CommandLineEdit field(nullptr);
    QTest::keyClicks(&field, "abc");
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClick(&field, Qt::Key_Escape);
    QCOMPARE(field.text(), QString("ab"));
}

void TestCommandLineEdit::returnIsAnnounced()
{
    Board::CommandLineEdit field(nullptr);
    QSignalSpy pressed(&field, &QLineEdit::returnPressed);
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(pressed.count(), 1);
}

void TestCommandLineEdit::theKeysAreAccepted()
{
    Board::CommandLineEdit field(nullptr);
    for (const int key : {Qt::Key_Up, Qt::Key_Down}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&field, &event);
        QVERIFY(event.isAccepted());
    }
}

void TestCommandLineEdit::theClassHasOneSlot()
{
    const QMetaObject& meta = Board::CommandLineEdit::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("clear()"));
    QCOMPARE(meta.method(meta.methodOffset()).access(), QMetaMethod::Public);
}

QTEST_MAIN(TestCommandLineEdit)

#include "tst_command_line_edit.moc"

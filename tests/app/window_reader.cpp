// A plugin of the toolkit: somebody in front of the panel's own process, and of every process that
// it starts. It keeps a diary in the directory KESTOBOARD_TEST_DIARY: each process that has windows
// notes its arguments there, and the window that stays when the panel has ended is read, copied,
// and asked to start the panel again as soon as the file "again" is there, or closed at the file
// "close". Asked for another directory to work in, it chooses "elsewhere" beside the one in use.

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGenericPlugin>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTimer>
#include <QtTest>

namespace
{

const int glance = 10;

class WindowReader : public QObject
{
    Q_OBJECT

public:
    WindowReader()
        : diary(qEnvironmentVariable("KESTOBOARD_TEST_DIARY"))
    {
        note(QStringLiteral("process-%1").arg(QCoreApplication::applicationPid()),
             QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')));
        connect(&ticker, &QTimer::timeout, this, &WindowReader::look);
        ticker.start(glance);
    }

private:
    /// A note is there as a whole or not at all.
    void note(const QString& name, const QString& text) const
    {
        QSaveFile file(diary.filePath(name));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text.toUtf8());
            file.commit();
        }
    }

    template <class Dialog>
    static Dialog* findOpen(const QString& name = {})
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            auto* const dialog = qobject_cast<Dialog*>(widget);
            if (dialog != nullptr && dialog->isVisible() &&
                (name.isEmpty() || dialog->objectName() == name)) {
                return dialog;
            }
        }
        return nullptr;
    }

    /// Chooses the directory "elsewhere" beside the one in use.
    void chooseElsewhere()
    {
        if (auto* const chooser = findOpen<QFileDialog>()) {
            chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(QDir::cleanPath(QDir(QStringLiteral("../elsewhere")).absolutePath()));
            QMetaObject::invokeMethod(chooser, "accept", Qt::QueuedConnection);
        } else if (auto* const box = findOpen<QMessageBox>(QStringLiteral("directoryInUse"))) {
            QMetaObject::invokeMethod(box->defaultButton(), "click", Qt::QueuedConnection);
        }
    }

    void look()
    {
        QDialog* const dialog = findOpen<QDialog>(QStringLiteral("lastWords"));
        if (dialog == nullptr) {
            chooseElsewhere();
            return;
        }
        if (!isRead) {
            isRead = true;
            read(*dialog);
        } else if (diary.exists(QStringLiteral("again"))) {
            ticker.stop();
            press(dialog->findChild<QPushButton*>(QStringLiteral("startAgainButton")));
        } else if (diary.exists(QStringLiteral("close"))) {
            ticker.stop();
            press(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close));
        }
    }

    void read(const QDialog& dialog) const
    {
        QStringList texts(dialog.windowTitle());
        for (const QLabel* const label : dialog.findChildren<QLabel*>()) {
            texts += label->text();
        }
        texts += dialog.findChild<QPlainTextEdit*>()->toPlainText();
        press(dialog.findChild<QPushButton*>(QStringLiteral("copyButton")));
        note(QStringLiteral("read"), texts.join(QLatin1Char('\n')));
    }

    /// As with a mouse: where something else lies over the button, that is pressed.
    static void press(QWidget* button)
    {
        QWidget* const window = button->window();
        const QPoint place = button->mapTo(window, button->rect().center());
        QWidget* const target = window->childAt(place);
        QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(window, place));
    }

    const QDir diary;
    QTimer ticker;
    bool isRead = false;
};

class WindowReaderPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "window_reader.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*options*/) override
    {
        return new WindowReader;
    }
};

} // namespace

#include "window_reader.moc"

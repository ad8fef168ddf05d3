#include "app/StartFailure.h"

#include "app/Display.h"
#include "app/MessageBox.h"
#include "app/SimulatedTool.h"

#include <foundation/Encoding.h>
#include <foundation/Exception.h>
#include <foundation/PlainText.h>
#include <foundation/Theme.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include <cstdio>
#include <exception>
#include <memory>

namespace Kestoboard
{

namespace
{

const int boxIconSize = 48;

bool isToolMissing()
{
    return QStandardPaths::findExecutable(QStringLiteral("ksbase2_cli")).isEmpty();
}

bool isTranscriptWritable()
{
    const QFileInfo transcript(QStringLiteral("ksbase.log"));
    if (transcript.exists()) {
        return transcript.isFile() && transcript.isWritable();
    }
    return QFileInfo(QDir::currentPath()).isWritable();
}

StartFailure explain(const QString& message)
{
    if (isToolMissing()) {
        return StartFailure::getToolMissing();
    }
    if (!isTranscriptWritable() || message.contains(QLatin1String("ksbase.log"))) {
        return {StartFailure::tr("The transcript ksbase.log cannot be written in %1.")
                    .arg(QDir::toNativeSeparators(QDir::currentPath())),
                StartFailure::tr(
                    "Work in a directory that you may write to: name it with --directory."),
                false};
    }
    return {
        StartFailure::tr("The panel could not start: %1.").arg(message),
        StartFailure::tr("What the board tool said is in the transcript %1.")
            .arg(QDir::toNativeSeparators(QDir().absoluteFilePath(QStringLiteral("ksbase.log")))),
        false};
}

} // namespace

StartFailure StartFailure::fromCurrentException()
{
    try {
        throw;
    } catch (const Orvex::Exception& failure) {
        return explain(Orvex::getReadable(failure.getMessage()));
    } catch (const std::exception& failure) {
        return explain(QString::fromLocal8Bit(failure.what()));
    } catch (...) {
        return explain(tr("the reason is not known"));
    }
}

StartFailure::StartFailure(const QString& whatIsWrong, const QString& whatToDo,
                           bool isSimulationOffered)
    : sentence(whatIsWrong)
    , advice(whatToDo)
    , offersSimulation(isSimulationOffered)
{
}

StartFailure StartFailure::getToolMissing()
{
    return {tr("The board tool ksbase2_cli is not on the search path."),
            tr("Install the board tool, or add its directory to PATH. Without boards, the option "
               "--simulate shows the panel with simulated ones."),
            SimulatedTool::exists()};
}

StartFailure::Choice StartFailure::tell() const
{
    if (!hasDisplay()) {
        writeToStandardError(sentence + QLatin1Char('\n') + advice);
        return Choice::Quit;
    }
    const std::unique_ptr<QMessageBox> box(makeBox());
    box->exec();
    return box->buttonRole(box->clickedButton()) == QMessageBox::AcceptRole ? Choice::Simulate
                                                                            : Choice::Quit;
}

QMessageBox* StartFailure::makeBox() const
{
    auto* const box = new QMessageBox(QMessageBox::NoIcon, tr("Kestoboard cannot start"), {});
    setWords(box, sentence, advice);
    box->setIconPixmap(Orvex::theme->getIcon("error").pixmap(boxIconSize, boxIconSize));
    box->setObjectName(QStringLiteral("startFailure"));
    if (offersSimulation) {
        box->setDefaultButton(box->addButton(tr("Show simulated boards"), QMessageBox::AcceptRole));
    }
    box->addButton(tr("Quit"), QMessageBox::RejectRole);
    return box;
}

QByteArray getTerminalText(const QString& text)
{
    return QString::fromStdString(Orvex::getPrintable(text.toStdString())).toLocal8Bit();
}

void writeToStandardError(const QString& text)
{
    const QByteArray bytes = "kestoboard: " + getTerminalText(text) + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}

} // namespace Kestoboard

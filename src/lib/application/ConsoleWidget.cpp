#include <application/ConsoleWidget.h>

#include <application/ConsoleLines.h>

#include <foundation/Console.h>

#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace Zandu
{

ConsoleWidget::ConsoleWidget(QWidget* parent)
    : QWidget(parent)
{
    auto* text = new QPlainTextEdit(this);
    text->setReadOnly(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text);
    const auto show = [text](const Orvex::Message& message) {
        for (ConsoleLines lines(message); lines.hasNext();) {
            text->appendPlainText(lines.next().text);
        }
    };
    for (const Orvex::Message& message : Orvex::console->getRecentMessages()) {
        show(message);
    }
    connect(Orvex::console, &Orvex::Console::messageAdded, this, show);
}

} // namespace Zandu

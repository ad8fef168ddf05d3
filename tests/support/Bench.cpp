#include "support/Bench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace Test
{

namespace
{

const char scenarioVariable[] = "KESTOBOARD_SCENARIO";

void write(const QString& path, const QByteArray& content)
{
    // Renamed into place, so that the tool never reads half a file.
    const QString unfinished = path + QStringLiteral(".new");
    QFile file(unfinished);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
    file.close();
    QFile::remove(path);
    QFile::rename(unfinished, path);
}

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString quoted(const QString& text)
{
    QString escaped;
    for (const QChar character : text) {
        if (character == QLatin1Char('\n')) {
            escaped += QStringLiteral("\\n");
        } else if (character == QLatin1Char('"') || character == QLatin1Char('\\')) {
            escaped += QLatin1Char('\\') + QString(character);
        } else {
            escaped += character;
        }
    }
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

} // namespace

Bench::Bench()
    : formerCurrentPath(QDir::currentPath())
    , formerSearchPath(qgetenv("PATH"))
    , journalTaken(0)
{
    const QDir root(directory.path());
    root.mkdir(QStringLiteral("work"));
    root.mkdir(QStringLiteral("state"));
    QDir::setCurrent(root.filePath(QStringLiteral("work")));
    qputenv("PATH", QFile::encodeName(getToolDirectory()) + ':' + formerSearchPath);
    qputenv(scenarioVariable, QFile::encodeName(root.filePath(QStringLiteral("scenario.toml"))));
    setScenario({});
}

Bench::~Bench()
{
    QDir::setCurrent(formerCurrentPath);
    qputenv("PATH", formerSearchPath);
    qunsetenv(scenarioVariable);
    // The toolkit would leave a file whose name it cannot read.
    directory.setAutoRemove(false);
    std::error_code ignored;
    std::filesystem::remove_all(QFile::encodeName(directory.path()).toStdString(), ignored);
}

QString Bench::board(const QString& name, const QString& moreKeys)
{
    return QStringLiteral("[[board]]\nname = %1\n%2\n").arg(quoted(name), moreKeys);
}

QString Bench::fault(const QString& command, const QString& keys)
{
    return QStringLiteral("[[fault]]\ncommand = %1\n%2\n").arg(quoted(command), keys);
}

QString Bench::reply(const QString& command, const QString& text)
{
    return fault(command,
                 QStringLiteral("kind = \"reply\"\ntimes = 0\ntext = %1\n").arg(quoted(text)));
}

QString Bench::hold(const QString& command) const
{
    const QString file = QDir(directory.path()).filePath(QStringLiteral("released"));
    return fault(command,
                 QStringLiteral("kind = \"hold\"\ntimes = 0\nfile = %1\n").arg(quoted(file)));
}

void Bench::setScenario(const QString& text)
{
    const QDir root(directory.path());
    const QString head = QStringLiteral("journal = %1\nstate = %2\ntime_scale = 0.0\n")
                             .arg(quoted(root.filePath(QStringLiteral("journal"))),
                                  quoted(root.filePath(QStringLiteral("state"))));
    write(root.filePath(QStringLiteral("scenario.toml")), (head + text).toUtf8());
}

void Bench::release()
{
    write(QDir(directory.path()).filePath(QStringLiteral("released")), {});
}

void Bench::holdAgain()
{
    QFile::remove(QDir(directory.path()).filePath(QStringLiteral("released")));
}

QByteArray Bench::writeProgram(const QString& place, const QString& name, const QByteArray& script)
{
    const QDir root(directory.path());
    root.mkdir(place);
    const QString program = root.filePath(place + QLatin1Char('/') + name);
    write(program, script);
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFile::encodeName(root.filePath(place));
}

void Bench::setTool(const QByteArray& script)
{
    const QByteArray place =
        writeProgram(QStringLiteral("bin"), QStringLiteral("ksbase2_cli"), script);
    qputenv("PATH", place + ':' + formerSearchPath);
}

void Bench::setSearch(const QByteArray& script)
{
    const QByteArray place =
        writeProgram(QStringLiteral("search"), QStringLiteral("which"), script);
    qputenv("PATH", place + ':' + qgetenv("PATH"));
}

void Bench::removeTool()
{
    qputenv("PATH", formerSearchPath);
}

QByteArray Bench::getJournalBytes() const
{
    return read(QDir(directory.path()).filePath(QStringLiteral("journal")));
}

QStringList Bench::getJournal() const
{
    const QByteArray bytes = getJournalBytes();
    // With its size: a NUL is a byte like any other.
    QStringList lines = QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char('\n'));
    // Each line is ended by a line feed: what follows the last one is no line.
    lines.removeLast();
    return lines;
}

QStringList Bench::takeJournal()
{
    const QStringList lines = getJournal().mid(journalTaken);
    journalTaken += lines.size();
    return lines;
}

int Bench::count(const QString& command) const
{
    return getJournal().count(command);
}

QString Bench::getPath(const QString& name) const
{
    return QDir(directory.path()).filePath(QStringLiteral("work/") + name);
}

QString Bench::writeFile(const QString& name, const QByteArray& content) const
{
    write(getPath(name), content);
    return getPath(name);
}

QByteArray Bench::readFile(const QString& name) const
{
    return read(getPath(name));
}

QString Bench::getToolDirectory()
{
    return QFileInfo(QStringLiteral(KESTOBOARD_SIMULATOR)).path();
}

} // namespace Test

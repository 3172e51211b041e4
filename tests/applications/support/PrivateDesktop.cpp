// SPDX-License-Identifier: Apache-2.0
#include "applications/support/PrivateDesktop.h"

#include "Support/Freezing.h"
#include "applications/support/GnomeQuestions.h"
#include "applications/support/Kwin.h"
#include "applications/support/Screen.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr auto mark = "ORVANE_PRIVATE_DESKTOP";

QByteArray processFile(qint64 process, const char *name)
{
    QFile file(u"/proc/%1/%2"_s.arg(process).arg(QLatin1StringView(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QSet<qint64> processesWithWindows()
{
    QSet<qint64> processes;
    for (const ScreenWindow &window : Screen::windows()) {
        if (window.process > 0 && window.process != QCoreApplication::applicationPid())
            processes << window.process;
    }
    return processes;
}

} // namespace

bool PrivateDesktop::isHere()
{
    const QString folder = qEnvironmentVariable(mark);
    return !folder.isEmpty() && QDir::homePath().startsWith(folder);
}

void PrivateDesktop::settle()
{
    if (Screen::session() == Screen::Session::Plasma && !Kwin::permitThisProgram())
        qFatal("KWin doesn't permit this program");
    if (Screen::session() != Screen::Session::Gnome)
        return;
    GnomeQuestions::allowKeys();
    GnomeQuestions::presetPictures();
}

QString PrivateDesktop::home(const QString &relativePath)
{
    return relativePath.isEmpty() ? QDir::homePath() : QDir::home().filePath(relativePath);
}

void PrivateDesktop::write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

QByteArray PrivateDesktop::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PrivateDesktop::start(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (!process.startDetached())
        qFatal("%s cannot be started", qPrintable(program));
}

bool PrivateDesktop::open(const QString &program, const QStringList &arguments, const QString &className)
{
    start(program, arguments);
    const auto isActive = [&] { return Screen::activeClass().compare(className, Qt::CaseInsensitive) == 0; };
    return QTest::qWaitFor(isActive, patience);
}

bool PrivateDesktop::takesPictures()
{
    return Screen::session() != Screen::Session::Plasma;
}

QImage PrivateDesktop::picture()
{
    // Every part of the desktop sees the home folder.
    const QTemporaryDir folder(home(u".picture"_s));
    const QString file = folder.filePath(u"screen.png"_s);
    const QStringList tool = qEnvironmentVariable("ORVANE_DESKTOP_PICTURE").split(u' ');
    QProcess::execute(u"timeout"_s, QStringList{u"20"_s} + tool + QStringList{file});
    return QImage(file);
}

bool PrivateDesktop::clear()
{
    if (!isHere())
        return false;
    QSet<qint64> ended;
    const auto isClear = [&] {
        for (const qint64 process : processesWithWindows()) {
            ::kill(static_cast<pid_t>(process), SIGKILL);
            ended << process;
        }
        return Screen::windows().isEmpty() && std::ranges::none_of(ended, isRunning);
    };
    return QTest::qWaitFor(isClear, patience);
}

bool PrivateDesktop::freezeApplication(const QString &className)
{
    const QList<ScreenWindow> windows = Screen::windowsOf(className);
    return !windows.isEmpty() && Freezing::freeze(windows.first().process);
}

void PrivateDesktop::thawApplication(const QString &className)
{
    for (const ScreenWindow &window : Screen::windowsOf(className))
        ::kill(static_cast<pid_t>(window.process), SIGCONT);
}

// A zombie's command line is empty.
bool PrivateDesktop::isRunning(qint64 process)
{
    return !processFile(process, "cmdline").isEmpty();
}

QList<qint64> PrivateDesktop::processesWith(const QByteArray &partOfCommandLine)
{
    const QByteArray ours = QByteArray(mark) + '=' + qgetenv(mark);
    QList<qint64> found;
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const qint64 process = name.toLongLong();
        if (process > 0 && processFile(process, "cmdline").replace('\0', ' ').contains(partOfCommandLine) &&
            processFile(process, "environ").split('\0').contains(ours))
            found << process;
    }
    return found;
}

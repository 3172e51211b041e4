// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/LockerProcesses.h"

#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// As in /proc/PID/comm, which has at most 15 bytes.
const QSet<QByteArray> lockers{"swaylock", "swaylock-plugin", "gtklock", "waylock", "hyprlock"};

// Together they name the compositor.
constexpr std::array variables{"XDG_RUNTIME_DIR", "WAYLAND_DISPLAY"};

// Null if it can't be read.
QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QByteArray("") + file.readAll() : QByteArray();
}

// The real one, even if the program has the rights of another.
bool belongsToThisUser(const QString &process)
{
    static const QRegularExpression user(u"^Uid:\\t(\\d+)"_s, QRegularExpression::MultilineOption);
    const QString status = QString::fromUtf8(contentOf(process + u"/status"_s));
    return user.match(status).captured(1) == QString::number(::getuid());
}

// The environment of a program with the rights of another user is unreadable: then it counts. That of a
// program that starts or ends is empty.
bool mayBeOnThisCompositor(const QString &process)
{
    const QByteArray content = contentOf(process + u"/environ"_s);
    const QList<QByteArray> environment = content.split('\0');
    return content.isNull() || std::ranges::all_of(variables, [&environment](const char *name) {
               return environment.contains(QByteArray(name) + '=' + qgetenv(name));
           });
}

} // namespace

bool LockerProcesses::isAnyRunning()
{
    const QDir processes(u"/proc"_s);
    for (const QString &name : processes.entryList(QDir::Dirs)) {
        const QString process = processes.filePath(name);
        if (lockers.contains(contentOf(process + u"/comm"_s).trimmed()) && belongsToThisUser(process) &&
            isRunningProcess(name.toLongLong()) && mayBeOnThisCompositor(process))
            return true;
    }
    return false;
}

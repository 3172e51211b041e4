// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QMultiHash>

#include <algorithm>

#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

// The fields after the name in a file "stat": state, parent, …; empty if it doesn't exist.
QList<QByteArray> fieldsIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // "pid (name) state parent …"; the name may contain any characters, including brackets and blanks.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

QList<QByteArray> statusFields(qint64 process)
{
    return process > 0 ? fieldsIn(u"/proc/%1/stat"_s.arg(process)) : QList<QByteArray>();
}

// The file names of its program, of its first argument, and of the one after that.
QStringList namesOf(const QString &process)
{
    QStringList names{QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process)).section(u'/', -1)};
    QFile commandLine(u"/proc/%1/cmdline"_s.arg(process));
    if (commandLine.open(QIODevice::ReadOnly)) {
        for (const QByteArray &argument : commandLine.readAll().split('\0').mid(0, 2))
            names.append(QFile::decodeName(argument).section(u'/', -1));
    }
    return names;
}

} // namespace

bool isRunningProcess(qint64 process)
{
    const QByteArray state = statusFields(process).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

bool isBusyProcess(qint64 process)
{
    const QDir threads(u"/proc/%1/task"_s.arg(process));
    const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(names.cbegin(), names.cend(), [&threads](const QString &name) {
        const QByteArray state = fieldsIn(threads.filePath(name + u"/stat"_s)).value(0);
        return state == "R" || state == "D";
    });
}

bool isBusyApplication(qint64 process)
{
    QMultiHash<qint64, qint64> children; // by parent
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (const qint64 each = name.toLongLong())
            children.insert(parentProcess(each), each);
    }
    QList<qint64> family{process};
    for (qsizetype index = 0; index < family.size(); ++index) {
        if (isBusyProcess(family[index]))
            return true;
        family += children.values(family[index]);
    }
    return false;
}

qint64 peerProcess(qintptr socket)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    const int result = getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &credentials, &size);
    return result == 0 ? credentials.pid : 0;
}

QList<qint64> processesRunning(const QStringList &names)
{
    QList<qint64> found;
    const QStringList processes = QDir(u"/proc"_s).entryList({u"[1-9]*"_s}, QDir::Dirs);
    for (const QString &process : processes) {
        const QStringList own = namesOf(process);
        const auto isRun = [&own](const QString &name) {
            return !name.isEmpty() && own.contains(name, Qt::CaseInsensitive);
        };
        if (std::any_of(names.cbegin(), names.cend(), isRun))
            found.append(process.toLongLong());
    }
    return found;
}

qint64 parentProcess(qint64 process)
{
    return statusFields(process).value(1).toLongLong();
}

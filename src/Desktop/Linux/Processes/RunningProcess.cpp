// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

// The fields after the name: state, parent, …; empty if the process does not exist.
QList<QByteArray> statusFields(qint64 process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (process <= 0 || !file.open(QIODevice::ReadOnly))
        return {};
    // "pid (name) state parent …"; the name may contain any characters, including brackets and blanks.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

} // namespace

bool isRunningProcess(qint64 process)
{
    const QByteArray state = statusFields(process).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

qint64 peerProcess(qintptr socket)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    const int result = getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &credentials, &size);
    return result == 0 ? credentials.pid : 0;
}

qint64 parentProcess(qint64 process)
{
    return statusFields(process).value(1).toLongLong();
}

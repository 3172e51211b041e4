// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QByteArray>
#include <QFile>

using namespace Qt::StringLiterals;

bool isRunningProcess(qint64 process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (process <= 0 || !file.open(QIODevice::ReadOnly))
        return false;
    // "pid (name) state parent …"; the name may contain any characters, including brackets and blanks.
    const QByteArray line = file.readAll();
    const QByteArray state = line.mid(line.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QStringList>
#include <QThread>

#include <csignal>

// Makes an application of the private desktop hang.
namespace Freezing {

// Whether the X server answers a new client.
inline bool doesServerAnswer()
{
    constexpr int limit = 5000; // ms: the machine may be busy
    QProcess look;
    look.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_ACTIVE_WINDOW")});
    return look.waitForFinished(limit) && look.exitStatus() == QProcess::NormalExit && look.exitCode() == 0;
}

// Stops the process. GTK grabs the X server for short moments, and an application stopped in one of them
// would lock everybody else out of the server: it is resumed, and stopped again a little later. False when
// that never succeeds.
inline bool freeze(qint64 process)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (::kill(static_cast<pid_t>(process), SIGSTOP) != 0)
            return false;
        if (doesServerAnswer())
            return true;
        ::kill(static_cast<pid_t>(process), SIGCONT);
        QThread::msleep(20);
    }
    return false;
}

} // namespace Freezing

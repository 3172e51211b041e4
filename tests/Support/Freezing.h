// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QStringList>
#include <QThread>

#include <csignal>

// Simulates a hung application on the private desktop.
namespace Freezing {

// Whether the X server responds to a new client. Wayland compositors can't be blocked by one.
inline bool doesServerAnswer()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return true;
    constexpr int limit = 5000; // ms, generous for a busy machine
    QProcess look;
    look.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_ACTIVE_WINDOW")});
    return look.waitForFinished(limit) && look.exitStatus() == QProcess::NormalExit && look.exitCode() == 0;
}

// Stops the process. GTK grabs the X server for short moments, and an application stopped during one would
// block all other clients; it is then resumed and stopped again. Returns false if that never succeeds.
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

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QString>

// The services by which desktops lock the screen: those on the session bus, and the login manager on the
// system bus. Main thread; connecting blocks, and happens on workers. Starts no service.
class LockServices
{
public:
    // Whether one of them says that the screen is locked, or that a screen saver covers it, which takes all
    // keys as well and cannot be told from a lock. Bounded; throws nothing: a service that is not there, or
    // does not answer within five seconds, says no.
    QCoro::Task<bool> isScreenLocked();

private:
    QCoro::Task<bool> isScreenSaverActive(QString service);
    QCoro::Task<bool> isSessionLocked();

    BoundedQueue m_sessionBus{QStringLiteral("orvane.lock"), QStringLiteral("The session bus")};
    BoundedQueue m_systemBus{QStringLiteral("orvane.login"), QStringLiteral("The system bus")};
};

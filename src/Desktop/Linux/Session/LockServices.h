// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QString>

// The services that lock the screen: screen savers on the session bus, the login manager on the system bus.
// Never starts a service. Connecting blocks, so it runs on workers. Thread: main.
class LockServices
{
public:
    // Whether any service reports a locked screen or an active screen saver, which also takes all keys. A
    // service that is missing or doesn't reply within five seconds counts as not locked. Never throws.
    QCoro::Task<bool> isScreenLocked();

private:
    QCoro::Task<bool> isScreenSaverActive(QString service);
    QCoro::Task<bool> isSessionLocked();

    BoundedQueue m_sessionBus{QStringLiteral("orvane.lock"), QStringLiteral("The session bus")};
    BoundedQueue m_systemBus{QStringLiteral("orvane.login"), QStringLiteral("The system bus")};
};

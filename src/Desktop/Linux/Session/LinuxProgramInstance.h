// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Session/ApplicationService.h"
#include "Desktop/ProgramInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>

// Ensures a single instance by owning a well-known name on the session bus, where it implements
// org.freedesktop.Application. Without a session bus, every instance is the first. Connecting blocks, so it
// runs on a worker. Thread: main.
class LinuxProgramInstance : public ProgramInstance
{
    Q_OBJECT

public:
    static constexpr auto busName = QLatin1StringView("org.orvane.Orvane");
    static constexpr auto objectPath = QLatin1StringView("/org/orvane/Orvane");

    // Reads the launch token from $XDG_ACTIVATION_TOKEN, or else $DESKTOP_STARTUP_ID.
    LinuxProgramInstance();
    ~LinuxProgramInstance() override;

    QCoro::Task<InstanceStanding> claim(InstanceRequest request) override;
    QString launchToken() const override { return m_launchToken; }

private:
    enum class Name { Ours, Taken };
    enum class Delivery { Taken, Refused, Unanswered };

    QCoro::Task<bool> connectToBus();
    void leaveBus();
    QCoro::Task<Name> requestName();
    QCoro::Task<Delivery> deliver(InstanceRequest request);
    QDBusMessage messageFor(InstanceRequest request) const;
    QDBusConnection bus() const { return QDBusConnection(m_connectionName); }

    QString m_launchToken;
    QString m_connectionName;
    ApplicationService m_service;
    BoundedQueue m_worker;
};

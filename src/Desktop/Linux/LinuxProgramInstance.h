// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/BoundedQueue.h"
#include "Desktop/ProgramInstance.h"

#include <QDBusConnection>

#include <optional>

// One running instance by a name on the session bus, "org.orvane.Orvane", with the interface
// org.freedesktop.Application, so that desktops can start and activate the program over the bus. Without a
// session bus, every instance is the first. Main thread; connecting to the bus blocks, and happens on a
// worker.
class LinuxProgramInstance : public ProgramInstance
{
    Q_OBJECT

public:
    // Takes the token of this start from $XDG_ACTIVATION_TOKEN or else $DESKTOP_STARTUP_ID. Both stay set,
    // for the toolkit to end the desktop's launch feedback.
    LinuxProgramInstance();
    ~LinuxProgramInstance() override;

    QCoro::Task<InstanceStanding> claim(InstanceRequest request) override;
    QString launchToken() const override { return m_launchToken; }

private:
    enum class Delivery { Taken, Vanished };

    QCoro::Task<std::optional<QDBusConnection>> connectToBus();
    QCoro::Task<bool> requestName(QDBusConnection bus);
    QCoro::Task<Delivery> deliver(QDBusConnection bus, InstanceRequest request);

    QString m_launchToken;
    QString m_connectionName;
    BoundedQueue m_worker;
};

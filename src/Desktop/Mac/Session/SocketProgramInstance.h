// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"

#include <QLocalServer>

// One running instance a user, by a locked file, and a local socket beside it through which later starts hand
// over what they want. The lock goes with its process, however that ends. Knows no tokens, since desktops
// with an activation of their own need none. Main thread.
class SocketProgramInstance : public ProgramInstance
{
    Q_OBJECT

public:
    // Keeps both in `folder`, which is made when it is missing; every start has to name the same one.
    explicit SocketProgramInstance(const QString &folder);
    ~SocketProgramInstance() override;
    SocketProgramInstance(const SocketProgramInstance &) = delete;
    SocketProgramInstance &operator=(const SocketProgramInstance &) = delete;

    QCoro::Task<InstanceStanding> claim(InstanceRequest request) override;
    QString launchToken() const override { return {}; }

private:
    enum class Delivery { Taken, Refused, Unanswered };

    bool becomeFirst();
    void leave();
    QCoro::Task<Delivery> deliver(InstanceRequest request) const;
    void answerNext();
    void answer(QLocalSocket &start);

    QString m_folder;
    QLocalServer m_server;
    int m_lock = -1; // a file descriptor
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"

#include <QLocalServer>

// A single instance per user, ensured by a file lock. A local socket next to the file receives the requests
// of later starts. The lock ends with its process, however that ends. There are no activation tokens. Thread:
// main.
class SocketProgramInstance : public ProgramInstance
{
    Q_OBJECT

public:
    // Creates lock and socket in `folder`, which is created if missing. Every start must use the same folder.
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

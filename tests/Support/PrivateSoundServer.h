// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A PulseAudio server with one silent device, “loudspeaker”, for this process and those it starts.
class PrivateSoundServer
{
public:
    PrivateSoundServer();
    ~PrivateSoundServer();
    PrivateSoundServer(const PrivateSoundServer &) = delete;
    PrivateSoundServer &operator=(const PrivateSoundServer &) = delete;

    // Whether it came up. Waits for it.
    bool isRunning() const;

    // The server's own word about the loudspeaker, for example to the question "get-sink-volume".
    static QString answerTo(const QString &question);

private:
    QTemporaryDir m_folder;
    QProcess m_server;
};

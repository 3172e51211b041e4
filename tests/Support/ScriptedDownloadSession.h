// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/DownloadSession.h"

#include <QList>

#include <functional>
#include <thread>

// A session that downloads nothing; the test calls the callbacks. Thread: main.
class ScriptedDownloadSession : public DownloadSession
{
public:
    QList<DownloadRequest> started;
    QList<quint64> cancelled;
    DownloadDelegate *delegate = nullptr;

    void setDelegate(DownloadDelegate *newDelegate) override { delegate = newDelegate; }
    quint64 start(const DownloadRequest &request) override
    {
        started.append(request);
        return static_cast<quint64>(started.size());
    }
    void cancel(quint64 task) override { cancelled.append(task); }

    // Runs a callback on another thread and waits for its end.
    static void onSessionThread(const std::function<void()> &callback) { std::thread(callback).join(); }
};

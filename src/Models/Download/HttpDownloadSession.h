// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/DownloadSession.h"
#include "Models/Download/TransferOptions.h"

#include <QHash>
#include <QThread>

#include <stop_token>

class HttpDownloadWorker;

// The download session that speaks HTTP and HTTPS, in a thread of its own that starts with the first
// download. Servers' certificates are verified. A download that ends early leaves its part in the downloads
// folder, and the next one of the same URL continues it. Two processes never write the same file.
class HttpDownloadSession : public DownloadSession
{
public:
    // Unfinished downloads lie in `downloadsDirectory`.
    explicit HttpDownloadSession(const QString &downloadsDirectory);
    explicit HttpDownloadSession(const TransferOptions &options);
    // Ends what is in flight without a callback, and joins the thread.
    ~HttpDownloadSession() override;

    void setDelegate(DownloadDelegate *delegate) override;
    quint64 start(const DownloadRequest &request) override;
    void cancel(quint64 task) override;

    // The bytes that the user may still write into a folder; negative when unknown.
    static qint64 freeSpace(const QString &folder);

private:
    const TransferOptions m_options;
    DownloadDelegate *m_delegate = nullptr;
    quint64 m_lastTask = 0;
    QHash<quint64, std::stop_source> m_stops;
    QThread m_thread;
    HttpDownloadWorker *m_worker = nullptr; // lives and ends with the thread
};

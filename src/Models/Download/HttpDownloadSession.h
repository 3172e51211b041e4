// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/DownloadSession.h"
#include "Models/Download/TransferOptions.h"

#include <QHash>
#include <QThread>

#include <stop_token>

class HttpDownloadWorker;

// Downloads over HTTP and HTTPS in its own thread, which starts with the first download. Server certificates
// are verified. An interrupted download leaves a partial file, which the next download of the same URL
// continues. A lock file keeps two processes from writing the same file.
class HttpDownloadSession : public DownloadSession
{
public:
    // Partial files are kept in `downloadsDirectory`.
    explicit HttpDownloadSession(const QString &downloadsDirectory);
    explicit HttpDownloadSession(const TransferOptions &options);
    // Ends running transfers without a callback, and joins the thread.
    ~HttpDownloadSession() override;

    void setDelegate(DownloadDelegate *delegate) override;
    quint64 start(const DownloadRequest &request) override;
    void cancel(quint64 task) override;

    // Bytes the user may still write in `folder`; negative if unknown.
    static qint64 freeSpace(const QString &folder);

private:
    const TransferOptions m_options;
    DownloadDelegate *m_delegate = nullptr;
    quint64 m_lastTask = 0;
    QHash<quint64, std::stop_source> m_stops;
    QThread m_thread;
    HttpDownloadWorker *m_worker = nullptr; // lives and ends with the thread
};

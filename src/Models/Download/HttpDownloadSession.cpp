// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/HttpDownloadSession.h"

#include "Models/Download/HttpTransfer.h"

#include <QNetworkAccessManager>
#include <QStorageInfo>

#include <utility>

using namespace Qt::StringLiterals;

// The running transfers. Thread: the session's.
class HttpDownloadWorker : public QObject
{
public:
    HttpDownloadWorker(const TransferOptions &options, DownloadDelegate &delegate)
        : m_options(options), m_delegate(delegate)
    {
    }

    ~HttpDownloadWorker() override
    {
        // Transfers must be destroyed before their network access manager.
        qDeleteAll(m_transfers);
    }

    void start(quint64 task, const DownloadRequest &request, const std::stop_token &stop)
    {
        if (!m_network)
            m_network = new QNetworkAccessManager(this);
        auto *transfer = new HttpTransfer(task, request, m_options, stop, *m_network, m_delegate, this);
        m_transfers.insert(task, transfer);
        connect(transfer, &HttpTransfer::ended, this,
                [this, task] { m_transfers.take(task)->deleteLater(); });
        transfer->begin();
    }

    void cancel(quint64 task)
    {
        if (HttpTransfer *transfer = m_transfers.value(task))
            transfer->cancel();
    }

private:
    const TransferOptions m_options;
    DownloadDelegate &m_delegate;
    QNetworkAccessManager *m_network = nullptr; // created in the thread that uses it
    QHash<quint64, HttpTransfer *> m_transfers;
};

HttpDownloadSession::HttpDownloadSession(const QString &downloadsDirectory)
    : HttpDownloadSession(TransferOptions{.downloadsDirectory = downloadsDirectory,
                                          .freeSpace = &HttpDownloadSession::freeSpace})
{
}

HttpDownloadSession::HttpDownloadSession(const TransferOptions &options) : m_options(options)
{
    m_thread.setObjectName(u"models.download"_s);
}

HttpDownloadSession::~HttpDownloadSession()
{
    for (std::stop_source &stop : m_stops)
        stop.request_stop();
    m_thread.quit();
    m_thread.wait();
}

void HttpDownloadSession::setDelegate(DownloadDelegate *delegate)
{
    m_delegate = delegate;
}

quint64 HttpDownloadSession::start(const DownloadRequest &request)
{
    if (!m_worker) {
        m_worker = new HttpDownloadWorker(m_options, *m_delegate);
        m_worker->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
        m_thread.start();
    }
    const quint64 task = ++m_lastTask;
    const std::stop_token stop = m_stops[task].get_token();
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, task, request, stop] { worker->start(task, request, stop); },
        Qt::QueuedConnection);
    return task;
}

void HttpDownloadSession::cancel(quint64 task)
{
    m_stops.take(task).request_stop();
    if (m_worker)
        QMetaObject::invokeMethod(
            m_worker, [worker = m_worker, task] { worker->cancel(task); }, Qt::QueuedConnection);
}

qint64 HttpDownloadSession::freeSpace(const QString &folder)
{
    return QStorageInfo(folder).bytesAvailable();
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/DownloadSession.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QPair>
#include <QThread>

#include <atomic>
#include <mutex>
#include <optional>

// Records the callbacks of a download session and removes finished files. Written on the session's thread,
// read on the main thread.
class RecordingDelegate : public DownloadDelegate
{
public:
    struct Record
    {
        QList<QPair<qint64, qint64>> progress;
        QList<FinishedDownload> finished;
        QByteArray content; // of the latest finished download
        QList<std::optional<DownloadError>> ends;
        QList<const QThread *> threads;
    };

    // If false, finished files stay in place, as if they could not be moved.
    std::atomic<bool> takesFiles = true;

    Record record() const
    {
        const std::lock_guard lock(m_mutex);
        return m_record;
    }
    qsizetype endCount() const { return record().ends.size(); }
    QString lastMessage() const
    {
        const Record noted = record();
        return noted.ends.isEmpty() || !noted.ends.last() ? QString() : noted.ends.last()->message;
    }

    void downloadProgressed(quint64 /*task*/, qint64 written, qint64 expected) override
    {
        const std::lock_guard lock(m_mutex);
        m_record.progress.append({written, expected});
        m_record.threads.append(QThread::currentThread());
    }

    void downloadFinished(const FinishedDownload &download) override
    {
        const std::lock_guard lock(m_mutex);
        m_record.finished.append(download);
        m_record.threads.append(QThread::currentThread());
        QFile file(download.temporaryFile);
        if (!download.temporaryFile.isEmpty() && file.open(QIODevice::ReadOnly))
            m_record.content = file.readAll();
        if (takesFiles)
            file.remove();
    }

    void downloadEnded(quint64 /*task*/, const std::optional<DownloadError> &error) override
    {
        const std::lock_guard lock(m_mutex);
        m_record.ends.append(error);
        m_record.threads.append(QThread::currentThread());
    }

private:
    mutable std::mutex m_mutex;
    Record m_record;
};

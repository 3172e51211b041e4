// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/ResponseHead.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QLockFile>
#include <QString>
#include <QUrl>

#include <stop_token>

// An unfinished download on disk: its content, a record of its origin, and a lock held by one process.
// Content and record outlive the object, so that a later download can continue. Thread: the session's.
class PartialFile
{
public:
    // Identifies the file that the content is the beginning of.
    struct Origin
    {
        QUrl url;
        QByteArray entityTag;
        QByteArray lastModified;
        qint64 length = 0; // of the whole file; 0 when unknown

        // The origin described by a response to a request for `url`.
        static Origin of(const QUrl &url, const ResponseHead &head);

        // The validator for If-Range requests; empty if there is none.
        QByteArray validator() const;
    };

    // The files are `folder`/`name` with ".partial", ".json" and ".lock" appended.
    PartialFile(const QString &folder, const QString &name);

    QString path() const { return m_content.fileName(); }
    QString errorString() const { return m_content.errorString(); }

    enum class Lock { Taken, HeldByAnother, Impossible };
    Lock lock();

    // Whether a download of `url` can continue this content; `origin` then describes it.
    bool canContinue(const QUrl &url) const;
    Origin origin() const;
    // Whether a partial response starts where the content ends and belongs to the same file.
    bool isContinuedBy(const ResponseHead &head) const;

    // Open the content for writing, empty or at its end; false on failure or stop. Continuing hashes the
    // existing content until a stop is requested. From complete content it removes the last byte, so that a
    // range remains to be requested and the server can validate it.
    bool startOver(const Origin &origin);
    bool continueAtEnd(const std::stop_token &stop);

    // Bytes stored so far.
    qint64 size() const { return m_content.size(); }
    bool write(const QByteArray &bytes);
    // Flushes the content to disk (fsync) and closes it.
    bool finish();
    QByteArray sha256() const { return m_hash.result(); }

    // Removes the content and the record if they exist.
    void remove();

private:
    QString m_recordPath;
    QFile m_content;
    QLockFile m_lock;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

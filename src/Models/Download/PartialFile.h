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

// An unfinished download on disk: its content, a small record of what it is a part of, and a lock that only
// one process holds. Content and record stay when the object goes, so that a later download can continue.
// Used on the session's thread.
class PartialFile
{
public:
    // What the content is the beginning of.
    struct Origin
    {
        QUrl url;
        QByteArray entityTag;
        QByteArray lastModified;
        qint64 length = 0; // of the whole file; 0 when unknown

        // Of what an answer brings to a request for `url`.
        static Origin of(const QUrl &url, const ResponseHead &head);

        // By which a server can tell whether it still has the same file; empty when it cannot.
        QByteArray validator() const;
    };

    // The files are `folder`/`name` with ".partial", ".json" and ".lock" appended.
    PartialFile(const QString &folder, const QString &name);

    QString path() const { return m_content.fileName(); }
    QString errorString() const { return m_content.errorString(); }

    enum class Lock { Taken, HeldByAnother, Impossible };
    Lock lock();

    // True when there is something that a download of `url` can continue; `origin` then says what it is.
    bool canContinue(const QUrl &url) const;
    Origin origin() const;
    // Whether a partial answer goes on where the content ends, and is of the same file.
    bool isContinuedBy(const ResponseHead &head) const;

    // Each opens the content for writing: with nothing in it, or at its end. Continuing reads what is there,
    // for the digest, until it is asked to stop; of a whole file it takes away the last byte, so that there
    // is something to ask for, and the server can say whether it is still the same file. False on failure.
    bool startOver(const Origin &origin);
    bool continueAtEnd(const std::stop_token &stop);

    // The bytes that are there.
    qint64 size() const { return m_content.size(); }
    bool write(const QByteArray &bytes);
    // Brings all that was written onto the disk, and closes the content.
    bool finish();
    QByteArray sha256() const { return m_hash.result(); }

    // Removes the content and the record, where they still are.
    void remove();

private:
    QString m_recordPath;
    QFile m_content;
    QLockFile m_lock;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

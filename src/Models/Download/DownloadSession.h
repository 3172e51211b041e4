// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/VerifiedFile.h"

#include <QString>
#include <QUrl>
#include <QtGlobal>

#include <optional>

// What is to be fetched.
struct DownloadRequest
{
    QUrl url;
    // How large the file is about, in bytes; 0 when nobody knows. Only used to refuse what cannot fit.
    qint64 approximateSize = 0;
    // What the file has to be, where that is known.
    std::optional<VerifiedFile> verified = {};
};

// A transfer that came to its end with an answer of the server.
struct FinishedDownload
{
    quint64 task = 0;
    // None when the answer was not an HTTP one.
    std::optional<int> httpStatus;
    // Where the content lies. Empty for a status of 400 and above.
    QString temporaryFile;
    // The URL that was asked for, before any redirect.
    QUrl originalUrl;
};

// Why a transfer ended without an answer.
struct DownloadError
{
    static constexpr int cancelled = -999;
    static constexpr int failed = -1;

    int code = failed;
    QString message; // one sentence
};

// The three callbacks of a download session. All are called on the session's own thread, one at a time.
class DownloadDelegate
{
public:
    virtual ~DownloadDelegate() = default;

    // `written` bytes of `expected` are there; `expected` is 0 or less when the size is unknown.
    virtual void downloadProgressed(quint64 task, qint64 written, qint64 expected) = 0;
    // Before this returns, the temporary file must be moved away, or be removed if it is good for nothing.
    // One that stays is kept for the next download of the same URL.
    virtual void downloadFinished(const FinishedDownload &download) = 0;
    // The last callback of every task, after `downloadFinished` where there is one.
    virtual void downloadEnded(quint64 task, const std::optional<DownloadError> &error) = 0;
};

// Fetches files in the background. Its operations are called on the main thread and return at once.
class DownloadSession
{
public:
    // After the destructor has returned, no callback is running and none comes.
    virtual ~DownloadSession() = default;

    // Called once, before the first download; the delegate outlives the session.
    virtual void setDelegate(DownloadDelegate *delegate) = 0;

    // Starts a download and gives the number by which its callbacks name it, which is never used again.
    virtual quint64 start(const DownloadRequest &request) = 0;

    // The task then ends with the code `cancelled`, unless it has ended already.
    virtual void cancel(quint64 task) = 0;
};

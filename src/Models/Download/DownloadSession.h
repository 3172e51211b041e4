// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/VerifiedFile.h"

#include <QString>
#include <QUrl>
#include <QtGlobal>

#include <optional>

// A file to download.
struct DownloadRequest
{
    QUrl url;
    // Approximate size in bytes; 0 if unknown. Used only to refuse downloads that cannot fit.
    qint64 approximateSize = 0;
    // The verified size and digest, if known.
    std::optional<VerifiedFile> verified = {};
};

// A transfer for which the server sent an answer.
struct FinishedDownload
{
    quint64 task = 0;
    // Empty for a non-HTTP answer.
    std::optional<int> httpStatus;
    // Path of the content; empty if the status is 400 or above.
    QString temporaryFile;
    // The requested URL, before redirects.
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

// Callbacks of a download session, called one at a time on the session's thread.
class DownloadDelegate
{
public:
    virtual ~DownloadDelegate() = default;

    // `written` of `expected` bytes have arrived; `expected` is 0 or negative if unknown.
    virtual void downloadProgressed(quint64 task, qint64 written, qint64 expected) = 0;
    // Must move the temporary file away, or remove it if unusable, before returning. Otherwise the next
    // download of the same URL continues it.
    virtual void downloadFinished(const FinishedDownload &download) = 0;
    // The last callback of every task, after `downloadFinished` if that was called.
    virtual void downloadEnded(quint64 task, const std::optional<DownloadError> &error) = 0;
};

// Downloads files in the background. Thread: main; no operation blocks.
class DownloadSession
{
public:
    // No callback runs after the destructor returns.
    virtual ~DownloadSession() = default;

    // Call once, before the first download. The delegate must outlive the session.
    virtual void setDelegate(DownloadDelegate *delegate) = 0;

    // Starts a download and returns its task number, which is never reused.
    virtual quint64 start(const DownloadRequest &request) = 0;

    // Ends the task with the code `cancelled`, unless it has already ended.
    virtual void cancel(quint64 task) = 0;
};

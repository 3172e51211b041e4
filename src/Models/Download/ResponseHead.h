// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QUrl>

#include <optional>

// The parts of an HTTP response header that matter for a download. A plain value; unreadable fields count as
// absent.
struct ResponseHead
{
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    int status = 0;
    QByteArray entityTag;
    QByteArray lastModified;
    QByteArray location; // redirect target
    // Size of the whole file.
    std::optional<qint64> size;
    // Offset of the first byte of a partial response.
    std::optional<qint64> firstByte;
    // SHA-256 of the whole file (32 bytes), or empty.
    QByteArray sha256;

    static ResponseHead parsed(int status, const Headers &headers);

    bool isRedirect() const;
};

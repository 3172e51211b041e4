// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QUrl>

#include <optional>

// The part of a server's answer that decides what becomes of a download. A plain value made of the status and
// the headers by a pure function; what cannot be read counts as not said.
struct ResponseHead
{
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    int status = 0;
    QByteArray entityTag;
    QByteArray lastModified;
    QByteArray location; // of a redirect
    // The size of the whole file.
    std::optional<qint64> size;
    // The first byte that a partial answer carries.
    std::optional<qint64> firstByte;
    // The SHA-256 of the whole file (32 bytes), or empty.
    QByteArray sha256;

    static ResponseHead parsed(int status, const Headers &headers);

    bool isRedirect() const;
};

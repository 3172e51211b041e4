// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>

// Options of HTTP downloads. A plain value.
struct TransferOptions
{
    // Folder for partial files; created on demand.
    QString downloadsDirectory;
    // How long the server may send nothing.
    std::chrono::milliseconds silenceLimit = std::chrono::seconds(60);
    // Free bytes in a folder; negative if unknown. Called on the session's thread.
    std::function<qint64(const QString &folder)> freeSpace;
    // A server with the same files under the same paths, used instead of each file's own. Downloads fail if
    // its address is not secure.
    std::optional<QUrl> mirror = {};

    // The URL from which `file` is downloaded.
    QUrl addressOf(const QUrl &file) const;
};

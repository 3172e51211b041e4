// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>

// How downloads over HTTP are carried out. A plain value.
struct TransferOptions
{
    // Where unfinished downloads lie; made when it is needed.
    QString downloadsDirectory;
    // How long a server may stay silent.
    std::chrono::milliseconds silenceLimit = std::chrono::seconds(60);
    // The bytes that are free in a folder; negative when unknown. Called on the session's thread.
    std::function<qint64(const QString &folder)> freeSpace;
    // A server that holds the same files under the same paths, asked instead of each file's own. Has to be a
    // secure address, or downloads fail.
    std::optional<QUrl> mirror = {};

    // Where a file is fetched from.
    QUrl addressOf(const QUrl &file) const;
};

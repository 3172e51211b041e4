// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

// What a file of the catalog is, to the byte, because somebody has fetched and checked it once. A download of
// such a file is held to this, whatever a server announces. A plain value, usable from any thread.
struct VerifiedFile
{
    qint64 size = 0;   // in bytes
    QByteArray sha256; // 32 bytes

    // Nothing for a file that nobody has verified yet: then what its server announces has to do.
    static std::optional<VerifiedFile> named(const QString &fileName);
};

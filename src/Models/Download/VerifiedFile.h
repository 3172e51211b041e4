// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

// Size and digest of a catalog file, verified by hand. A download must match them, whatever the server
// announces. A plain value; any thread.
struct VerifiedFile
{
    qint64 size = 0;   // in bytes
    QByteArray sha256; // 32 bytes

    // Nothing for a file not yet verified; the server's announcement is used then.
    static std::optional<VerifiedFile> named(const QString &fileName);
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

// The file stored under a model's name in the models folder.
namespace StoredModel {

// Identifies a file until it is changed or replaced.
struct Identity
{
    QString path;
    qint64 size = 0;
    QDateTime changed; // the metadata change time, which users cannot set

    friend bool operator==(const Identity &, const Identity &) = default;
};

// Nothing if the file is missing. Any thread.
std::optional<Identity> identity(const QString &path);

enum class Condition { Missing, Unusable, Plausible };

// Reads the metadata, which takes a tenth of a second for a large vocabulary. Not on a window's main thread.
Condition examine(const QString &path);

} // namespace StoredModel

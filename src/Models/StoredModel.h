// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

// What lies under a model's name in the models folder.
namespace StoredModel {

// By which a file is known again until somebody changes or replaces it.
struct Identity
{
    QString path;
    qint64 size = 0;
    QDateTime changed; // as the file system notes it; nobody can set it

    friend bool operator==(const Identity &, const Identity &) = default;
};

// Nothing for a file that is missing. On any thread.
std::optional<Identity> identity(const QString &path);

enum class Condition { Missing, Unusable, Plausible };

// Looks into the file: a tenth of a second for a large vocabulary, so not on a thread that serves a window.
Condition examine(const QString &path);

} // namespace StoredModel

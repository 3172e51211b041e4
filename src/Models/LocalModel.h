// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>

#include <nlohmann/json_fwd.hpp>

#include <functional>

// An entry of the fixed catalog of downloadable language models. An immutable plain value, usable from any
// thread. `id` is its identity, which is stored as the user's choice.
struct LocalModel
{
    QString id;
    QString name;      // as shown in the interface
    QString detail;    // one line: speed and approximate download size
    QUrl url;          // of the file itself; its last path component is `fileName`
    QString fileName;  // under the models folder, once downloaded
    qint64 sizeMB = 0; // approximate, in megabytes of 1,000,000 bytes

    // Never empty. The first entry is the default. Ids and file names are unique. Built on first use.
    static const QList<LocalModel> &catalog();

    // The catalog entry with this id, or the default.
    static const LocalModel &withIdentifier(const QString &identifier);

    friend bool operator==(const LocalModel &, const LocalModel &) = default;
};

// Hashes all six fields, so that an entry can be a key as well.
size_t qHash(const LocalModel &model, size_t seed = 0) noexcept;

template <>
struct std::hash<LocalModel>
{
    size_t operator()(const LocalModel &model) const noexcept { return qHash(model); }
};

// The encoding has exactly the six field names as keys, in the order of declaration. Decoding throws
// nlohmann::json::exception when a key is missing or has a value of another type. Orvane itself stores no
// entry but the id of the one chosen; this is the format for whoever does.
void to_json(nlohmann::ordered_json &json, const LocalModel &model);
void from_json(const nlohmann::ordered_json &json, LocalModel &model);

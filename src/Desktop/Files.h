// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"

#include <QCoroTask>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// An entry of a folder listing. `name` is the real name, as needed to act on the entry: clean it before
// showing it.
struct FolderEntry
{
    QString name;
    std::optional<QDateTime> modificationDate;
};

// The user's files, the same on every platform. Called on the main thread; the disk is touched on a queue of
// its own, so that a slow one (a sleeping disk, a network folder) never blocks the caller.
class Files
{
public:
    // Where the user keeps the folder of this well-known name ("Desktop"), as chosen or translated; the empty
    // text where the platform has nothing to say. Called on the queue.
    using FolderFinder = QString (*)(const QString &name);

    // `homeDirectory` is the absolute path of the user's home folder.
    explicit Files(QString homeDirectory, FolderFinder findFolder = nullptr);

    QString homeDirectory() const { return m_homeDirectory; }

    // The path as it is on this disk: "Desktop", "Downloads", "Documents", "Pictures", "Music" and "Videos"
    // in the home folder are where the user keeps them, unless there is something of that very name.
    QCoro::Task<QString> located(QString path);

    // One level deep, hidden entries left out, in the platform's order; none when the folder cannot be
    // listed.
    QCoro::Task<std::optional<QList<FolderEntry>>> contentsOfDirectory(QString path);

    QCoro::Task<bool> exists(QString path);

    // With the missing folders above it; an existing folder is no error. Throws PlatformError.
    QCoro::Task<void> createDirectory(QString path);

    // Moves to the user's trash. Throws PlatformError.
    QCoro::Task<void> trash(QString path);

private:
    QString m_homeDirectory;
    FolderFinder m_findFolder;
    SerialQueue m_queue{QStringLiteral("desktop.files")};
};

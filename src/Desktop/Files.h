// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"

#include <QCoroTask>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// An entry of a folder listing. `name` is the unmodified file name: clean it before display.
struct FolderEntry
{
    QString name;
    std::optional<QDateTime> modificationDate;
    bool isFolder = false;
};

// The user's files, on every platform. Disk access runs on a worker queue, so that a slow disk (asleep, or on
// the network) never blocks the caller. Thread: main.
class Files
{
public:
    // Maps a well-known folder name ("Desktop") to the path the user has configured, or to the empty string
    // if there is none. Called on the worker queue.
    using FolderFinder = QString (*)(const QString &name);

    // `homeDirectory` is absolute.
    explicit Files(QString homeDirectory, FolderFinder findFolder = nullptr);

    QString homeDirectory() const { return m_homeDirectory; }

    // Resolves a path into "Desktop", "Downloads", "Documents", "Pictures", "Music" or "Videos" of the home
    // folder to the user's folder of that kind, unless the home folder has an entry of that name.
    QCoro::Task<QString> located(QString path);

    // Lists a folder without its hidden entries, not recursively, in the platform's order. Returns nothing if
    // the folder can't be listed.
    QCoro::Task<std::optional<QList<FolderEntry>>> contentsOfDirectory(QString path);

    QCoro::Task<bool> exists(QString path);

    // Creates the folder and its missing parents; succeeds if it exists already. Throws PlatformError.
    QCoro::Task<void> createDirectory(QString path);

    // Moves or copies the file or folder, with all its content. Throws PlatformError, also if `to` exists.
    QCoro::Task<void> move(QString from, QString to);
    QCoro::Task<void> copy(QString from, QString to);

    // Moves the file or folder to the user's trash. Throws PlatformError.
    QCoro::Task<void> trash(QString path);

private:
    QString m_homeDirectory;
    FolderFinder m_findFolder;
    SerialQueue m_queue{QStringLiteral("desktop.files")};
};

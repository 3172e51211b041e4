// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/TrashFolders.h"

#include "Base/Text.h"

#include <QDir>
#include <QStandardPaths>
#include <QStorageInfo>

#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Less than a script may take.
constexpr auto limit = 100s;

constexpr QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QStringList trashFolders(const QStringList &volumes)
{
    QStringList folders{QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Trash"_s};
    const QString user = QString::number(::getuid());
    for (const QString &volume : volumes)
        folders << volume + u"/.Trash-"_s + user << volume + u"/.Trash/"_s + user;
    return folders;
}

// Other users can put folders and links into the root of a shared volume.
bool isOwnFolder(const QString &path)
{
    const QFileInfo folder(path);
    return folder.isDir() && !folder.isSymLink() && folder.ownerId() == ::getuid();
}

// Links are deleted, not followed.
bool remove(const QFileInfo &entry)
{
    if (entry.isDir() && !entry.isSymLink())
        return QDir(entry.filePath()).removeRecursively();
    return QFile::remove(entry.filePath());
}

// An entry's description goes after it, so that what can't be deleted can still be restored.
bool empty(const QString &folder)
{
    bool isComplete = true;
    if (!isOwnFolder(folder) || !isOwnFolder(folder + u"/files"_s))
        return isComplete;
    const QFileInfoList entries = QDir(folder + u"/files"_s).entryInfoList(everything);
    for (const QFileInfo &entry : entries) {
        const bool isRemoved = remove(entry);
        isComplete = isComplete && isRemoved;
        if (isRemoved)
            QFile::remove(folder + u"/info/"_s + entry.fileName() + u".trashinfo"_s);
    }
    return isComplete;
}

void emptyAll(const QStringList &volumes)
{
    bool isComplete = true;
    for (const QString &folder : trashFolders(volumes))
        isComplete = empty(folder) && isComplete;
    if (!isComplete)
        throw PlatformError(u"The trash could not be emptied completely."_s);
}

bool isEmptyTrash(const ScriptCommand &command)
{
    if (command.name != u"empty" || !command.application || !Text::equals(*command.application, u"Finder"_s))
        return false;
    if (!command.direct)
        return true;
    return command.direct->is<ScriptValue::Object>() && command.direct->object().name == u"trash";
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> TrashFolders::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    if (isEmptyTrash(command)) {
        const auto job = [volumes = m_volumes] { emptyAll(volumes()); };
        co_await m_worker.run(job, limit);
        answer = ScriptValue();
    }
    co_return answer;
}

QStringList TrashFolders::writableVolumes()
{
    QStringList roots;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        if (volume.isReady() && !volume.isReadOnly())
            roots.append(volume.rootPath());
    }
    return roots;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Files.h"

#include "Desktop/PlatformError.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// In bytes. A Linux trash stores an information file named after each item, about twenty characters longer;
// Qt retries endlessly if that name is too long for the file system.
constexpr qsizetype longestNameInTrash = 235;

std::optional<QList<FolderEntry>> listed(const QString &path)
{
    const QDir folder(path);
    if (!folder.exists() || !folder.isReadable())
        return std::nullopt;
    QList<FolderEntry> entries;
    // System entries are sockets, pipes and dangling links.
    QDirIterator iterator(path, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    while (iterator.hasNext()) {
        iterator.next();
        const QDateTime date = iterator.fileInfo().lastModified();
        const std::optional<QDateTime> known = date.isValid() ? std::optional(date) : std::nullopt;
        entries.append({iterator.fileName(), known, iterator.fileInfo().isDir()});
    }
    return entries;
}

void create(const QString &path)
{
    // The system call would truncate the path at the null character and create a different folder.
    if (path.contains(QChar(u'\0')))
        throw PlatformError(
            u"Couldn't create the folder “%1”: its name is invalid."_s.arg(QFileInfo(path).fileName()));
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(QFile::encodeName(path).toStdString()), error);
    // If a file of that name exists, create_directories reports no error.
    if (!error && !QFileInfo(path).isDir())
        error = std::make_error_code(std::errc::file_exists);
    if (error)
        throw PlatformError(u"Couldn't create the folder “%1”: %2."_s.arg(
            QFileInfo(path).fileName(), QString::fromStdString(error.message())));
}

bool isThere(const QString &path)
{
    const QFileInfo information(path);
    return information.exists() || information.isSymLink();
}

QString placeOf(const QString &path, const QString &home, Files::FolderFinder find)
{
    static const QStringList names{u"Desktop"_s,  u"Downloads"_s, u"Documents"_s,
                                   u"Pictures"_s, u"Music"_s,     u"Videos"_s};
    const QString prefix = QDir::cleanPath(home) + u'/';
    const QString name = path.startsWith(prefix) ? path.mid(prefix.size()).section(u'/', 0, 0) : QString();
    if (!names.contains(name) || isThere(prefix + name))
        return path;
    const QString folder = find(name);
    return folder.isEmpty() ? path : folder + path.mid(prefix.size() + name.size());
}

bool rename(const QString &from, const QString &to)
{
    std::error_code error;
    if (!isThere(to))
        std::filesystem::rename(QFile::encodeName(from).toStdString(), QFile::encodeName(to).toStdString(),
                                error);
    return !error && !isThere(from);
}

// The path with its file name truncated to what the trash accepts.
QString withNameForTrash(const QString &path)
{
    QString name = QFileInfo(path).fileName();
    while (QFile::encodeName(name).size() > longestNameInTrash || name.back().isHighSurrogate())
        name.chop(1);
    return QFileInfo(path).dir().filePath(name);
}

void moveToTrash(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    if (!isThere(path))
        throw PlatformError(u"“%1” couldn't be moved to the Trash because it doesn't exist."_s.arg(name));
    const bool isTooLong = QFile::encodeName(name).size() > longestNameInTrash;
    const QString item = isTooLong ? withNameForTrash(path) : path;
    if (isTooLong && !rename(path, item))
        throw PlatformError(u"“%1” couldn't be moved to the Trash."_s.arg(name));
    if (QFile(item).moveToTrash())
        return;
    if (isTooLong)
        rename(item, path);
    throw PlatformError(u"“%1” couldn't be moved to the Trash."_s.arg(name));
}

[[noreturn]] void failTo(const QString &what, const QString &path, const QString &reason)
{
    throw PlatformError(u"“%1” couldn't be %2: %3."_s.arg(QFileInfo(path).fileName(), what, reason));
}

std::filesystem::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

void requireFree(const QString &what, const QString &from, const QString &to)
{
    if (!isThere(from))
        failTo(what, from, u"it doesn't exist"_s);
    if (isThere(to))
        failTo(what, from, u"“%1” exists already"_s.arg(QFileInfo(to).fileName()));
}

void copyTo(const QString &from, const QString &to)
{
    requireFree(u"copied"_s, from, to);
    std::error_code error;
    const auto options =
        std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks;
    std::filesystem::copy(nativePath(from), nativePath(to), options, error);
    if (error)
        failTo(u"copied"_s, from, QString::fromStdString(error.message()));
}

// A move to another file system copies first.
void moveTo(const QString &from, const QString &to)
{
    requireFree(u"moved"_s, from, to);
    std::error_code error;
    std::filesystem::rename(nativePath(from), nativePath(to), error);
    if (error == std::errc::cross_device_link) {
        copyTo(from, to);
        std::filesystem::remove_all(nativePath(from), error);
    }
    if (error)
        failTo(u"moved"_s, from, QString::fromStdString(error.message()));
}

} // namespace

Files::Files(QString homeDirectory, FolderFinder findFolder)
    : m_homeDirectory(std::move(homeDirectory)), m_findFolder(findFolder)
{
}

QCoro::Task<QString> Files::located(QString path)
{
    if (!m_findFolder)
        co_return path;
    const auto place = m_queue.run(
        [path, home = m_homeDirectory, find = m_findFolder] { return placeOf(path, home, find); });
    co_return co_await place;
}

QCoro::Task<std::optional<QList<FolderEntry>>> Files::contentsOfDirectory(QString path)
{
    const auto listing = m_queue.run([path] { return listed(path); });
    co_return co_await listing;
}

QCoro::Task<bool> Files::exists(QString path)
{
    const auto answer = m_queue.run([path] { return QFileInfo::exists(path); });
    co_return co_await answer;
}

QCoro::Task<void> Files::createDirectory(QString path)
{
    const auto creation = m_queue.run([path] { create(path); });
    co_await creation;
}

QCoro::Task<void> Files::move(QString from, QString to)
{
    const auto job = m_queue.run([from, to] { moveTo(from, to); });
    co_await job;
}

QCoro::Task<void> Files::copy(QString from, QString to)
{
    const auto job = m_queue.run([from, to] { copyTo(from, to); });
    co_await job;
}

QCoro::Task<void> Files::trash(QString path)
{
    const auto move = m_queue.run([path] { moveToTrash(path); });
    co_await move;
}

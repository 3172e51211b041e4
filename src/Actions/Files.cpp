// SPDX-License-Identifier: Apache-2.0
#include "Actions/Files.h"

#include "Actions/ActionError.h"
#include "Base/Text.h"

#include <QFileInfo>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype mostNames = 5;

// The folders below the home folder that the location words stand for; empty for the home folder itself.
const QHash<QString, QString> &locationWords()
{
    static const QHash<QString, QString> words{
        {QStringLiteral("desktop"), QStringLiteral("Desktop")},
        {QStringLiteral("downloads"), QStringLiteral("Downloads")},
        {QStringLiteral("downloads folder"), QStringLiteral("Downloads")},
        {QStringLiteral("documents"), QStringLiteral("Documents")},
        {QStringLiteral("pictures"), QStringLiteral("Pictures")},
        {QStringLiteral("home"), QString()},
        {QStringLiteral("~"), QString()},
    };
    return words;
}

template <typename Condition>
QString trimmedOf(const QString &text, Condition isEdge)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && isEdge(text.at(start)))
        ++start;
    while (end > start && isEdge(text.at(end - 1)))
        --end;
    return text.mid(start, end - start);
}

// Line breaks are no blanks here: a file name may begin or end with one.
bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

bool isDotOrSpace(QChar character)
{
    return character == u'.' || character == u' ';
}

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

// Which entries of a folder are asked for, in the form in which names are compared.
struct Filter
{
    std::optional<QString> extension;
    std::optional<QString> query;

    bool keeps(const FolderEntry &entry) const
    {
        if (extension && Text::comparisonKey(QFileInfo(entry.name).suffix()) != *extension)
            return false;
        return !query || Text::comparisonKey(entry.name).contains(*query);
    }
};

Filter filterFor(const std::optional<QString> &extension, const std::optional<QString> &query)
{
    Filter filter;
    if (extension)
        filter.extension = trimmedOf(Text::comparisonKey(*extension), isDotOrSpace);
    if (query)
        filter.query = Text::comparisonKey(*query);
    return filter;
}

// The kept entries, newest first; those without a date last, and equal dates in the order of the listing.
QList<FolderEntry> newestFirst(QList<FolderEntry> entries, const Filter &filter)
{
    entries.removeIf([&filter](const FolderEntry &entry) { return !filter.keeps(entry); });
    std::stable_sort(entries.begin(), entries.end(), [](const FolderEntry &left, const FolderEntry &right) {
        return left.modificationDate > right.modificationDate;
    });
    return entries;
}

QString foundLine(const QList<FolderEntry> &entries)
{
    QStringList names;
    for (const FolderEntry &entry : entries.first(std::min(mostNames, entries.size())))
        names.append(entry.name);
    return QStringLiteral("Found %1 file(s), newest first: %2. Revealed “%3” in Finder.")
        .arg(QString::number(entries.size()), names.join(QStringLiteral(", ")), names.first());
}

} // namespace

QString Executor::resolveFolder(const QString &text, const QString &homeDirectory)
{
    const QString trimmed = trimmedOf(text, isBlank);
    QString key = Text::comparisonKey(trimmed);
    key.remove(QLatin1String("~/")).remove(QLatin1String("my "));
    const auto word = locationWords().constFind(key);
    if (word != locationWords().constEnd())
        return pathInside(homeDirectory, *word);
    if (trimmed == QLatin1String("~") || trimmed.startsWith(QLatin1String("~/")))
        return pathInside(homeDirectory, trimmed.mid(1));
    if (trimmed.startsWith(u'/'))
        return withoutTrailingSlashes(trimmed);
    // "~someone" too: what belongs to another user is never meant.
    return pathInside(homeDirectory, trimmed);
}

QString Executor::pathInside(const QString &folder, const QString &name)
{
    qsizetype start = 0;
    while (start < name.size() && name.at(start) == u'/')
        ++start;
    const QString parent = withoutTrailingSlashes(folder);
    const QString separator = parent.endsWith(u'/') ? QString() : QStringLiteral("/");
    return withoutTrailingSlashes(parent + separator + name.mid(start));
}

QString Executor::lastComponent(const QString &path)
{
    const QString name = path.section(u'/', -1);
    return name.isEmpty() ? path : name;
}

QCoro::Task<QString> Executor::findFiles(QString folder, std::optional<QString> extension,
                                         std::optional<QString> query, Desktop desktop)
{
    const QString path = resolveFolder(folder, desktop.files.homeDirectory());
    const std::optional<QList<FolderEntry>> listing = co_await desktop.files.contentsOfDirectory(path);
    if (!listing)
        throw ActionError(QStringLiteral("Couldn't read %1.").arg(folder));
    const QList<FolderEntry> entries = newestFirst(*listing, filterFor(extension, query));
    if (entries.isEmpty())
        co_return QStringLiteral("No matching files in %1.").arg(folder);
    const QString newest = pathInside(path, entries.first().name);
    co_await desktop.workspace.reveal(newest);
    co_return foundLine(entries);
}

QCoro::Task<void> Executor::screenshot(QString path, Desktop desktop)
{
    co_await desktop.screenCapture.capture(path);
    const bool succeeded = co_await desktop.files.exists(path);
    if (!succeeded)
        throw ActionError(
            QStringLiteral("The screenshot failed. Screen Recording permission may be required."));
}

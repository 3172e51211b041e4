// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/FileSearch.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/Locations.h"
#include "Base/Text.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostNames = 5;

// Selects folder entries. The texts are comparison keys.
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
        filter.extension = Text::trimmed(Text::comparisonKey(*extension), u". ");
    if (query)
        filter.query = Text::comparisonKey(*query);
    return filter;
}

// The selected entries, newest first: undated ones last, equal dates in listing order.
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
    return u"Found %1 file(s), newest first: %2. Revealed “%3” in Finder."_s.arg(
        QString::number(entries.size()), names.join(u", "_s), names.first());
}

} // namespace

QCoro::Task<QString> FileSearch::locate(QString text, Desktop desktop)
{
    const QString path = Locations::resolveFolder(text, desktop.files.homeDirectory());
    // An absolute path is used unchanged.
    if (Text::trimmed(text, u" \t").startsWith(u'/'))
        co_return path;
    co_return co_await desktop.files.located(path);
}

QCoro::Task<QString> FileSearch::findFiles(QString folder, std::optional<QString> extension,
                                           std::optional<QString> query, Desktop desktop)
{
    const QString path = co_await locate(folder, desktop);
    const std::optional<QList<FolderEntry>> listing = co_await desktop.files.contentsOfDirectory(path);
    if (!listing)
        throw ActionError(u"Couldn't read %1."_s.arg(folder));
    const QList<FolderEntry> entries = newestFirst(*listing, filterFor(extension, query));
    if (entries.isEmpty())
        co_return u"No matching files in %1."_s.arg(folder);
    const QString newest = Locations::pathInside(path, entries.first().name);
    co_await desktop.workspace.reveal(newest);
    co_return foundLine(entries);
}

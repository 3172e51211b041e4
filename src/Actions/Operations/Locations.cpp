// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Locations.h"

#include "Base/Text.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

// The location words, with their paths relative to the home folder.
const QHash<QString, QString> &locationWords()
{
    static const QHash<QString, QString> words{
        {u"desktop"_s, u"Desktop"_s},
        {u"downloads"_s, u"Downloads"_s},
        {u"downloads folder"_s, u"Downloads"_s},
        {u"documents"_s, u"Documents"_s},
        {u"pictures"_s, u"Pictures"_s},
        {u"home"_s, QString()},
        {u"~"_s, QString()},
    };
    return words;
}

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

} // namespace

QString Locations::resolveFolder(const QString &text, const QString &homeDirectory)
{
    // Keeps line breaks: a file name may begin or end with one.
    const QString trimmed = Text::trimmed(text, u" \t");
    QString key = Text::comparisonKey(trimmed);
    key.remove("~/"_L1).remove("my "_L1);
    const auto word = locationWords().constFind(key);
    if (word != locationWords().constEnd())
        return pathInside(homeDirectory, *word);
    if (trimmed == "~"_L1 || trimmed.startsWith("~/"_L1))
        return pathInside(homeDirectory, trimmed.mid(1));
    if (trimmed.startsWith(u'/'))
        return withoutTrailingSlashes(trimmed);
    // Includes "~someone": other users' home folders are not supported.
    return pathInside(homeDirectory, trimmed);
}

QString Locations::pathInside(const QString &folder, const QString &name)
{
    qsizetype start = 0;
    while (start < name.size() && name.at(start) == u'/')
        ++start;
    const QString parent = withoutTrailingSlashes(folder);
    const QString separator = parent.endsWith(u'/') ? QString() : u"/"_s;
    return withoutTrailingSlashes(parent + separator + name.mid(start));
}

QString Locations::lastComponent(const QString &path)
{
    const QString name = path.section(u'/', -1);
    return name.isEmpty() ? path : name;
}

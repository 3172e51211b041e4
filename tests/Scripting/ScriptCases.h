// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <optional>

// A script with its expected outcome: a result as written in a script, or the sentence of an error.
struct ScriptCase
{
    QString title;
    QString source;
    std::optional<QString> result;
    std::optional<QString> error;
};

// Reads files in which each script follows the lines "-- case: …" and "-- result: …" or "-- error: …".
namespace ScriptCases {

inline QString valueOf(const QString &line, const QString &label)
{
    return line.mid(label.size());
}

inline QList<ScriptCase> in(const QString &path)
{
    using namespace Qt::StringLiterals;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qUtf8Printable(path));
    QList<ScriptCase> cases;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        if (line.startsWith("-- case: "_L1))
            cases.append({valueOf(line, u"-- case: "_s), {}, {}, {}});
        else if (line.startsWith("-- result: "_L1))
            cases.last().result = valueOf(line, u"-- result: "_s);
        else if (line.startsWith("-- error: "_L1))
            cases.last().error = valueOf(line, u"-- error: "_s);
        else if (!cases.isEmpty() && !(line.isEmpty() && cases.last().source.isEmpty()))
            cases.last().source += line + u'\n';
    }
    for (ScriptCase &script : cases)
        script.source = script.source.trimmed();
    return cases;
}

} // namespace ScriptCases

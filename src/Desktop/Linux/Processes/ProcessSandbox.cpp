// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Processes/ProcessSandbox.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QByteArray content(const QString &path)
{
    constexpr qint64 most = 65536;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(most) : QByteArray();
}

// Parses a key file; `name` in group `[Application]` becomes "Application/name".
QHash<QString, QString> keyFile(const QByteArray &text)
{
    QHash<QString, QString> values;
    QString group;
    for (const QByteArray &bytes : text.split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(u'['))
            group = line.mid(1, line.size() - 2) + u'/';
        else if (line.contains(u'='))
            values.insert(group + line.section(u'=', 0, 0), line.section(u'=', 1));
    }
    return values;
}

// From the file that Flatpak places in the root of each sandbox.
std::optional<ProcessSandbox> fromFlatpakInfo(const QString &process)
{
    const auto values = keyFile(content(process + u"/root/.flatpak-info"_s));
    const QString application = values.value(u"Application/name"_s);
    if (application.isEmpty())
        return std::nullopt;
    return ProcessSandbox{application, values.value(u"Instance/instance-id"_s)};
}

// The last component of the cgroup path: "app-flatpak-org.gnome.TextEditor-1234.scope".
QString scopeOf(const QString &process)
{
    for (const QByteArray &line : content(process + u"/cgroup"_s).split('\n')) {
        if (line.startsWith("0::") || line.contains(":name=systemd:"))
            return QString::fromUtf8(line.mid(line.lastIndexOf('/') + 1));
    }
    return QString();
}

// systemd escapes a dash within a name as "\x2d".
QString unescaped(QString name)
{
    return name.replace(u"\\x2d"_s, u"-"_s);
}

std::optional<ProcessSandbox> flatpakOfScope(const QString &scope)
{
    static const QRegularExpression form(u"^(?:app-)?flatpak-(.+)-\\d+\\.scope$"_s);
    const auto match = form.match(scope);
    if (!match.hasMatch())
        return std::nullopt;
    return ProcessSandbox{unescaped(match.captured(1)), QString()};
}

// Child processes stay in a snap's scope even if their program isn't part of the snap, so check where the
// executable is.
std::optional<ProcessSandbox> snapOfScope(const QString &scope, const QString &process)
{
    static const QRegularExpression form(
        u"^snap\\.([^.]+)\\.([^.]+?)(?:[-.][0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12})?"
        "\\.(?:scope|service)$"_s);
    const auto match = form.match(scope);
    if (!match.hasMatch())
        return std::nullopt;
    const QString snap = unescaped(match.captured(1));
    const QString program = QFile::symLinkTarget(process + u"/exe"_s);
    if (!program.startsWith(u"/snap/%1/"_s.arg(snap)))
        return std::nullopt;
    return ProcessSandbox{snap + u'_' + unescaped(match.captured(2)), QString()};
}

} // namespace

std::optional<ProcessSandbox> ProcessSandbox::of(qint64 process, const QString &processes)
{
    const QString folder = processes + u'/' + QString::number(process);
    if (const auto sandbox = fromFlatpakInfo(folder))
        return sandbox;
    const QString scope = scopeOf(folder);
    const auto flatpak = flatpakOfScope(scope);
    return flatpak ? flatpak : snapOfScope(scope, folder);
}

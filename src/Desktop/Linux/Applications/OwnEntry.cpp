// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/OwnEntry.h"

#include "Desktop/PlatformError.h"

#include <OwnEntryText.h>

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QByteArray installedCommand = "Exec=orvane";
const QByteArray busActivation = "DBusActivatable=true\n";
const QByteArray mark = "X-Orvane-Integration=true\n";

// The program as the first word of Exec: quoted, then escaped as every string of an entry.
QByteArray quoted(const QString &executable)
{
    QByteArray result = executable.toUtf8();
    for (const char special : QByteArrayView("\\\"`$"))
        result.replace(special, QByteArray("\\") + special);
    result.replace('%', "%%");
    result.replace('\\', "\\\\");
    return '"' + result + '"';
}

bool isPlain(const QString &path)
{
    const auto isPlainCharacter = [](QChar each) {
        return each.isLetterOrNumber() || QStringView(u"/._+-").contains(each);
    };
    return std::all_of(path.cbegin(), path.cend(), isPlainCharacter);
}

std::optional<QByteArray> present()
{
    QFile file(OwnEntry::path());
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

} // namespace

QString OwnEntry::path()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) +
           u"/org.orvane.Orvane.desktop"_s;
}

QByteArray OwnEntry::textFor(const QString &executable)
{
    QByteArray text = ownEntryText;
    text.replace(installedCommand,
                 "Exec=" + (isPlain(executable) ? executable.toUtf8() : quoted(executable)));
    // Only an installed program can be started by the bus.
    text.replace(busActivation, mark);
    return text;
}

void OwnEntry::write(const QString &executable)
{
    const std::optional<QByteArray> old = present();
    if (old && !old->contains(mark))
        throw PlatformError(u"There is another desktop entry: %1"_s.arg(path()));
    const QByteArray text = textFor(executable);
    QSaveFile file(path());
    const bool isWritten = QDir().mkpath(QFileInfo(path()).path()) && file.open(QIODevice::WriteOnly) &&
                           file.write(text) == text.size() && file.commit();
    if (!isWritten)
        throw PlatformError(u"The desktop entry can't be written: %1"_s.arg(path()));
}

bool OwnEntry::remove()
{
    const std::optional<QByteArray> old = present();
    if (!old || !old->contains(mark))
        return false;
    if (!QFile::remove(path()))
        throw PlatformError(u"The desktop entry can't be removed: %1"_s.arg(path()));
    return true;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/HotKeyRefusal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString path()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return folder + u"/Orvane/hot-key-refused"_s;
}

} // namespace

bool HotKeyRefusal::isKept()
{
    return QFile::exists(path());
}

void HotKeyRefusal::keep()
{
    QDir().mkpath(QFileInfo(path()).path());
    QFile file(path());
    // Without a writable disk the desktop asks again.
    [[maybe_unused]] const bool isKept = file.open(QIODevice::WriteOnly);
}

void HotKeyRefusal::forget()
{
    QFile::remove(path());
}

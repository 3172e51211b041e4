// SPDX-License-Identifier: Apache-2.0
#include "Models/IdleTime.h"

#include "Base/SystemMemory.h"

#include <QSettings>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString key = u"keepIdleModel"_s;
const QString always = u"always"_s;
constexpr int longest = 7 * 24 * 60;

// 16 GB less what the firmware and a graphics unit keep for themselves.
constexpr qint64 largeMemory = 14'500'000'000;

} // namespace

IdleTime::Minutes IdleTime::standard(std::optional<qint64> totalMemory)
{
    const bool isLarge = totalMemory.value_or(largeMemory) >= largeMemory;
    return isLarge ? Minutes() : Minutes(15min);
}

IdleTime::Minutes IdleTime::chosen(const ModelStorage &storage)
{
    const QSettings settings(storage.settingsFile, QSettings::IniFormat);
    const std::optional<Minutes> stored = parsed(settings.value(key).toString());
    return stored ? *stored : standard(SystemMemory::total());
}

bool IdleTime::choose(const ModelStorage &storage, Minutes minutes)
{
    QSettings settings(storage.settingsFile, QSettings::IniFormat);
    settings.setValue(key, minutes ? QString::number(minutes->count()) : always);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

std::optional<IdleTime::Minutes> IdleTime::parsed(const QString &text)
{
    if (text == always)
        return Minutes();
    bool isNumber = false;
    const int minutes = text.toInt(&isNumber);
    if (!isNumber || minutes < 1 || minutes > longest)
        return std::nullopt;
    return Minutes(std::chrono::minutes(minutes));
}

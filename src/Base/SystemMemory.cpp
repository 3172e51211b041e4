// SPDX-License-Identifier: Apache-2.0
#include "Base/SystemMemory.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 bytesPerKilobyte = 1024;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The number in the line that begins with this name: "MemAvailable:  123 kB", "inactive_file 123".
std::optional<qint64> numberAfter(const QByteArray &name, const QByteArray &content)
{
    for (const QByteArray &line : content.split('\n')) {
        const QByteArrayList words = line.simplified().split(' ');
        bool isNumber = false;
        const qint64 number = words.value(1).toLongLong(&isNumber);
        if (words.first() == name && isNumber)
            return number;
    }
    return std::nullopt;
}

std::optional<qint64> numberIn(const QString &path)
{
    bool isNumber = false;
    const qint64 number = contentOf(path).trimmed().toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

// In bytes, of this line of what the system says about its memory.
std::optional<qint64> systemsWord(const QByteArray &name, const QString &root)
{
    const std::optional<qint64> kilobytes = numberAfter(name, contentOf(root + u"/proc/meminfo"_s));
    return kilobytes ? std::optional(*kilobytes * bytesPerKilobyte) : std::nullopt;
}

// Nothing without a limit.
std::optional<qint64> freeInGroup(const QString &folder)
{
    const std::optional<qint64> limit = numberIn(folder + u"/memory.max"_s);
    const std::optional<qint64> used = numberIn(folder + u"/memory.current"_s);
    if (!limit || !used)
        return std::nullopt;
    // Files that were read count as used, but give way.
    const QByteArray statistics = contentOf(folder + u"/memory.stat"_s);
    const qint64 givesWay = numberAfter("inactive_file", statistics).value_or(0);
    return std::max<qint64>(0, *limit - *used + givesWay);
}

// Nothing without a limit on any of the groups that the process is in.
std::optional<qint64> freeInGroups(const QString &root)
{
    QString group;
    for (const QByteArray &line : contentOf(root + u"/proc/self/cgroup"_s).split('\n')) {
        if (line.startsWith("0::"))
            group = QString::fromLocal8Bit(line.mid(3));
    }
    std::optional<qint64> least;
    while (group.startsWith(u'/')) {
        const std::optional<qint64> free = freeInGroup(root + u"/sys/fs/cgroup"_s + group);
        if (free)
            least = std::min(least.value_or(*free), *free);
        group.truncate(group.size() > 1 ? std::max<qsizetype>(1, group.lastIndexOf(u'/')) : 0);
    }
    return least;
}

} // namespace

std::optional<qint64> SystemMemory::available(const QString &root)
{
    const std::optional<qint64> inSystem = systemsWord("MemAvailable:", root);
    if (!inSystem)
        return std::nullopt;
    return std::min(*inSystem, freeInGroups(root).value_or(*inSystem));
}

std::optional<qint64> SystemMemory::total(const QString &root)
{
    return systemsWord("MemTotal:", root);
}

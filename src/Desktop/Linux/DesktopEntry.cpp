// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DesktopEntry.h"

namespace {

bool same(const QString &left, const QString &right)
{
    return !left.isEmpty() && left.compare(right, Qt::CaseInsensitive) == 0;
}

template <typename Rule>
const DesktopEntry *firstMatch(const QList<DesktopEntry> &entries, const Rule &matches)
{
    const DesktopEntry *hidden = nullptr;
    for (const DesktopEntry &entry : entries) {
        if (!matches(entry))
            continue;
        if (entry.isShown)
            return &entry;
        if (!hidden)
            hidden = &entry;
    }
    return hidden;
}

} // namespace

const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const QString &instance,
                                  const QString &className)
{
    // The instance is the more special name: a browser's installed web application has its own there.
    for (const QString &name : {instance, className}) {
        const auto namesClass = [&name](const DesktopEntry &entry) { return same(entry.windowClass, name); };
        if (const DesktopEntry *entry = firstMatch(entries, namesClass))
            return entry;
    }
    for (const QString &name : {className, instance}) {
        const auto isClass = [&name](const DesktopEntry &entry) { return same(entry.identifier, name); };
        if (const DesktopEntry *entry = firstMatch(entries, isClass))
            return entry;
    }
    for (const QString &name : {className, instance}) {
        const auto endsInClass = [&name](const DesktopEntry &entry) {
            return same(entry.identifier.section(u'.', -1), name);
        };
        if (const DesktopEntry *entry = firstMatch(entries, endsInClass))
            return entry;
    }
    for (const QString &name : {className, instance}) {
        const auto runsProgram = [&name](const DesktopEntry &entry) { return same(entry.executable, name); };
        if (const DesktopEntry *entry = firstMatch(entries, runsProgram))
            return entry;
    }
    return nullptr;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <algorithm>

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

// The entry id of a snap's program is "snap_program": "firefox_firefox".
bool isOfSandbox(const DesktopEntry &entry, const QString &sandbox)
{
    const qsizetype snap = sandbox.indexOf(u'_') + 1;
    const bool isOfSnap = snap > 0 && entry.identifier.startsWith(QStringView(sandbox).first(snap));
    return entry.identifier == sandbox || entry.flatpak == sandbox || isOfSnap;
}

const DesktopEntry *entryOfSandbox(const QList<DesktopEntry> &entries, const DesktopWindow &window)
{
    const auto isOwn = [&window](const DesktopEntry &entry) { return isOfSandbox(entry, window.sandbox); };
    const auto isMain = [&window](const DesktopEntry &entry) { return entry.identifier == window.sandbox; };
    QList<DesktopEntry> own;
    std::copy_if(entries.cbegin(), entries.cend(), std::back_inserter(own), isOwn);
    if (const DesktopEntry *forClass = entryOfWindow(own, window.instance, window.className)) {
        const QString identifier = forClass->identifier;
        const auto isSame = [&](const DesktopEntry &entry) { return entry.identifier == identifier; };
        return firstMatch(entries, isSame);
    }
    const DesktopEntry *main = firstMatch(entries, isMain);
    return main ? main : firstMatch(entries, isOwn);
}

} // namespace

const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const DesktopWindow &window)
{
    if (!window.sandbox.isEmpty()) {
        if (const DesktopEntry *entry = entryOfSandbox(entries, window))
            return entry;
    }
    const auto isNamed = [&window](const DesktopEntry &entry) {
        return same(entry.identifier, window.applicationIdentifier);
    };
    const DesktopEntry *named = firstMatch(entries, isNamed);
    return named ? named : entryOfWindow(entries, window.instance, window.className);
}

const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const QString &instance,
                                  const QString &className)
{
    // The instance is more specific: a browser's installed web applications differ in it.
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

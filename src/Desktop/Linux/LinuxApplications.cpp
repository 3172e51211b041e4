// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxApplications.h"

#include "Base/Text.h"

#include <algorithm>

namespace {

RunningApplication described(const X11Window &window, const QList<DesktopEntry> &entries)
{
    RunningApplication application;
    application.processIdentifier = window.process;
    if (const DesktopEntry *entry = entryOfWindow(entries, window.instance, window.className)) {
        application.localizedName = entry->name;
        application.bundle = LinuxApplications::bundleOf(*entry);
        return application;
    }
    const QString name = Text::cleaned(window.className.isEmpty() ? window.instance : window.className);
    if (!name.isEmpty())
        application.localizedName = name;
    return application;
}

} // namespace

ApplicationBundle LinuxApplications::bundleOf(const DesktopEntry &entry)
{
    return {entry.path, entry.name};
}

QList<RunningApplication> LinuxApplications::running(const X11Snapshot &snapshot,
                                                     const QList<DesktopEntry> &entries)
{
    QList<RunningApplication> result;
    for (const X11Window &window : snapshot.windows) {
        const auto isSame = [&window](const RunningApplication &each) {
            return each.processIdentifier == window.process;
        };
        if (std::any_of(result.cbegin(), result.cend(), isSame))
            continue;
        if (auto application = ofProcess(window.process, snapshot, entries))
            result.append(std::move(*application));
    }
    return result;
}

std::optional<RunningApplication> LinuxApplications::ofProcess(qint64 process, const X11Snapshot &snapshot,
                                                               const QList<DesktopEntry> &entries)
{
    const X11Window *first = nullptr;
    bool isRegular = false;
    for (const X11Window &window : snapshot.windows) {
        if (window.process != process)
            continue;
        if (!first)
            first = &window;
        isRegular = isRegular || window.belongsInTaskBar;
    }
    if (!first)
        return std::nullopt;
    RunningApplication application = described(*first, entries);
    application.isRegular = isRegular;
    return application;
}

const X11Window *LinuxApplications::windowToShow(const ApplicationBundle &bundle, const X11Snapshot &snapshot,
                                                 const QList<DesktopEntry> &entries)
{
    // Of several processes of the application, the one that has been there longest.
    for (const RunningApplication &application : running(snapshot, entries)) {
        if (!application.isRegular || application.bundle != bundle)
            continue;
        if (const X11Window *window = snapshot.windowToShow(application.processIdentifier))
            return window;
    }
    return nullptr;
}

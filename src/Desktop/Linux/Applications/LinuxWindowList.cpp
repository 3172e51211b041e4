// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/LinuxWindowList.h"

#include "Desktop/Linux/Applications/DesktopEntries.h"
#include "Desktop/Linux/Applications/LinuxApplications.h"

#include <QCoreApplication>

namespace {

QList<WindowDescription> described(const X11Snapshot &windows, const QList<DesktopEntry> &entries)
{
    const X11Snapshot snapshot = LinuxApplications::withParts(windows, entries);
    QList<WindowDescription> result;
    for (const X11Window &window : snapshot.frontToBack()) {
        if (!window.isOnScreen())
            continue;
        WindowDescription description;
        description.layer = 0;
        description.ownerProcessIdentifier = window.process;
        description.ownerName = LinuxApplications::ofWindow(window, snapshot, entries).localizedName;
        description.name = window.title;
        result.append(description);
    }
    return result;
}

} // namespace

LinuxWindowList::LinuxWindowList(X11Display &display, BoundedQueue &gio) : m_display(display), m_gio(gio) {}

QCoro::Task<QList<WindowDescription>> LinuxWindowList::onScreenWindows()
{
    try {
        const X11Snapshot snapshot = co_await m_display.snapshot();
        const QList<DesktopEntry> entries = co_await m_gio.run(&DesktopEntries::all);
        co_return described(snapshot, entries);
    } catch (const PlatformError &) {
        co_return QList<WindowDescription>();
    }
}

qint64 LinuxWindowList::ownProcessIdentifier() const
{
    return QCoreApplication::applicationPid();
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

#include <algorithm>

const DesktopWindow *WindowSnapshot::find(std::uint32_t identifier) const
{
    const auto window =
        std::find_if(windows.cbegin(), windows.cend(),
                     [identifier](const DesktopWindow &each) { return each.identifier == identifier; });
    return window == windows.cend() ? nullptr : &*window;
}

const DesktopWindow *WindowSnapshot::active() const
{
    return activeWindow ? find(*activeWindow) : nullptr;
}

QList<DesktopWindow> WindowSnapshot::frontToBack() const
{
    QList<DesktopWindow> result;
    for (const std::uint32_t identifier : stacking) {
        if (const DesktopWindow *window = find(identifier))
            result.append(*window);
    }
    return result;
}

QList<std::uint32_t> WindowSnapshot::byRecency() const
{
    QList<std::uint32_t> result;
    if (activeWindow)
        result.append(*activeWindow);
    for (const QList<std::uint32_t> &source : {recentlyActivated, stacking}) {
        for (const std::uint32_t identifier : source) {
            if (!result.contains(identifier))
                result.append(identifier);
        }
    }
    return result;
}

const DesktopWindow *WindowSnapshot::frontmost(qint64 ownProcess) const
{
    const DesktopWindow *activeNow = active();
    if (!activeNow || activeNow->process != ownProcess)
        return activeNow && activeNow->isOnScreen() ? activeNow : nullptr;
    for (const std::uint32_t identifier : byRecency()) {
        const DesktopWindow *window = find(identifier);
        if (window && window->isOnScreen() && window->process != ownProcess)
            return window;
    }
    return nullptr;
}

const DesktopWindow *WindowSnapshot::windowToShow(qint64 process, const QString &part) const
{
    const DesktopWindow *hidden = nullptr;
    for (const std::uint32_t identifier : byRecency()) {
        const DesktopWindow *window = find(identifier);
        if (!window || !window->isOf(process, part) || !window->isOrdinary())
            continue;
        if (window->isOnScreen())
            return window;
        if (!hidden)
            hidden = window;
    }
    return hidden;
}

QStringList WindowSnapshot::titlesInFront(qint64 process, const QString &part) const
{
    const DesktopWindow *front = windowToShow(process, part);
    if (!front)
        return {};
    QStringList titles{front->title};
    for (const DesktopWindow &window : windows) {
        const bool blocks = window.isModal && window.transientFor == front->identifier && window.isOnScreen();
        if (blocks && window.process == process)
            titles.prepend(window.title);
    }
    return titles;
}

QStringList WindowSnapshot::foreignTitles(qint64 process, const QString &part) const
{
    QStringList own;
    QStringList foreign;
    for (const DesktopWindow &window : windows) {
        if (window.process == process)
            (window.isOf(process, part) ? own : foreign).append(window.title);
    }
    foreign.removeIf([&own](const QString &title) { return own.contains(title); });
    return foreign;
}

QList<DesktopWindow> WindowSnapshot::windowsToClose(qint64 process, const QString &part) const
{
    QList<DesktopWindow> main;
    QList<DesktopWindow> others;
    for (const DesktopWindow &window : windows) {
        if (!window.isOf(process, part) || !window.isOrdinary() || !window.canBeClosed)
            continue;
        if (window.kind == DesktopWindow::Kind::Application)
            main.append(window);
        else
            others.append(window);
    }
    return main.isEmpty() ? others : main;
}

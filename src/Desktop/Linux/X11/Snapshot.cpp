// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Snapshot.h"

#include <algorithm>

const X11Window *X11Snapshot::find(std::uint32_t identifier) const
{
    const auto window = std::find_if(windows.cbegin(), windows.cend(), [identifier](const X11Window &each) {
        return each.identifier == identifier;
    });
    return window == windows.cend() ? nullptr : &*window;
}

const X11Window *X11Snapshot::active() const
{
    return activeWindow ? find(*activeWindow) : nullptr;
}

QList<X11Window> X11Snapshot::frontToBack() const
{
    QList<X11Window> result;
    for (const std::uint32_t identifier : stacking) {
        if (const X11Window *window = find(identifier))
            result.append(*window);
    }
    return result;
}

QList<std::uint32_t> X11Snapshot::byRecency() const
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

const X11Window *X11Snapshot::frontmost(qint64 ownProcess) const
{
    const X11Window *activeNow = active();
    if (!activeNow || activeNow->process != ownProcess)
        return activeNow && activeNow->isOnScreen() ? activeNow : nullptr;
    for (const std::uint32_t identifier : byRecency()) {
        const X11Window *window = find(identifier);
        if (window && window->isOnScreen() && window->process != ownProcess)
            return window;
    }
    return nullptr;
}

const X11Window *X11Snapshot::windowToShow(qint64 process, const QString &part) const
{
    const X11Window *hidden = nullptr;
    for (const std::uint32_t identifier : byRecency()) {
        const X11Window *window = find(identifier);
        if (!window || !window->isOf(process, part) || !window->isOrdinary())
            continue;
        if (window->isOnScreen())
            return window;
        if (!hidden)
            hidden = window;
    }
    return hidden;
}

QStringList X11Snapshot::titlesInFront(qint64 process, const QString &part) const
{
    const X11Window *front = windowToShow(process, part);
    if (!front)
        return {};
    QStringList titles{front->title};
    for (const X11Window &window : windows) {
        const bool blocks = window.isModal && window.transientFor == front->identifier && window.isOnScreen();
        if (blocks && window.process == process)
            titles.prepend(window.title);
    }
    return titles;
}

QStringList X11Snapshot::foreignTitles(qint64 process, const QString &part) const
{
    QStringList own;
    QStringList foreign;
    for (const X11Window &window : windows) {
        if (window.process == process)
            (window.isOf(process, part) ? own : foreign).append(window.title);
    }
    foreign.removeIf([&own](const QString &title) { return own.contains(title); });
    return foreign;
}

QList<X11Window> X11Snapshot::windowsToClose(qint64 process, const QString &part) const
{
    QList<X11Window> main;
    QList<X11Window> others;
    for (const X11Window &window : windows) {
        if (!window.isOf(process, part) || !window.isOrdinary() || !window.canBeClosed)
            continue;
        if (window.kind == X11Window::Kind::Application)
            main.append(window);
        else
            others.append(window);
    }
    return main.isEmpty() ? others : main;
}

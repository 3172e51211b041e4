// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/LinuxApplications.h"

#include "Base/Text.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

RunningApplication described(const X11Window &window, const QList<DesktopEntry> &entries)
{
    RunningApplication application;
    application.processIdentifier = window.process;
    application.part = window.part;
    if (const DesktopEntry *entry = entryOfWindow(entries, window)) {
        application.localizedName = entry->name;
        application.bundle = LinuxApplications::bundleOf(*entry);
        application.otherNames = LinuxApplications::namesOf(*entry);
        return application;
    }
    const QString name = Text::cleaned(window.className.isEmpty() ? window.instance : window.className);
    if (!name.isEmpty())
        application.localizedName = name;
    return application;
}

// The main window of a (nested) dialog; a main window itself.
const X11Window &mainWindow(const X11Window &window, const X11Snapshot &snapshot)
{
    constexpr int mostSteps = 8; // WM_TRANSIENT_FOR may be cyclic
    const X11Window *main = &window;
    for (int step = 0; step < mostSteps; ++step) {
        const X11Window *next = snapshot.find(main->transientFor);
        if (!next || next->process != window.process)
            break;
        main = next;
    }
    return *main;
}

QString partOf(const X11Window &window, const QList<DesktopEntry> &entries)
{
    if (const DesktopEntry *entry = entryOfWindow(entries, window))
        return entry->path;
    return window.className.isEmpty() ? window.instance : window.className;
}

} // namespace

X11Snapshot LinuxApplications::withParts(X11Snapshot snapshot, const QList<DesktopEntry> &entries)
{
    const X11Snapshot windows = snapshot;
    QHash<qint64, QString> firstPart; // by process, for its windows without an entry or class
    for (X11Window &window : snapshot.windows) {
        window.part = partOf(mainWindow(window, windows), entries);
        if (!window.part.isEmpty() && !firstPart.contains(window.process))
            firstPart.insert(window.process, window.part);
    }
    for (X11Window &window : snapshot.windows) {
        if (window.part.isEmpty())
            window.part = firstPart.value(window.process);
    }
    return snapshot;
}

ApplicationBundle LinuxApplications::bundleOf(const DesktopEntry &entry)
{
    return {entry.path, entry.name};
}

ApplicationNames LinuxApplications::namesOf(const DesktopEntry &entry)
{
    static const QRegularExpression runsOthers(
        u"^(?:sh|bash|dash|env|flatpak|snap|java|mono|wine|pkexec|sudo|xdg-open|gtk-launch|exo-open|"
        "gapplication|python[0-9.]*|perl|node|electron[0-9]*)$"_s);
    const bool isItself = !runsOthers.match(entry.executable).hasMatch();
    return {entry.englishName, entry.identifier, isItself ? entry.executable : QString()};
}

QList<RunningApplication> LinuxApplications::running(const X11Snapshot &snapshot,
                                                     const QList<DesktopEntry> &entries)
{
    QList<RunningApplication> result;
    for (const X11Window &window : snapshot.windows) {
        const auto isSame = [&window](const RunningApplication &each) {
            return window.isOf(each.processIdentifier, each.part);
        };
        if (std::none_of(result.cbegin(), result.cend(), isSame))
            result.append(ofWindow(window, snapshot, entries));
    }
    return result;
}

RunningApplication LinuxApplications::ofWindow(const X11Window &window, const X11Snapshot &snapshot,
                                               const QList<DesktopEntry> &entries)
{
    const auto isSame = [&window](const X11Window &each) { return each.isOf(window.process, window.part); };
    const auto first = std::find_if(snapshot.windows.cbegin(), snapshot.windows.cend(), isSame);
    const X11Window &known = first == snapshot.windows.cend() ? window : *first;
    RunningApplication application = described(mainWindow(known, snapshot), entries);
    application.isRegular =
        std::any_of(snapshot.windows.cbegin(), snapshot.windows.cend(),
                    [&isSame](const X11Window &each) { return isSame(each) && each.belongsInTaskBar; });
    return application;
}

const X11Window *LinuxApplications::windowToShow(const ApplicationBundle &bundle, const X11Snapshot &snapshot,
                                                 const QList<DesktopEntry> &entries)
{
    // If several processes run the application, take the oldest.
    for (const RunningApplication &application : running(snapshot, entries)) {
        if (!application.isRegular || application.bundle != bundle)
            continue;
        if (const X11Window *window = snapshot.windowToShow(application.processIdentifier, application.part))
            return window;
    }
    return nullptr;
}

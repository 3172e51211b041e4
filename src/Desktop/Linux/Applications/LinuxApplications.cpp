// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/LinuxApplications.h"

#include "Base/Text.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

RunningApplication described(const DesktopWindow &window, const QList<DesktopEntry> &entries)
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
const DesktopWindow &mainWindow(const DesktopWindow &window, const WindowSnapshot &snapshot)
{
    constexpr int mostSteps = 8; // WM_TRANSIENT_FOR may be cyclic
    const DesktopWindow *main = &window;
    for (int step = 0; step < mostSteps; ++step) {
        const DesktopWindow *next = snapshot.find(main->transientFor);
        if (!next || next->process != window.process)
            break;
        main = next;
    }
    return *main;
}

QString partOf(const DesktopWindow &window, const QList<DesktopEntry> &entries)
{
    if (const DesktopEntry *entry = entryOfWindow(entries, window))
        return entry->path;
    return window.className.isEmpty() ? window.instance : window.className;
}

} // namespace

WindowSnapshot LinuxApplications::withParts(WindowSnapshot snapshot, const QList<DesktopEntry> &entries)
{
    const WindowSnapshot windows = snapshot;
    QHash<qint64, QString> firstPart; // by process, for its windows without an entry or class
    for (DesktopWindow &window : snapshot.windows) {
        window.part = partOf(mainWindow(window, windows), entries);
        if (!window.part.isEmpty() && !firstPart.contains(window.process))
            firstPart.insert(window.process, window.part);
    }
    for (DesktopWindow &window : snapshot.windows) {
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

QList<RunningApplication> LinuxApplications::running(const WindowSnapshot &snapshot,
                                                     const QList<DesktopEntry> &entries)
{
    QList<RunningApplication> result;
    for (const DesktopWindow &window : snapshot.windows) {
        const auto isSame = [&window](const RunningApplication &each) {
            return window.isOf(each.processIdentifier, each.part);
        };
        if (std::none_of(result.cbegin(), result.cend(), isSame))
            result.append(ofWindow(window, snapshot, entries));
    }
    return result;
}

RunningApplication LinuxApplications::ofWindow(const DesktopWindow &window, const WindowSnapshot &snapshot,
                                               const QList<DesktopEntry> &entries)
{
    const auto isSame = [&window](const DesktopWindow &each) {
        return each.isOf(window.process, window.part);
    };
    const auto first = std::find_if(snapshot.windows.cbegin(), snapshot.windows.cend(), isSame);
    const DesktopWindow &known = first == snapshot.windows.cend() ? window : *first;
    RunningApplication application = described(mainWindow(known, snapshot), entries);
    application.isRegular =
        std::any_of(snapshot.windows.cbegin(), snapshot.windows.cend(),
                    [&isSame](const DesktopWindow &each) { return isSame(each) && each.belongsInTaskBar; });
    return application;
}

const DesktopWindow *LinuxApplications::windowToShow(const ApplicationBundle &bundle,
                                                     const WindowSnapshot &snapshot,
                                                     const QList<DesktopEntry> &entries)
{
    // If several processes run the application, take the oldest.
    for (const RunningApplication &application : running(snapshot, entries)) {
        if (!application.isRegular || application.bundle != bundle)
            continue;
        if (const DesktopWindow *window =
                snapshot.windowToShow(application.processIdentifier, application.part))
            return window;
    }
    return nullptr;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/ApplicationRoles.h"

#include "Base/Text.h"

#include <QHash>

#include <algorithm>

namespace {

QStringList list(const char *texts)
{
    return QString::fromLatin1(texts).split(u' ', Qt::SkipEmptyParts);
}

ApplicationRole role(const char *types, const char *identifiers, const char *category)
{
    return {list(types), list(identifiers), QString::fromLatin1(category)};
}

// The Settings category also contains every small panel, so list the known settings centres.
constexpr const char *settingsCentres =
    "org.gnome.Settings gnome-control-center systemsettings org.kde.systemsettings xfce-settings-manager "
    "cinnamon-settings matecc lxqt-config budgie-control-center unity-control-center io.elementary.settings";
constexpr const char *terminals =
    "x-terminal-emulator org.gnome.Console org.gnome.Ptyxis org.gnome.Terminal org.kde.konsole "
    "xfce4-terminal mate-terminal qterminal lxterminal";
constexpr const char *monitors =
    "org.gnome.SystemMonitor gnome-system-monitor org.kde.plasma-systemmonitor xfce4-taskmanager "
    "mate-system-monitor qps";

QHash<QString, ApplicationRole> table()
{
    QHash<QString, ApplicationRole> roles;
    const auto add = [&roles](const char *name, const ApplicationRole &meaning) {
        roles.insert(Text::comparisonKey(QString::fromLatin1(name)), meaning);
    };
    add("Finder", role("inode/directory", "", "FileManager"));
    add("Safari", role("x-scheme-handler/https x-scheme-handler/http text/html", "", "WebBrowser"));
    add("Mail", role("x-scheme-handler/mailto", "", "Email"));
    add("TextEdit", role("text/plain", "", "TextEditor"));
    add("Preview", role("application/pdf image/png", "", "Viewer"));
    add("Terminal", role("x-scheme-handler/terminal", terminals, "TerminalEmulator"));
    add("System Settings", role("", settingsCentres, ""));
    add("System Preferences", role("", settingsCentres, ""));
    add("Calculator", role("", "", "Calculator"));
    add("Calendar", role("text/calendar x-scheme-handler/webcal", "", "Calendar"));
    add("Contacts", role("text/vcard", "", "ContactManagement"));
    add("Music", role("audio/mpeg audio/x-mpegurl", "", "Music"));
    add("iTunes", role("audio/mpeg audio/x-mpegurl", "", "Music"));
    add("Photos", role("image/jpeg image/png", "", "Photography"));
    add("QuickTime Player", role("video/mp4 video/quicktime", "", "Video"));
    add("TV", role("video/mp4", "", "Video"));
    add("Books", role("application/epub+zip", "", "Literature"));
    add("Maps", role("x-scheme-handler/geo x-scheme-handler/maps", "", "Maps"));
    add("Messages", role("x-scheme-handler/sms x-scheme-handler/xmpp", "", "InstantMessaging"));
    add("App Store", role("x-scheme-handler/appstream", "", "PackageManager"));
    add("Activity Monitor", role("", monitors, "Monitor"));
    add("Disk Utility", role("application/x-raw-disk-image", "org.gnome.DiskUtility", ""));
    return roles;
}

} // namespace

const ApplicationRole *ApplicationRoles::named(const QString &name)
{
    static const QHash<QString, ApplicationRole> roles = table();
    const auto found = roles.constFind(Text::comparisonKey(name.trimmed()));
    return found == roles.constEnd() ? nullptr : &*found;
}

std::optional<DesktopEntry> ApplicationRoles::fill(const ApplicationRole &role,
                                                   const QList<DesktopEntry> &entries,
                                                   const DefaultForType &defaultForType)
{
    for (const QString &type : role.types) {
        if (auto entry = defaultForType(type))
            return entry;
    }
    const auto first = [&entries](const auto &matches) -> std::optional<DesktopEntry> {
        const auto entry = std::find_if(entries.cbegin(), entries.cend(), matches);
        return entry == entries.cend() ? std::nullopt : std::optional(*entry);
    };
    for (const QString &identifier : role.identifiers) {
        const auto hasName = [&identifier](const DesktopEntry &entry) {
            return entry.identifier.compare(identifier, Qt::CaseInsensitive) == 0;
        };
        // Only now: a program may have several entries, such as one for its settings.
        const auto runsProgram = [&identifier](const DesktopEntry &entry) {
            return entry.executable.compare(identifier, Qt::CaseInsensitive) == 0;
        };
        if (auto entry = first(hasName))
            return entry;
        if (auto entry = first(runsProgram))
            return entry;
    }
    return first([&role](const DesktopEntry &entry) {
        return entry.isShown && entry.categories.contains(role.category);
    });
}

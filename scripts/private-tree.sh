# SPDX-License-Identifier: Apache-2.0
# Private desktops that run in a tree made by scripts/desktop-tree. Sourced by bash in scripts/private-desktop, in a mount
# namespace of its own. Only the desktop and its services run in the tree ($tree); the command and the applications run
# outside. Both see the same checkout and session folder, by which they find each other. Uses $tree, $folder and $checkout of its caller.

# in_tree COMMAND...
in_tree() { chroot "$tree" "$@"; }

# mount_tree CHECKOUT FOLDER
mount_tree() {
    local shared
    mount -t proc proc "$tree/proc"
    mount --rbind /sys "$tree/sys"
    mount --rbind /dev "$tree/dev"
    # Fresh, for the system bus, the session folder and for what the desktop is to take for installed.
    mount -t tmpfs tmpfs "$tree/run"
    mount -t tmpfs tmpfs "$tree/tmp"
    mount -t tmpfs tmpfs "$tree/usr/local"
    for shared in "$1" "$2"; do
        mkdir -p "$tree$shared"
        mount --rbind "$shared" "$tree$shared"
    done
}

# Desktops identify windows by the installed applications, and ignore entries whose program is missing: shows them the
# entries of the applications outside, with an empty file for each program.
install_entries() {
    local entries=$tree/usr/local/share/applications program
    mkdir -p "$entries" "$tree/usr/local/bin"
    cp /usr/share/applications/*.desktop "$entries"
    while IFS= read -r program; do
        install -m 755 /dev/null "$tree/usr/local/bin/$program"
    done < <(sed -nE 's/^(Try)?Exec="?([^" /]+).*/\2/p' "$entries"/*.desktop | sort -u)
}

# adopt_services NAME...: the session bus starts these services in the tree.
adopt_services() {
    local services=$XDG_RUNTIME_DIR/dbus-1/services name
    mkdir -p "$services"
    for name in "$@"; do
        sed -E -e "s#^Exec=#Exec=$(command -v chroot) $tree #" -e '/^(SystemdService|AssumedAppArmorLabel)=/d' \
            "$tree/usr/share/dbus-1/services/$name.service" >"$services/$name.service"
    done
}

start_system_bus() {
    mkdir -p "$tree/run/dbus"
    in_tree dbus-uuidgen --ensure
    in_tree dbus-daemon --system --nofork --nopidfile </dev/null >"$folder/system-bus.log" 2>&1 &
    disown $!
}

start_gnome() {
    local shell keyboard log=$folder/compositor.log
    export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_DESKTOP=gnome DESKTOP_SESSION=gnome \
        GDK_BACKEND=wayland QT_QPA_PLATFORM=wayland MOZ_ENABLE_WAYLAND=1 WAYLAND_DISPLAY=wayland-0
    install_entries
    adopt_services org.freedesktop.IBus org.freedesktop.impl.portal.PermissionStore \
        org.freedesktop.impl.portal.desktop.gnome org.freedesktop.impl.portal.desktop.gtk \
        org.freedesktop.portal.Desktop org.freedesktop.portal.Documents org.gnome.ScreenSaver org.gnome.Settings \
        org.gnome.Settings.GlobalShortcutsProvider org.gnome.Shell.Notifications org.gnome.Shell.Screencast
    start_system_bus
    start_bus
    enable_accessibility
    in_tree gnome-shell --headless --wayland --no-x11 --wayland-display "$WAYLAND_DISPLAY" --virtual-monitor 1280x800 \
        </dev/null >"$log" 2>&1 &
    shell=$!
    disown "$shell"
    await "The compositor" "$shell" "$log" gnome_overview_is true
    gnome_property Set false >/dev/null
    await "The desktop" "$shell" "$log" gnome_overview_is false
    in_tree gjs -m "$checkout/scripts/gnome-keyboard.js" </dev/null >"$folder/keyboard.log" 2>&1 &
    keyboard=$!
    disown "$keyboard"
    await "The keyboard" "$keyboard" "$folder/keyboard.log" grep -q ready "$folder/keyboard.log"
}

gnome_property() {
    dbus-send --session --print-reply --reply-timeout=10000 --dest=org.gnome.Shell /org/gnome/Shell \
        "org.freedesktop.DBus.Properties.$1" string:org.gnome.Shell string:OverviewActive ${2:+"variant:boolean:$2"} \
        2>/dev/null
}

# After login the shell shows its overview, in which no window has the focus.
gnome_overview_is() { gnome_property Get | grep -q "boolean $1"; }

# KWin finds desktop entries through a menu, which none of the packages that it needs brings along.
make_menu() {
    mkdir -p "$folder/menus/menus"
    cat >"$folder/menus/menus/applications.menu" <<'TEXT'
<!DOCTYPE Menu PUBLIC "-//freedesktop//DTD Menu 1.0//EN" "http://www.freedesktop.org/standards/menu-spec/1.0/menu.dtd">
<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>
TEXT
}

# Without a graphics card, KWin draws in memory, and takes no pictures.
start_kde() {
    local compositor log=$folder/compositor.log
    export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=KDE XDG_SESSION_DESKTOP=KDE GDK_BACKEND=wayland \
        QT_QPA_PLATFORM=wayland MOZ_ENABLE_WAYLAND=1 WAYLAND_DISPLAY=wayland-0
    install_entries
    make_menu
    start_bus
    enable_accessibility
    # A capability that a program's file has doesn't work on every machine; without it KWin runs at normal priority.
    in_tree setcap -r /usr/bin/kwin_wayland 2>/dev/null
    in_tree env -u QT_QPA_PLATFORM -u WAYLAND_DISPLAY XDG_CONFIG_DIRS="$folder/menus" \
        kwin_wayland --virtual --width 1280 --height 800 --no-lockscreen --socket "$WAYLAND_DISPLAY" \
        </dev/null >"$log" 2>&1 &
    compositor=$!
    disown "$compositor"
    await "The compositor" "$compositor" "$log" wayland_socket_exists
}

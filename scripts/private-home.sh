# SPDX-License-Identifier: Apache-2.0
# The home folder of a private desktop. Sourced by bash in scripts/private-desktop.

# make_home: fills the new folder $HOME with the user's folders, the choice of applications and their settings.
make_home() {
    mkdir -p "$HOME"/{Desktop,Documents,Downloads,Music,Pictures,Videos,.config,.cache,.local/share}
    cat >"$HOME/.config/user-dirs.dirs" <<'TEXT'
XDG_DESKTOP_DIR="$HOME/Desktop"
XDG_DOCUMENTS_DIR="$HOME/Documents"
XDG_DOWNLOAD_DIR="$HOME/Downloads"
XDG_MUSIC_DIR="$HOME/Music"
XDG_PICTURES_DIR="$HOME/Pictures"
XDG_VIDEOS_DIR="$HOME/Videos"
TEXT
    choose_applications >"$HOME/.config/mimeapps.list"
    # Mousepad must not ask about an interrupted session, nor about changes of a file by others: on a busy computer it
    # takes its own saving for one.
    mkdir -p "$HOME/.config/glib-2.0/settings"
    cat >"$HOME/.config/glib-2.0/settings/keyfile" <<'TEXT'
[org/xfce/mousepad/preferences/file]
monitor-changes=false
session-restore='never'
TEXT
    make_firefox_profile
}

# default_for "ENTRY..." TYPE...: makes the first installed desktop entry the default for these types.
default_for() {
    local entry base type entries=$1
    shift
    for entry in $entries; do
        while IFS= read -r -d : base; do
            [ -f "$base/applications/$entry.desktop" ] || continue
            for type in "$@"; do
                printf '%s=%s.desktop\n' "$type" "$entry"
            done
            return
        done <<<"${XDG_DATA_DIRS:-/usr/local/share:/usr/share}:"
    done
}

choose_applications() {
    local browsers="firefox-esr firefox chromium"
    echo "[Default Applications]"
    default_for "thunar org.gnome.Nautilus pcmanfm" inode/directory
    default_for "$browsers" x-scheme-handler/http x-scheme-handler/https text/html
    default_for "org.xfce.mousepad org.gnome.TextEditor featherpad" text/plain
    default_for "org.gnome.Evince $browsers" application/pdf
    default_for "org.gnome.eog $browsers" image/png image/jpeg image/gif
}

# make_firefox_profile: without first-run pages, prompts, updates or reports, and without network access beyond this
# machine.
make_firefox_profile() {
    local profile=$HOME/.mozilla/firefox/private
    mkdir -p "$profile"
    cat >"$HOME/.mozilla/firefox/profiles.ini" <<'TEXT'
[General]
StartWithLastProfile=1
Version=2

[Profile0]
Name=private
IsRelative=1
Path=private
Default=1
TEXT
    cat >"$profile/user.js" <<'TEXT'
user_pref("app.normandy.enabled", false);
user_pref("app.shield.optoutstudies.enabled", false);
user_pref("app.update.enabled", false);
user_pref("browser.aboutConfig.showWarning", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.bookmarks.restore_default_bookmarks", false);
user_pref("browser.contentblocking.introCount", 99);
user_pref("browser.discovery.enabled", false);
user_pref("browser.messaging-system.whatsNewPanel.enabled", false);
user_pref("browser.newtabpage.enabled", false);
user_pref("browser.preonboarding.enabled", false);
user_pref("browser.region.update.enabled", false);
user_pref("browser.safebrowsing.downloads.remote.enabled", false);
user_pref("browser.safebrowsing.malware.enabled", false);
user_pref("browser.safebrowsing.phishing.enabled", false);
user_pref("browser.search.update", false);
user_pref("browser.sessionstore.resume_from_crash", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage", "about:blank");
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("browser.startup.page", 0);
user_pref("browser.tabs.warnOnClose", false);
user_pref("browser.topsites.contile.enabled", false);
user_pref("browser.translations.enable", false);
user_pref("browser.uitour.enabled", false);
user_pref("browser.urlbar.suggest.searches", false);
user_pref("browser.warnOnQuit", false);
user_pref("datareporting.healthreport.uploadEnabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("datareporting.usage.uploadEnabled", false);
user_pref("dom.disable_open_during_load", false);
user_pref("dom.push.connection.enabled", false);
user_pref("extensions.getAddons.cache.enabled", false);
user_pref("extensions.systemAddon.update.enabled", false);
user_pref("extensions.update.enabled", false);
user_pref("gfx.webrender.software", true);
user_pref("media.gmp-manager.updateEnabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("network.dns.disablePrefetch", true);
user_pref("network.prefetch-next", false);
user_pref("network.proxy.http", "127.0.0.1");
user_pref("network.proxy.http_port", 9);
user_pref("network.proxy.ssl", "127.0.0.1");
user_pref("network.proxy.ssl_port", 9);
user_pref("network.proxy.type", 1);
user_pref("privacy.sanitize.sanitizeOnShutdown", false);
user_pref("services.settings.server", "data:,");
user_pref("signon.rememberSignons", false);
user_pref("termsofuse.acceptedDate", "1767225600000");
user_pref("termsofuse.acceptedVersion", 999);
user_pref("toolkit.startup.max_resumed_crashes", -1);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("toolkit.telemetry.unified", false);
user_pref("trailhead.firstrun.didSeeAboutWelcome", true);
TEXT
}

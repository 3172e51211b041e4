// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

// What a Linux desktop tells about light and dark; no one source is there on every desktop. Values only.
struct AppearanceFacts
{
    // The portal's "color-scheme": 1 is dark, 2 is light, 0 (and whatever may be added) is no preference.
    std::optional<std::uint32_t> portalScheme;
    QString themeOverride;         // $GTK_THEME, as in "Adwaita:dark"
    QString themeName;             // the GTK theme's
    bool prefersDarkTheme = false; // gtk-application-prefer-dark-theme
    int windowLightness = 255;     // of the application palette: 0 is black, 255 white
    int windowTextLightness = 0;

    // What the user told the portal wins. Without that, whatever shows a dark desktop makes it dark: themes
    // for one toolkit only leave the other sources at their light defaults.
    bool isDark() const;
};

// The settings that GTK keeps in a file of the user's, gtk-3.0/settings.ini.
struct ThemeSettings
{
    QString themeName;
    bool prefersDarkTheme = false;

    static ThemeSettings read(const QString &path);
};

// The text value of one setting in what a settings daemon publishes on the X server, in the binary form of
// XSETTINGS; nothing when it is not there or the data is broken.
std::optional<QString> textInXSettings(const QByteArray &data, const QByteArray &name);

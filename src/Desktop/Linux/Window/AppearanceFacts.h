// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

// The sources for the light or dark theme; no desktop provides all of them. A plain value.
struct AppearanceFacts
{
    // The portal's "color-scheme": 1 is dark, 2 is light, all else is no preference.
    std::optional<std::uint32_t> portalScheme;
    QString themeOverride;         // $GTK_THEME, as in "Adwaita:dark"
    QString themeName;             // of the GTK theme
    bool prefersDarkTheme = false; // gtk-application-prefer-dark-theme
    int windowLightness = 255;     // of the application palette: 0 is black, 255 is white
    int windowTextLightness = 0;

    // The portal's preference wins. Without one, any dark source counts as dark, since a theme for one
    // toolkit leaves the other sources at their light defaults.
    bool isDark() const;
};

// GTK's settings from the user's gtk-3.0/settings.ini.
struct ThemeSettings
{
    QString themeName;
    bool prefersDarkTheme = false;

    static ThemeSettings read(const QString &path);
};

// Looks up a string setting in XSETTINGS data, as published by a settings daemon on the X server. Returns
// nothing if it is missing or the data is malformed.
std::optional<QString> textInXSettings(const QByteArray &data, const QByteArray &name);

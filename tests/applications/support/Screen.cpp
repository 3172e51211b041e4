// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Screen.h"

#include "applications/support/GnomeScreen.h"
#include "applications/support/KwinScreen.h"
#include "applications/support/LabwcScreen.h"
#include "applications/support/SwayScreen.h"
#include "applications/support/X11Screen.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

ScreenObserver &observer()
{
    switch (Screen::session()) {
    case Screen::Session::Gnome:
        return GnomeScreen::observer();
    case Screen::Session::Plasma:
        return KwinScreen::observer();
    case Screen::Session::Sway:
        return SwayScreen::observer();
    case Screen::Session::Labwc:
        return LabwcScreen::observer();
    case Screen::Session::X11:
        break;
    }
    return X11Screen::observer();
}

} // namespace

Screen::Session Screen::session()
{
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    if (desktop == "GNOME"_L1)
        return Session::Gnome;
    if (desktop == "KDE"_L1)
        return Session::Plasma;
    if (desktop == "wlroots"_L1)
        return Session::Labwc;
    return qEnvironmentVariableIsSet("SWAYSOCK") ? Session::Sway : Session::X11;
}

QList<ScreenWindow> Screen::windows()
{
    return observer().windows();
}

std::optional<ScreenWindow> Screen::activeWindow()
{
    return observer().activeWindow();
}

QString Screen::activeClass()
{
    const auto window = activeWindow();
    return window ? window->className : QString();
}

QList<ScreenWindow> Screen::windowsOf(const QString &className)
{
    QList<ScreenWindow> found = windows();
    found.removeIf([&](const ScreenWindow &window) {
        return window.className.compare(className, Qt::CaseInsensitive) != 0;
    });
    return found;
}

bool Screen::shows(const QString &className)
{
    return !windowsOf(className).isEmpty();
}

bool Screen::showsTitle(const QString &part)
{
    const auto all = windows();
    return std::ranges::any_of(all, [&](const ScreenWindow &window) { return window.title.contains(part); });
}

QString Screen::described()
{
    const auto active = activeWindow();
    QStringList lines;
    for (const ScreenWindow &window : windows()) {
        const bool isActive = active && active->identifier == window.identifier;
        lines << u"%1 “%2”%3"_s.arg(window.className, window.title, isActive ? u" (active)"_s : QString());
    }
    return lines.join(u"; "_s);
}

void Screen::pressKey(const QString &combination)
{
    observer().pressKey(combination);
}

void Screen::requestFocus(quint32 window)
{
    observer().requestFocus(window);
}

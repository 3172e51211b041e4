// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/WaylandChecks.h"

using namespace Qt::StringLiterals;

namespace {

DiagnosticCheck windows()
{
    return {u"windows"_s, u"Windows"_s};
}

DiagnosticCheck keyboard()
{
    return {u"keyboard"_s, u"Keyboard"_s};
}

DiagnosticCheck screenshot()
{
    return {u"screenshot"_s, u"Screenshots"_s};
}

DiagnosticCheck hotKey()
{
    return {u"hot-key"_s, u"Hot key"_s, DiagnosticCheck::Need::Comfort};
}

DiagnosticCheck hotKeyWay(const KGlobalAccelHotKeys::Standing &standing)
{
    if (!standing.isOffered)
        return hotKey().limited(
            u"Compositors of this kind leave all keys to their own configuration."_s,
            u"In the compositor's configuration, give a key of your choice to the command: "
            "orvane --toggle"_s);
    if (standing.hasKey)
        return hotKey().working(u"Orvane has a key among the desktop's shortcuts."_s);
    if (standing.owner.isEmpty())
        return hotKey().working(u"Alt+Space is free for Orvane."_s);
    return hotKey().limited(
        u"Alt+Space belongs to “%1”."_s.arg(standing.owner),
        u"Start Orvane once. Then, in the desktop's settings for shortcuts, give its “Show or "
        "Hide” a key of your choice, for example Meta+Space, and start it again."_s);
}

DiagnosticCheck windowWay(WaylandOffer::Windows way)
{
    switch (way) {
    case WaylandOffer::Windows::None:
        break;
    case WaylandOffer::Windows::Toplevels:
        return windows().working(u"Through wlr-foreign-toplevel-management."_s);
    case WaylandOffer::Windows::Plasma:
        return windows().working(u"Through plasma-window-management."_s);
    }
    Q_UNREACHABLE();
}

DiagnosticCheck keyWay(WaylandOffer::Keys way)
{
    switch (way) {
    case WaylandOffer::Keys::None:
        break;
    case WaylandOffer::Keys::VirtualKeyboard:
        return keyboard().working(u"Through virtual-keyboard."_s);
    case WaylandOffer::Keys::Plasma:
        return keyboard().working(
            u"Keys through fake-input; what the keyboard lacks, through the clipboard."_s);
    }
    Q_UNREACHABLE();
}

DiagnosticCheck throughPortal(const DiagnosticCheck &check, bool hasPortal, const QString &finding)
{
    if (hasPortal)
        return check.working(finding);
    return check.absent(u"There is no desktop portal."_s,
                        u"Install xdg-desktop-portal and its part for your desktop, such as "
                        "xdg-desktop-portal-gnome or xdg-desktop-portal-kde, then log out and in again."_s);
}

DiagnosticCheck pictureThroughPortal(bool hasPortal)
{
    return throughPortal(screenshot(), hasPortal, u"Through the desktop portal."_s);
}

} // namespace

QList<DiagnosticCheck> WaylandChecks::ways(const WaylandOffer &offer, bool hasPortal,
                                           const KGlobalAccelHotKeys::Standing &hotKey)
{
    return {
        windowWay(offer.windows),
        keyWay(offer.keys),
        offer.pictures ? screenshot().working(u"Through wlr-screencopy."_s) : pictureThroughPortal(hasPortal),
        hotKeyWay(hotKey),
    };
}

QList<DiagnosticCheck> WaylandChecks::extensionWays(bool hasPortal)
{
    return {
        windows().working(u"Through Orvane's extension of GNOME Shell."_s),
        throughPortal(keyboard(), hasPortal,
                      u"Text through Orvane's extension of GNOME Shell, keys through the desktop portal."_s),
        pictureThroughPortal(hasPortal),
        throughPortal(
            hotKey(), hasPortal,
            u"When its window first opens, Orvane asks the desktop for Ctrl+Alt+Space; you can choose another key."_s),
    };
}

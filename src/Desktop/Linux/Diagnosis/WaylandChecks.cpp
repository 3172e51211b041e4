// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/WaylandChecks.h"

using namespace Qt::StringLiterals;

namespace {

DiagnosticCheck hotKey()
{
    return {u"hot-key"_s, u"Hot key"_s, DiagnosticCheck::Need::Comfort};
}

DiagnosticCheck way(const DiagnosticCheck &check, bool isOffered, const QString &protocol)
{
    if (isOffered)
        return check.working(u"Through %1."_s.arg(protocol));
    return check.absent(u"The compositor doesn't offer %1."_s.arg(protocol),
                        u"Use sway or labwc, or an X11 (“Xorg”) session from the login screen."_s);
}

DiagnosticCheck throughPortal(const DiagnosticCheck &check, bool hasPortal, const QString &finding)
{
    if (hasPortal)
        return check.working(finding);
    return check.absent(
        u"There is no desktop portal."_s,
        u"Install xdg-desktop-portal and xdg-desktop-portal-gnome, then log out and in again."_s);
}

} // namespace

QList<DiagnosticCheck> WaylandChecks::ways(const WaylandOffer &offer)
{
    return {
        way({u"windows"_s, u"Windows"_s}, offer.windows, u"wlr-foreign-toplevel-management"_s),
        way({u"keyboard"_s, u"Keyboard"_s}, offer.keys, u"virtual-keyboard"_s),
        way({u"screenshot"_s, u"Screenshots"_s}, offer.pictures, u"wlr-screencopy"_s),
        hotKey().limited(u"Compositors of this kind leave all keys to their own configuration."_s,
                         u"In the compositor's configuration, give a key of your choice to the command: "
                         "orvane --toggle"_s),
    };
}

QList<DiagnosticCheck> WaylandChecks::extensionWays(bool hasPortal)
{
    const DiagnosticCheck windows{u"windows"_s, u"Windows"_s};
    return {
        windows.working(u"Through Orvane's extension of GNOME Shell."_s),
        throughPortal({u"keyboard"_s, u"Keyboard"_s}, hasPortal,
                      u"Text through Orvane's extension of GNOME Shell, keys through the desktop portal."_s),
        throughPortal({u"screenshot"_s, u"Screenshots"_s}, hasPortal, u"Through the desktop portal."_s),
        hotKey().limited(u"On GNOME, Orvane can't have a key of its own yet."_s,
                         u"In the desktop's keyboard shortcuts, give a key of your choice to the command: "
                         "orvane --toggle"_s),
    };
}

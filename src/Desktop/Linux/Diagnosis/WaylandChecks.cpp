// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/WaylandChecks.h"

using namespace Qt::StringLiterals;

namespace {

DiagnosticCheck way(const DiagnosticCheck &check, const QString &protocol)
{
    if (!protocol.isEmpty())
        return check.working(u"Through %1."_s.arg(protocol));
    return check.absent(u"The compositor offers no way that Orvane knows."_s,
                        u"Use sway or labwc, or an X11 (“Xorg”) session from the login screen."_s);
}

QString protocolFor(WaylandOffer::Windows windows)
{
    switch (windows) {
    case WaylandOffer::Windows::None:
        return {};
    case WaylandOffer::Windows::Toplevels:
        return u"wlr-foreign-toplevel-management"_s;
    case WaylandOffer::Windows::Plasma:
        return u"plasma-window-management"_s;
    }
    Q_UNREACHABLE();
}

QString protocolFor(WaylandOffer::Keys keys)
{
    switch (keys) {
    case WaylandOffer::Keys::None:
        return {};
    case WaylandOffer::Keys::VirtualKeyboard:
        return u"virtual-keyboard"_s;
    case WaylandOffer::Keys::Plasma:
        return u"fake-input, and the clipboard for what the keyboard lacks"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

QList<DiagnosticCheck> WaylandChecks::ways(const WaylandOffer &offer)
{
    const DiagnosticCheck hotKey{u"hot-key"_s, u"Hot key"_s, DiagnosticCheck::Need::Comfort};
    return {
        way({u"windows"_s, u"Windows"_s}, protocolFor(offer.windows)),
        way({u"keyboard"_s, u"Keyboard"_s}, protocolFor(offer.keys)),
        way({u"screenshot"_s, u"Screenshots"_s}, offer.pictures ? u"wlr-screencopy"_s : QString()),
        hotKey.limited(u"Compositors of this kind leave all keys to their own configuration."_s,
                       u"In the compositor's configuration, give a key of your choice to the command: "
                       "orvane --toggle"_s),
    };
}

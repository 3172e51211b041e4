// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/SessionType.h"

#include "Desktop/Linux/X11/Link.h"
#include "Desktop/PlatformError.h"

using namespace Qt::StringLiterals;

DisplayServer Sessions::displayServer()
{
    try {
        return X11Link::open().isXwayland ? DisplayServer::Xwayland : DisplayServer::Xorg;
    } catch (const PlatformError &) {
        return DisplayServer::None;
    }
}

bool Sessions::isWaylandNamed()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("XDG_SESSION_TYPE") == "wayland"_L1;
}

SessionType Sessions::typeWith(DisplayServer server)
{
    if (server == DisplayServer::Xorg)
        return SessionType::X11;
    const bool isWayland = server == DisplayServer::Xwayland || isWaylandNamed();
    return isWayland ? SessionType::Wayland : SessionType::None;
}

std::optional<QString> Sessions::obstacle(SessionType type)
{
    if (type != SessionType::Wayland)
        return std::nullopt;
    return u"Orvane can't see or operate this Wayland desktop yet: log out, and choose an X11 "
           "(“Xorg”) session on the login screen."_s;
}

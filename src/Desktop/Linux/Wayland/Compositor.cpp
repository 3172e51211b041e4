// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Compositor.h"

#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/PlatformError.h"

WaylandOffer WaylandOffer::of(const WaylandConnection &connection)
{
    return {WaylandToplevels::isOfferedBy(connection), WaylandKeyboard::isOfferedBy(connection),
            WaylandScreenCapture::isOfferedBy(connection)};
}

WaylandOffer WaylandOffer::ofEnvironment()
{
    try {
        return of(WaylandConnection());
    } catch (const PlatformError &) {
        return {};
    }
}

std::unique_ptr<WaylandConnection> connectToCompleteCompositor()
{
    try {
        auto connection = std::make_unique<WaylandConnection>();
        return WaylandOffer::of(*connection).isComplete() ? std::move(connection) : nullptr;
    } catch (const PlatformError &) {
        return nullptr;
    }
}

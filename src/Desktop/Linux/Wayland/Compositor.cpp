// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Compositor.h"

#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/Wayland/PlasmaKeyboard.h"
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/PlatformError.h"

namespace {

WaylandOffer::Windows windowsOfferedBy(const WaylandConnection &connection)
{
    if (PlasmaWindows::isOfferedBy(connection))
        return WaylandOffer::Windows::Plasma;
    return WaylandToplevels::isOfferedBy(connection) ? WaylandOffer::Windows::Toplevels
                                                     : WaylandOffer::Windows::None;
}

WaylandOffer::Keys keysOfferedBy(const WaylandConnection &connection)
{
    if (PlasmaKeyboard::isOfferedBy(connection))
        return WaylandOffer::Keys::Plasma;
    return WaylandKeyboard::isOfferedBy(connection) ? WaylandOffer::Keys::VirtualKeyboard
                                                    : WaylandOffer::Keys::None;
}

} // namespace

WaylandOffer WaylandOffer::of(const WaylandConnection &connection)
{
    return {windowsOfferedBy(connection), keysOfferedBy(connection),
            WaylandScreenCapture::isOfferedBy(connection), PlasmaWindows::isWithheldBy(connection)};
}

WaylandOffer WaylandOffer::ofEnvironment()
{
    const std::unique_ptr<WaylandConnection> connection = connectToCompositor();
    return connection ? of(*connection) : WaylandOffer();
}

std::unique_ptr<WaylandConnection> connectToCompositor()
{
    try {
        return std::make_unique<WaylandConnection>();
    } catch (const PlatformError &) {
        return nullptr;
    }
}

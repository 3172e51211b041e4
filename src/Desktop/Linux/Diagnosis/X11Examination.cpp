// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/X11Examination.h"

#include "Desktop/Linux/VirtualKeys.h"
#include "Desktop/Linux/X11HotKeys.h"
#include "Desktop/Linux/X11Keyboard.h"
#include "Desktop/Linux/X11Picture.h"
#include "Desktop/Linux/X11Windows.h"
#include "Desktop/PlatformError.h"

namespace {

constexpr std::uint16_t spaceBar = 49;

// A manager that has died leaves its mark on the root window behind, but not the window that it names.
std::optional<QString> windowManager(const X11Connection &connection)
{
    const auto &atoms = connection.atoms();
    const auto namedBy = [&](xcb_window_t window) {
        const auto mark = connection.property(window, atoms._NET_SUPPORTING_WM_CHECK);
        return mark ? mark->values().value(0, XCB_NONE) : std::uint32_t(XCB_NONE);
    };
    const xcb_window_t window = namedBy(connection.root());
    if (window == XCB_NONE || namedBy(window) != window)
        return std::nullopt;
    const auto name = connection.property(window, atoms._NET_WM_NAME);
    return name ? QString::fromUtf8(name->bytes) : QString();
}

void examineKeyboard(X11Connection &connection, X11Examination &result)
{
    try {
        const X11Keyboard keyboard(connection);
        result.spareKeys = keyboard.layout().spareCodes.size();
        result.takesKeys = true;
    } catch (const PlatformError &) {
        result.takesKeys = false;
    }
}

// Whether a key belongs to somebody shows only to who asks for it. It is given back at once.
bool isHotKeyFree(X11Connection &connection)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(spaceBar);
    X11HotKeys hotKeys(connection);
    const bool isFree = symbol && hotKeys.add(1, {*symbol, HotKeyModifier::Option, [] {}});
    hotKeys.remove(1);
    return isFree;
}

QSize picture(X11Connection &connection)
{
    try {
        return pictureOfScreen(connection).size();
    } catch (const PlatformError &) {
        return QSize();
    }
}

// The accessibility service leaves the address here once its bus runs.
QString accessibilityBus(const X11Connection &connection)
{
    const auto address = connection.property(connection.root(), connection.internAtom("AT_SPI_BUS"));
    return address ? QString::fromUtf8(address->bytes) : QString();
}

} // namespace

X11Examination X11Examination::take()
{
    X11Connection::prepareThread();
    X11Connection connection;
    X11Examination result;
    result.windowManager = ::windowManager(connection);
    examineKeyboard(connection, result);
    result.isHotKeyFree = ::isHotKeyFree(connection);
    result.picture = ::picture(connection);
    result.accessibilityBus = ::accessibilityBus(connection);
    result.windows = X11Windows(connection).snapshot();
    connection.requireAlive();
    return result;
}

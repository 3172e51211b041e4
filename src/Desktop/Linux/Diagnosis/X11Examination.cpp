// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/X11Examination.h"

#include "Desktop/Linux/HotKeys/X11HotKeys.h"
#include "Desktop/Linux/Typing/VirtualKeys.h"
#include "Desktop/Linux/Typing/X11Keyboard.h"
#include "Desktop/Linux/X11/Picture.h"
#include "Desktop/Linux/X11/Windows.h"
#include "Desktop/PlatformError.h"

namespace {

constexpr std::uint16_t spaceBar = 49;

void examineKeyboard(X11Connection &connection, X11Examination &result)
{
    try {
        X11Keyboard keyboard(connection);
        result.spareKeys = keyboard.layout().spareCodes.size();
        result.takesKeys = true;
    } catch (const PlatformError &) {
        result.takesKeys = false;
    }
}

// Another client's grab can only be detected by trying to grab the key.
bool isHotKeyFree(X11Connection &connection)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(spaceBar);
    X11HotKeys hotKeys(connection);
    const bool isFree = symbol && hotKeys.add(1, {*symbol, HotKeyModifier::Option, [] {}});
    hotKeys.remove(1);
    return isFree;
}

// The AT-SPI launcher sets this property once its bus is running.
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
    result.isXwayland = connection.isXwayland();
    if (result.isXwayland)
        return result;
    X11Windows windows(connection);
    result.windowManager = windows.windowManager();
    examineKeyboard(connection, result);
    result.isHotKeyFree = ::isHotKeyFree(connection);
    result.picture = pictureOfScreen(connection).size();
    result.accessibilityBus = ::accessibilityBus(connection);
    result.windows = windows.snapshot();
    connection.requireAlive();
    return result;
}

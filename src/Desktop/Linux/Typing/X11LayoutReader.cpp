// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/X11LayoutReader.h"

#include "Desktop/Linux/Typing/KeymapLayout.h"
#include "Desktop/Linux/Typing/XtestKeyboard.h"

#include <xkbcommon/xkbcommon-x11.h>

KeyboardLayout readLayout(const X11Connection &connection, std::uint16_t device, std::uint8_t group)
{
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const XkbPointer<xkb_keymap> keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    connection.requireAlive();
    if (!keymap)
        failWithoutKeyboard();
    return layoutOf(keymap.get(), group);
}

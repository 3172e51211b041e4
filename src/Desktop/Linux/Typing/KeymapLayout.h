// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"

#include <memory>

#include <xkbcommon/xkbcommon.h>

struct XkbRelease
{
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};
template <typename Object>
using XkbPointer = std::unique_ptr<Object, XkbRelease>;

// What the keymap types in this group; an out-of-range group wraps around. A pure function.
KeyboardLayout layoutOf(xkb_keymap *keymap, std::uint32_t group);

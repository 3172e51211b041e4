// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"

// Key strokes for tests of typing.
namespace KeyStrokes {

inline KeyStroke text(const QString &text)
{
    return {0, {}, text};
}

inline KeyStroke key(std::uint16_t code, EventFlags flags = {})
{
    return {code, flags, {}};
}

} // namespace KeyStrokes

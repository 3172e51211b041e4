// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

// The X keysym of a macOS virtual key code (ANSI layout): 0 is "a", 36 is Return. Nothing for codes that no
// action uses.
std::optional<std::uint32_t> symbolOfVirtualKey(std::uint16_t virtualKey);

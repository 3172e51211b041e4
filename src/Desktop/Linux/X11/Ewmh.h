// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

// Values of the Extended Window Manager Hints that libxcb-ewmh doesn't define.
namespace Ewmh {

// The desktop number of a window on all desktops.
inline constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

// The source indication that passes focus stealing prevention.
inline constexpr std::uint32_t requestedByUserTool = 2;

} // namespace Ewmh

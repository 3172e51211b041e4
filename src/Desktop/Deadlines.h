// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

// The time limits that hold on every platform.
namespace Deadlines {

// For another process (the X server, the window server, a bus) to answer one request.
inline constexpr std::chrono::milliseconds answer{2000};

// For an application to get the keyboard focus once that was requested.
inline constexpr std::chrono::milliseconds focus{1500};

} // namespace Deadlines

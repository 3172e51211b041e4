// SPDX-License-Identifier: Apache-2.0
#pragma once

// The program's exit statuses; scripts rely on these numbers.
namespace ExitStatus {

inline constexpr int done = 0;
inline constexpr int endedOtherwise = 1; // an error, a stop by the user, a run without success
inline constexpr int declined = 2;       // the user declined a step
inline constexpr int notReady = 3;       // no usable model
inline constexpr int desktopUnfit = 4;   // another requirement of tasks is missing (doctor only)
inline constexpr int wrongUse = 64;

} // namespace ExitStatus

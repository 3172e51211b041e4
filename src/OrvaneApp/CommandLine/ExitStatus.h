// SPDX-License-Identifier: Apache-2.0
#pragma once

// How the program ends; scripts rely on these numbers.
namespace ExitStatus {

inline constexpr int done = 0;
inline constexpr int endedOtherwise = 1; // an error, a stop by the user, a run without success
inline constexpr int declined = 2;       // the user refused a step
inline constexpr int notReady = 3;       // no model to work with
inline constexpr int desktopUnfit = 4; // something else that tasks need is missing (said by the doctor only)
inline constexpr int wrongUse = 64;

} // namespace ExitStatus

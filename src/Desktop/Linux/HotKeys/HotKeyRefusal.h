// SPDX-License-Identifier: Apache-2.0
#pragma once

// That the user has refused the hot key when the desktop asked; kept in the user's data folder, so that no
// later start asks again. Blocks on the disk; any thread.
namespace HotKeyRefusal {

bool isKept();
void keep();
void forget();

} // namespace HotKeyRefusal

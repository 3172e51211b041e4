// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace MacDisplay {

// Whether this process belongs to a login session with a screen; false for a network login. Doesn't need the
// application object.
bool isPresent();

} // namespace MacDisplay

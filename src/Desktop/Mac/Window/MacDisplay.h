// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace MacDisplay {

// Whether this process belongs to a login session with a screen; one that came in over the network does not.
// Needs no application object, and may be called before there is one.
bool isPresent();

} // namespace MacDisplay

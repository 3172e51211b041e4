// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>

#include <cstdint>

// The numbers of the accessibility protocol's states that mean something here.
enum class AtspiState : std::uint32_t {
    Active = 1, // of a window: it has the focus
    Focused = 12,
    Selected = 23,
    Sensitive = 24, // not greyed out
    Showing = 25,
};

namespace Atspi {

// Whether the reply to "GetState" holds the state; an error holds none. Pure, callable from any thread.
bool hasState(const QDBusMessage &reply, AtspiState state);

} // namespace Atspi

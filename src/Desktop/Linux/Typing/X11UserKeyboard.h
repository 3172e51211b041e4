// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// The keyboard that the last key came from before we send any: applications see its map, in the group that is
// switched on. Where the device that keys are sent with has another map, they see that one from our first key
// on, until the user presses a key again; and the group is lost if it has fewer. X thread; remembers what
// there is when it is made.
class X11UserKeyboard
{
public:
    // `sending`: the device that keys are sent with.
    X11UserKeyboard(const X11Connection &connection, std::uint16_t sending);

    // Whether applications see another map while keys are sent.
    bool hasOtherMap() const { return m_hasOtherMap; }

    // Lets applications see its map again, in the same group. Keys that they have not read by then, they
    // would read wrong. Does nothing when the user has pressed a key meanwhile.
    void putBack() const;

private:
    const X11Connection &m_connection;
    std::uint16_t m_sending;
    std::uint16_t m_device = 0;
    std::uint8_t m_group = 0;
    bool m_hasOtherMap = false;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// The keyboard that the user last pressed a key on. Applications see the keymap of the device that sent the
// last key: if the XTEST keyboard has a different one, they switch to it with the first key sent, until the
// user presses a key again; and the active group is lost if it doesn't exist there. Remembers the state at
// construction. Thread: X.
class X11UserKeyboard
{
public:
    // `sending`: the device that keys are sent through.
    X11UserKeyboard(const X11Connection &connection, std::uint16_t sending);

    // Whether applications see a different keymap while keys are sent.
    bool hasOtherMap() const { return m_hasOtherMap; }

    // Restores the user's keymap and group. Applications would misread sent keys that they have not processed
    // yet. Does nothing if the user has pressed a key in the meantime.
    void putBack() const;

private:
    const X11Connection &m_connection;
    std::uint16_t m_sending;
    std::uint16_t m_device = 0;
    std::uint8_t m_group = 0;
    bool m_hasOtherMap = false;
};

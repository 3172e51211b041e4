// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"
#include "Desktop/Linux/Typing/X11KeySymbols.h"
#include "Desktop/Linux/X11/Connection.h"

#include <QSet>

// The keyboard that keys are sent with: the layout of that device alone, the state of the keyboard that
// applications see, and keys sent. No other device's map is read or changed. Whatever was changed or is held
// down is put back by the destructor at the latest; where the process was killed before that, symbols are put
// back by the next one that types. X thread only; throws PlatformError when the server is gone or lacks what
// is needed.
class X11Keyboard
{
public:
    explicit X11Keyboard(X11Connection &connection);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard &) = delete;
    X11Keyboard &operator=(const X11Keyboard &) = delete;

    // That keys are sent with.
    std::uint16_t device() const { return m_device; }

    // Takes back the symbols that a killed process has lent to keys. To be done before the layout is read.
    void takeBackAbandonedSymbols();

    // The layout in use at this moment. To be read before symbols are lent.
    KeyboardLayout layout();

    // Whether another one has been chosen since it was read.
    bool hasLayoutChanged() const;

    // Whether the user (or anybody else) holds a modifier key down at this moment.
    bool isModifierHeld() const;

    // Switches off Caps Lock and modifiers that stick, until this object is gone.
    void releaseLocks();

    // Gives the keys of these codes one symbol each, and takes away those that were lent before.
    void lendSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols);

    // Keys wait for `flush`: those that belong together reach the server together, or not at all.
    void press(std::uint8_t code);
    void release(std::uint8_t code);
    void flush();

private:
    struct State;

    State state() const;
    QByteArray layoutNames() const;
    void lockModifiers(std::uint8_t affected, std::uint8_t locked);
    void sendKey(std::uint8_t type, std::uint8_t code);

    X11Connection &m_connection;
    xcb_atom_t m_layoutNamesAtom;
    std::uint16_t m_device;
    QByteArray m_layoutNames;
    std::uint8_t m_group = 0; // of the layout's
    std::uint8_t m_groupCount = 1;
    QSet<std::uint8_t> m_held;
    std::uint8_t m_releasedLocks = 0;
    X11KeySymbols m_symbols;
};

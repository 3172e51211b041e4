// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"
#include "Desktop/Linux/Typing/X11KeySymbols.h"
#include "Desktop/Linux/X11/Connection.h"

#include <QSet>

// The XTEST keyboard: its layout, the state of its master keyboard, and sending keys. No other device's
// keymap is read or changed. The destructor releases held keys and restores all changes; after a crash, the
// next process that types restores lent keysyms. Throws PlatformError if the server is lost or lacks a
// required extension. Thread: X.
class X11Keyboard
{
public:
    explicit X11Keyboard(X11Connection &connection);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard &) = delete;
    X11Keyboard &operator=(const X11Keyboard &) = delete;

    // The XTEST keyboard's device identifier.
    std::uint16_t device() const { return m_device; }

    // Restores keysyms left lent by a crashed process. Call it before `layout`.
    void takeBackAbandonedSymbols();

    // Reads the current layout. Call it before `lendSymbols`.
    KeyboardLayout layout();

    // Whether the layout has changed since `layout` was called.
    bool hasLayoutChanged() const;

    // Whether any modifier key is currently held down, by the user or a program.
    bool isModifierHeld() const;

    // Turns off Caps Lock, other locked modifiers and sticky (latched) ones. The destructor restores the
    // locks.
    void releaseLocks();

    // Lends each of these keycodes one keysym, and restores those lent before.
    void lendSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols);

    // Keys are buffered until `flush`, so that a press and its release reach the server together.
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
    std::uint8_t m_group = 0; // the active group when `layout` was called
    std::uint8_t m_groupCount = 1;
    QSet<std::uint8_t> m_held;
    std::uint8_t m_releasedLocks = 0;
    X11KeySymbols m_symbols;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QHash>

// Returns each key's keysyms in the wire format, starting at the lowest keycode; empty if the request fails.
// Thread: X.
QList<QByteArray> readKeySymbols(const X11Connection &connection, std::uint16_t device);

// The keysyms of one keyboard device. Keys can temporarily be lent other keysyms: spare keys those that the
// layout lacks, others what they type in another group or with Shift. The destructor restores them; after a
// crash, the next process that types does. Thread: X.
class X11KeySymbols
{
public:
    X11KeySymbols(X11Connection &connection, std::uint16_t device);
    ~X11KeySymbols();
    X11KeySymbols(const X11KeySymbols &) = delete;
    X11KeySymbols &operator=(const X11KeySymbols &) = delete;

    // Restores keysyms left lent by a crashed process.
    void takeBackAbandoned();

    // Lends each of these keycodes one keysym, and restores those lent before. Throws PlatformError if the
    // keys' own keysyms can't be read.
    void lend(const QHash<std::uint8_t, std::uint32_t> &symbols);

private:
    // A key, the keysym lent to it, and its own entry.
    struct Lent
    {
        std::uint8_t code = 0;
        std::uint32_t symbol = 0;
        QByteArray own;
    };

    static QList<Lent> parsed(const QList<std::uint32_t> &values);
    void write(const QList<QByteArray> &keys) const;
    void note(const QList<Lent> &lent) const;
    void takeBack(const QList<Lent> &lent) const;

    X11Connection &m_connection;
    std::uint16_t m_device;
    xcb_atom_t m_noteAtom;
    std::uint8_t m_firstCode;
    QList<QByteArray> m_own; // each key's own entry, from m_firstCode on
    QList<Lent> m_lent;
};

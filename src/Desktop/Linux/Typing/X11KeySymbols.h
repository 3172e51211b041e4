// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QHash>

// What each key of a keyboard device has, from the lowest code on, as the protocol spells it. Empty when the
// server does not tell. X thread.
QList<QByteArray> readKeySymbols(const X11Connection &connection, std::uint16_t device);

// The symbols of one keyboard device's keys. Keys can be lent other symbols for a while: spare ones what the
// layout lacks, others what they type in another group or with Shift. The destructor takes back what is still
// lent; where the process was killed before that, the next one that types does. X thread.
class X11KeySymbols
{
public:
    X11KeySymbols(X11Connection &connection, std::uint16_t device);
    ~X11KeySymbols();
    X11KeySymbols(const X11KeySymbols &) = delete;
    X11KeySymbols &operator=(const X11KeySymbols &) = delete;

    // Takes back what a killed process has lent.
    void takeBackAbandoned();

    // Gives the keys of these codes one symbol each, and takes back those lent before. Throws PlatformError
    // when the server doesn't tell what the keys have by themselves.
    void lend(const QHash<std::uint8_t, std::uint32_t> &symbols);

private:
    // A key with a symbol lent to it, and what it has by itself.
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
    QList<QByteArray> m_own; // what each key from m_firstCode on has by itself
    QList<Lent> m_lent;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

// The keyboards of the private desktop's X server: the physical one, which the user presses, and the one that
// keys are sent with, each with a map of its own; and the master, whose map applications see. Asked of the
// server over a connection of its own, with none of the code under test. All keyboards have the same layout
// again when this object is gone.
class KeyboardDevices
{
public:
    KeyboardDevices();
    ~KeyboardDevices();
    KeyboardDevices(const KeyboardDevices &) = delete;
    KeyboardDevices &operator=(const KeyboardDevices &) = delete;

    // All are there.
    bool isValid() const { return physical != 0 && sending != 0 && master != 0; }

    // The map of a device, as xkbcomp writes it.
    static QByteArray map(int device);

    // Loads a layout into one device, or into all. `options` as setxkbmap takes them.
    static void setLayout(int device, const QString &layout, const QString &options = {});
    static void setLayout(const QString &layout, const QString &options = {});

    // A key of the physical keyboard goes down and up.
    void pressPhysicalKey(std::uint8_t code) const;

    int physical = 0;
    int sending = 0;
    int master = 0;

private:
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t *)> m_connection;
};

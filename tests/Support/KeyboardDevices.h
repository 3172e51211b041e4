// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

// The keyboards of the private desktop's X server: the physical one that the user presses, the device that
// keys are sent through, each with its own keymap, and the master, whose keymap applications see. Uses its
// own connection and none of the code under test. The destructor gives all keyboards the same layout again.
class KeyboardDevices
{
public:
    KeyboardDevices();
    ~KeyboardDevices();
    KeyboardDevices(const KeyboardDevices &) = delete;
    KeyboardDevices &operator=(const KeyboardDevices &) = delete;

    // Whether all devices exist.
    bool isValid() const { return physical != 0 && sending != 0 && master != 0; }

    // A device's keymap in xkbcomp's format.
    static QByteArray map(int device);

    // Loads a layout into one device, or into all; `options` as for setxkbmap.
    static void setLayout(int device, const QString &layout, const QString &options = {});
    static void setLayout(const QString &layout, const QString &options = {});

    // Presses and releases a key of the physical keyboard.
    void pressPhysicalKey(std::uint8_t code) const;

    int physical = 0;
    int sending = 0;
    int master = 0;

private:
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t *)> m_connection;
};

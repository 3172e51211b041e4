// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/WaylandUserConnection.h"

#include <QPoint>

struct zwlr_virtual_pointer_v1;

// A user's mouse on a private Wayland desktop, attached for this object's lifetime. Thread: main.
class WaylandUserPointer
{
public:
    enum class Button : std::uint32_t { Left = 0x110, Right = 0x111 }; // as the kernel numbers them

    WaylandUserPointer();
    ~WaylandUserPointer();
    WaylandUserPointer(const WaylandUserPointer &) = delete;
    WaylandUserPointer &operator=(const WaylandUserPointer &) = delete;

    void moveTo(QPoint position);
    void press(Button button) { set(button, WL_POINTER_BUTTON_STATE_PRESSED); }
    void release(Button button) { set(button, WL_POINTER_BUTTON_STATE_RELEASED); }
    void wheelUp();

private:
    void set(Button button, std::uint32_t state);
    void endFrame();

    WaylandUserConnection m_connection;
    zwlr_virtual_pointer_v1 *m_pointer;
};

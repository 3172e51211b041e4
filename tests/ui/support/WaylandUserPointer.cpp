// SPDX-License-Identifier: Apache-2.0
#include "ui/support/WaylandUserPointer.h"

#include <wlr-virtual-pointer-unstable-v1-client-protocol.h>

namespace {

constexpr std::uint32_t screenWidth = 1280;
constexpr std::uint32_t screenHeight = 800;

} // namespace

WaylandUserPointer::WaylandUserPointer()
    : m_pointer(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(
          m_connection.bind<zwlr_virtual_pointer_manager_v1>(zwlr_virtual_pointer_manager_v1_interface),
          m_connection.bind<wl_seat>(wl_seat_interface)))
{
    m_connection.roundTrip();
}

WaylandUserPointer::~WaylandUserPointer()
{
    zwlr_virtual_pointer_v1_destroy(m_pointer);
}

void WaylandUserPointer::moveTo(QPoint position)
{
    zwlr_virtual_pointer_v1_motion_absolute(
        m_pointer, WaylandUserConnection::now(), static_cast<std::uint32_t>(position.x()),
        static_cast<std::uint32_t>(position.y()), screenWidth, screenHeight);
    endFrame();
}

void WaylandUserPointer::set(Button button, std::uint32_t state)
{
    zwlr_virtual_pointer_v1_button(m_pointer, WaylandUserConnection::now(),
                                   static_cast<std::uint32_t>(button), state);
    endFrame();
}

void WaylandUserPointer::wheelUp()
{
    constexpr int notch = -15; // as of common mice
    zwlr_virtual_pointer_v1_axis_source(m_pointer, WL_POINTER_AXIS_SOURCE_WHEEL);
    zwlr_virtual_pointer_v1_axis_discrete(m_pointer, WaylandUserConnection::now(),
                                          WL_POINTER_AXIS_VERTICAL_SCROLL, wl_fixed_from_int(notch), -1);
    endFrame();
}

void WaylandUserPointer::endFrame()
{
    zwlr_virtual_pointer_v1_frame(m_pointer);
    m_connection.roundTrip();
}

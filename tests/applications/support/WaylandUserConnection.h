// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include <wayland-client.h>

// A connection to the private desktop's compositor for the user's devices, without the code under test. Ends
// the test program if anything is missing. Thread: main.
class WaylandUserConnection
{
public:
    WaylandUserConnection();

    // Binds the compositor's global with this interface, in version 1.
    template <typename Object>
    Object *bind(const wl_interface &interface) const
    {
        return static_cast<Object *>(bindGlobal(interface));
    }

    // Returns once the compositor has handled all requests.
    void roundTrip() const { wl_display_roundtrip(m_display.get()); }

    // For the time stamps of input.
    static std::uint32_t now();

private:
    void *bindGlobal(const wl_interface &interface) const;

    struct Release
    {
        void operator()(wl_display *display) const { wl_display_disconnect(display); }
    };
    std::unique_ptr<wl_display, Release> m_display;
};

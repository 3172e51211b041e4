// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/X11UserKeyboard.h"

#include "Desktop/Linux/Typing/X11KeySymbols.h"
#include "Desktop/Linux/X11/Xkb.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace {

struct Master
{
    std::uint16_t device = 0;
    std::uint8_t group = 0;
};

// Zeros if the server is lost.
Master readMaster(xcb_connection_t *connection)
{
    const auto cookie = xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD);
    const X11Reply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(connection, cookie, nullptr));
    return state ? Master{state->deviceID, state->lockedGroup} : Master();
}

// The device whose keymap the master keyboard currently has; 0 if unknown.
std::uint16_t sourceOf(std::uint16_t master, xcb_connection_t *connection)
{
    const auto cookie = xcb_input_xi_query_device(connection, master);
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(connection, cookie, nullptr));
    if (!reply || reply->num_infos == 0)
        return 0;
    const auto devices = xcb_input_xi_query_device_infos_iterator(reply.get());
    auto classes = xcb_input_xi_device_info_classes_iterator(devices.data);
    for (; classes.rem > 0; xcb_input_device_class_next(&classes)) {
        if (classes.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return classes.data->sourceid;
    }
    return 0;
}

} // namespace

X11UserKeyboard::X11UserKeyboard(const X11Connection &connection, std::uint16_t sending)
    : m_connection(connection), m_sending(sending)
{
    const Master master = readMaster(connection.get());
    m_device = sourceOf(master.device, connection.get());
    m_group = master.group;
    const bool isAnother = m_device != 0 && m_device != master.device && m_device != sending;
    m_hasOtherMap = isAnother && readKeySymbols(connection, m_device) != readKeySymbols(connection, sending);
}

void X11UserKeyboard::putBack() const
{
    xcb_connection_t *const connection = m_connection.get();
    if (sourceOf(readMaster(connection).device, connection) != m_sending)
        return;
    // Releases a key that isn't pressed: the lowest keycode, which no keyboard has. No client receives the
    // event, but the server first switches the master to the device.
    const std::uint8_t type =
        xcb_get_extension_data(connection, &xcb_input_id)->first_event + XCB_INPUT_DEVICE_KEY_RELEASE;
    xcb_test_fake_input(connection, type, xcb_get_setup(connection)->min_keycode, XCB_CURRENT_TIME, XCB_NONE,
                        0, 0, std::uint8_t(m_device));
    if (readMaster(connection).group != m_group)
        xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, m_group, 0, 0, 0);
    xcb_flush(connection);
}

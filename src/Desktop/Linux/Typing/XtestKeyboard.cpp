// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/XtestKeyboard.h"

#include "Desktop/PlatformError.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

using namespace Qt::StringLiterals;

namespace {

bool hasExtensions(xcb_connection_t *connection)
{
    const int set =
        xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    const auto *test = xcb_get_extension_data(connection, &xcb_test_id);
    const auto *input = xcb_get_extension_data(connection, &xcb_input_id);
    return set && test && test->present && input && input->present;
}

QList<std::uint16_t> keyboardsBehind(std::uint16_t master, xcb_connection_t *connection)
{
    xcb_discard_reply(connection, xcb_input_xi_query_version(connection, 2, 0).sequence);
    const auto cookie = xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL);
    const X11Reply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(connection, cookie, nullptr));
    QList<std::uint16_t> found;
    if (!reply)
        return found;
    auto devices = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; devices.rem > 0; xcb_input_xi_device_info_next(&devices)) {
        if (devices.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && devices.data->attachment == master)
            found.append(devices.data->deviceid);
    }
    return found;
}

// The server sets this read-only property on XTEST devices. Device names aren't reliable.
bool isMarked(xcb_connection_t *connection, std::uint16_t device, xcb_atom_t mark)
{
    const auto cookie = xcb_input_xi_get_property(connection, device, 0, mark, XCB_ATOM_INTEGER, 0, 1);
    const X11Reply<xcb_input_xi_get_property_reply_t> reply(
        xcb_input_xi_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 8 || reply->num_items == 0)
        return false;
    return *static_cast<const std::uint8_t *>(xcb_input_xi_get_property_items(reply.get())) != 0;
}

} // namespace

std::uint16_t findXtestKeyboard(X11Connection &connection)
{
    const bool isPossible = hasExtensions(connection.get());
    connection.requireAlive();
    if (!isPossible)
        failWithoutKeyboard();
    const std::int32_t master = xkb_x11_get_core_keyboard_device_id(connection.get());
    const xcb_atom_t mark = connection.internAtom("XTEST Device");
    for (const std::uint16_t device : keyboardsBehind(std::uint16_t(master), connection.get())) {
        if (isMarked(connection.get(), device, mark))
            return device;
    }
    connection.requireAlive();
    failWithoutKeyboard();
}

void failWithoutKeyboard()
{
    throw PlatformError(u"The X server doesn't let keys be sent."_s);
}

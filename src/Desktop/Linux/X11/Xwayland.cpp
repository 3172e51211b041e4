// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Xwayland.h"

#include "Desktop/Linux/X11/Connection.h"

#include <xcb/randr.h>

#include <algorithm>
#include <string_view>

namespace {

// Since version 23.1, Xwayland has an extension of this name.
bool hasItsExtension(xcb_connection_t *connection)
{
    constexpr std::string_view name = "XWAYLAND";
    const auto cookie = xcb_query_extension(connection, std::uint16_t(name.size()), name.data());
    const X11Reply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(connection, cookie, nullptr));
    return reply && reply->present;
}

bool isItsOutput(xcb_connection_t *connection, xcb_randr_output_t output, xcb_timestamp_t time)
{
    const auto cookie = xcb_randr_get_output_info(connection, output, time);
    const X11Reply<xcb_randr_get_output_info_reply_t> reply(
        xcb_randr_get_output_info_reply(connection, cookie, nullptr));
    if (!reply)
        return false;
    const std::string_view name(reinterpret_cast<const char *>(xcb_randr_get_output_info_name(reply.get())),
                                std::size_t(xcb_randr_get_output_info_name_length(reply.get())));
    return name.starts_with("XWAYLAND");
}

// Older versions are recognised by their outputs XWAYLAND0, XWAYLAND1, ….
bool hasItsOutputs(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *const extension = xcb_get_extension_data(connection, &xcb_randr_id);
    if (!extension || !extension->present)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_randr_get_screen_resources_current(connection, root);
    const X11Reply<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(connection, cookie, nullptr));
    if (!reply)
        return false;
    const xcb_randr_output_t *const outputs = xcb_randr_get_screen_resources_current_outputs(reply.get());
    const int count = xcb_randr_get_screen_resources_current_outputs_length(reply.get());
    return std::any_of(outputs, outputs + count, [&](xcb_randr_output_t output) {
        return isItsOutput(connection, output, reply->config_timestamp);
    });
}

} // namespace

bool isXwayland(xcb_connection_t *connection)
{
    return hasItsExtension(connection) || hasItsOutputs(connection);
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/X11Summons.h"

#include "Desktop/Linux/X11/Ewmh.h"

#include <cstring>

namespace {

std::optional<std::uint32_t> number(const X11Connection &connection, xcb_window_t window, xcb_atom_t property)
{
    const std::optional<X11Property> answer = connection.property(window, property);
    const QList<std::uint32_t> values = answer ? answer->values() : QList<std::uint32_t>();
    return values.isEmpty() ? std::nullopt : std::optional(values.first());
}

} // namespace

std::optional<QPoint> X11Summons::pointerPosition(const X11Connection &connection)
{
    const auto cookie = xcb_query_pointer(connection.get(), connection.root());
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection.get(), cookie, nullptr));
    if (!reply || !reply->same_screen)
        return std::nullopt;
    return QPoint(reply->root_x, reply->root_y);
}

void X11Summons::moveToCurrentDesktop(const X11Connection &connection, std::uint32_t window)
{
    const xcb_ewmh_connection_t &atoms = connection.atoms();
    const auto current = number(connection, connection.root(), atoms._NET_CURRENT_DESKTOP);
    const auto present = number(connection, window, atoms._NET_WM_DESKTOP);
    if (!current || !present || *present == *current || *present == Ewmh::everyDesktop)
        return;
    connection.sendToManager(window, atoms._NET_WM_DESKTOP, {*current, Ewmh::requestedByUserTool});
}

// The null-terminated message is sent in chunks of 20 bytes; the first one has a different type.
void X11Summons::endLaunchFeedback(const X11Connection &connection, const QByteArray &token)
{
    QByteArray quoted = token;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    QByteArray message = "remove: ID=\"" + quoted + '"';
    message.append('\0');
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = connection.ownWindow();
    event.type = connection.internAtom("_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t continuation = connection.internAtom("_NET_STARTUP_INFO");
    for (qsizetype i = 0; i < message.size(); i += qsizetype(sizeof(event.data.data8))) {
        std::memset(event.data.data8, 0, sizeof(event.data.data8));
        const QByteArray piece = message.mid(i, qsizetype(sizeof(event.data.data8)));
        std::memcpy(event.data.data8, piece.constData(), std::size_t(piece.size()));
        xcb_send_event(connection.get(), 0, connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&event));
        event.type = continuation;
    }
    xcb_flush(connection.get());
}

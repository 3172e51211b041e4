// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Connection.h"

#include "Desktop/PlatformError.h"

#include <sys/socket.h>

#include <csignal>
#include <cstring>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

// Far above any real title or window list; limits hostile ones.
constexpr std::uint32_t longestProperty = 16384; // in units of four bytes

xcb_screen_t *findScreen(xcb_connection_t *connection, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

QList<std::uint32_t> X11Property::values() const
{
    QList<std::uint32_t> result(bytes.size() / qsizetype(sizeof(std::uint32_t)));
    if (!result.isEmpty())
        std::memcpy(result.data(), bytes.constData(), std::size_t(result.size()) * sizeof(std::uint32_t));
    return result;
}

X11Connection::X11Connection() : m_link(X11Link::open()), m_connection(m_link.connection.get())
{
    m_screen = findScreen(m_connection, screenNumber());
    xcb_ewmh_init_atoms_replies(&m_ewmh, xcb_ewmh_init_atoms(m_connection, &m_ewmh), nullptr);
    m_deleteWindow = internAtom("WM_DELETE_WINDOW");
    m_startupIdentifier = internAtom("_NET_STARTUP_ID");
    m_gtkApplication = internAtom("_GTK_APPLICATION_ID");
    m_desktopFile = internAtom("_KDE_NET_WM_DESKTOP_FILE");

    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &changes);
    m_window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, 0, m_window, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &changes);
    xcb_flush(m_connection);
}

X11Connection::~X11Connection()
{
    xcb_ewmh_connection_wipe(&m_ewmh);
}

xcb_atom_t X11Connection::internAtom(const char *name) const
{
    const auto cookie = xcb_intern_atom(m_connection, 0, std::uint16_t(std::strlen(name)), name);
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void X11Connection::prepareThread()
{
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

void X11Connection::requireAlive() const
{
    if (xcb_connection_has_error(m_connection))
        throw PlatformError(u"The connection to the X server is lost."_s);
}

xcb_get_property_cookie_t X11Connection::request(xcb_window_t window, xcb_atom_t property) const
{
    return xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
}

std::optional<X11Property> X11Connection::read(xcb_get_property_cookie_t cookie) const
{
    const X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    const auto *data = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return X11Property{reply->type, QByteArray(data, xcb_get_property_value_length(reply.get()))};
}

std::optional<X11Property> X11Connection::property(xcb_window_t window, xcb_atom_t property) const
{
    return read(request(window, property));
}

void X11Connection::sendToManager(xcb_window_t window, xcb_atom_t type,
                                  const QList<std::uint32_t> &values) const
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    for (qsizetype i = 0; i < values.size() && i < 5; ++i)
        event.data.data32[i] = values[i];
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(m_connection, 0, root(), mask, reinterpret_cast<const char *>(&event));
    xcb_flush(m_connection);
}

xcb_timestamp_t X11Connection::serverTime()
{
    m_time = 0;
    // Appending nothing leaves the property unchanged but generates an event with a timestamp.
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    const auto cookie = xcb_get_input_focus(m_connection);
    const X11Reply<xcb_get_input_focus_reply_t> roundTrip(
        xcb_get_input_focus_reply(m_connection, cookie, nullptr));
    drainEvents();
    return m_time;
}

void X11Connection::sendPing(xcb_window_t window, xcb_timestamp_t time) const
{
    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = window;
    ping.type = m_ewmh.WM_PROTOCOLS;
    ping.data.data32[0] = m_ewmh._NET_WM_PING;
    ping.data.data32[1] = time;
    ping.data.data32[2] = window;
    xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&ping));
    xcb_flush(m_connection);
}

bool X11Connection::waitUntilHandled(xcb_window_t window, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    // Ping replies go to clients that select SubstructureNotify on the root window; select it only while
    // waiting.
    const std::uint32_t watching = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const std::uint32_t usual = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &watching);
    const xcb_timestamp_t time = serverTime();
    sendPing(window, time);
    while (m_lastEcho != time && std::chrono::steady_clock::now() < end &&
           !xcb_connection_has_error(m_connection)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        drainEvents();
    }
    xcb_change_window_attributes(m_connection, root(), XCB_CW_EVENT_MASK, &usual);
    xcb_flush(m_connection);
    return m_lastEcho == time;
}

void X11Connection::handleMessage(const xcb_client_message_event_t &message)
{
    if (message.type == m_ewmh.WM_PROTOCOLS && message.data.data32[0] == m_ewmh._NET_WM_PING)
        m_lastEcho = message.data.data32[1];
}

void X11Connection::handleChange(const xcb_property_notify_event_t &change)
{
    if (change.window == m_window)
        m_time = change.time;
    else if (change.window == root() && onRootChange)
        onRootChange(change.atom);
}

void X11Connection::handle(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7F;
    if (type == XCB_CLIENT_MESSAGE)
        handleMessage(reinterpret_cast<const xcb_client_message_event_t &>(event));
    else if (type == XCB_PROPERTY_NOTIFY)
        handleChange(reinterpret_cast<const xcb_property_notify_event_t &>(event));
    // A handler may wait for a reply and thereby be re-entered for a later event.
    for (qsizetype i = 0; i < m_eventHandlers.size(); ++i)
        m_eventHandlers.at(i)(event);
}

void X11Connection::drainEvents()
{
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
        handle(*event);
}

void X11Connection::addEventHandler(EventHandler handler)
{
    m_eventHandlers.append(std::move(handler));
}

void X11Connection::interrupt() const
{
    ::shutdown(fileDescriptor(), SHUT_RDWR);
}

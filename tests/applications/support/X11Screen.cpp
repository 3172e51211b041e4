// SPDX-License-Identifier: Apache-2.0
#include "applications/support/X11Screen.h"

#include "applications/support/PrivateDesktop.h"

#include <QDeadlineTimer>
#include <QProcess>

#include <poll.h>
#include <xcb/xcb_ewmh.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

class Observer : public ScreenObserver
{
public:
    Observer() : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection) != 0)
            qFatal("the private desktop's X server does not answer");
        xcb_ewmh_init_atoms_replies(&m_ewmh, xcb_ewmh_init_atoms(m_connection, &m_ewmh), nullptr);
    }

    ~Observer() override
    {
        xcb_ewmh_connection_wipe(&m_ewmh);
        xcb_disconnect(m_connection);
    }

    Observer(const Observer &) = delete;
    Observer &operator=(const Observer &) = delete;

    static Observer &shared()
    {
        static Observer observer;
        return observer;
    }

    // The raw value of a window property; empty if the window or property doesn't exist.
    QByteArray property(xcb_window_t window, xcb_atom_t name)
    {
        constexpr std::uint32_t mostWords = 4096;
        const auto cookie = xcb_get_property(m_connection, 0, window, name, XCB_ATOM_ANY, 0, mostWords);
        const auto reply = answer<xcb_get_property_reply_t>(cookie);
        if (!reply)
            return {};
        return {static_cast<const char *>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }

    QList<quint32> numbers(xcb_window_t window, xcb_atom_t name)
    {
        const QByteArray bytes = property(window, name);
        QList<quint32> values(bytes.size() / static_cast<qsizetype>(sizeof(quint32)));
        std::copy_n(bytes.constData(), values.size() * static_cast<qsizetype>(sizeof(quint32)),
                    reinterpret_cast<char *>(values.data()));
        return values;
    }

    QList<quint32> rootNumbers(xcb_atom_t name) { return numbers(root(), name); }

    QList<ScreenWindow> windows() override
    {
        QList<ScreenWindow> found;
        // A window manager that starts while a window is being destroyed may keep listing it.
        for (const quint32 identifier : rootNumbers(m_ewmh._NET_CLIENT_LIST)) {
            if (exists(identifier))
                found << described(identifier);
        }
        return found;
    }

    std::optional<ScreenWindow> activeWindow() override
    {
        const quint32 active = rootNumbers(m_ewmh._NET_ACTIVE_WINDOW).value(0);
        return active == 0 ? std::nullopt : std::optional(described(active));
    }

    void pressKey(const QString &combination) override
    {
        QProcess::execute(u"timeout"_s, {u"20"_s, u"xdotool"_s, u"key"_s, combination});
    }

    void requestFocus(quint32 window) override
    {
        xcb_ewmh_request_change_active_window(&m_ewmh, 0, window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                              XCB_CURRENT_TIME, XCB_NONE);
        xcb_flush(m_connection);
    }

    bool exists(xcb_window_t window)
    {
        const auto cookie = xcb_get_window_attributes(m_connection, window);
        return answer<xcb_get_window_attributes_reply_t>(cookie) != nullptr;
    }

    bool hasFrame(xcb_window_t window)
    {
        const auto reply = answer<xcb_query_tree_reply_t>(xcb_query_tree(m_connection, window));
        return reply && reply->parent != root();
    }

    bool isKeyboardGrabbed()
    {
        const auto cookie = xcb_grab_keyboard(m_connection, 0, root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC);
        const auto reply = answer<xcb_grab_keyboard_reply_t>(cookie);
        xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
        xcb_flush(m_connection);
        return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
    }

    bool isAKeyPressed()
    {
        const auto reply = answer<xcb_query_keymap_reply_t>(xcb_query_keymap(m_connection));
        return reply && std::ranges::any_of(reply->keys, [](std::uint8_t keys) { return keys != 0; });
    }

    QSet<int> keysWithSymbols()
    {
        const xcb_setup_t *const setup = xcb_get_setup(m_connection);
        const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
        const auto cookie = xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count);
        const auto reply = answer<xcb_get_keyboard_mapping_reply_t>(cookie);
        QSet<int> keys;
        if (!reply)
            return keys;
        const xcb_keysym_t *const symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
        const int length = xcb_get_keyboard_mapping_keysyms_length(reply.get());
        for (int index = 0; index < length; ++index) {
            if (symbols[index] != XCB_NO_SYMBOL)
                keys << setup->min_keycode + index / reply->keysyms_per_keycode;
        }
        return keys;
    }

private:
    QRect areaOf(xcb_window_t window)
    {
        const auto geometry = answer<xcb_get_geometry_reply_t>(xcb_get_geometry(m_connection, window));
        const auto corner = answer<xcb_translate_coordinates_reply_t>(
            xcb_translate_coordinates(m_connection, window, root(), 0, 0));
        return geometry && corner ? QRect(corner->dst_x, corner->dst_y, geometry->width, geometry->height)
                                  : QRect();
    }

    ScreenWindow described(quint32 identifier)
    {
        ScreenWindow window;
        window.identifier = identifier;
        window.process = numbers(identifier, m_ewmh._NET_WM_PID).value(0);
        window.title = QString::fromUtf8(property(identifier, m_ewmh._NET_WM_NAME));
        // Two null-terminated strings.
        window.className = QString::fromUtf8(property(identifier, XCB_ATOM_WM_CLASS).split('\0').value(1));
        window.area = areaOf(identifier);
        return window;
    }

    // The reply to a request; null on an error. Terminates the test program if the server doesn't respond,
    // for example while another client has grabbed it.
    template <typename Reply, typename Cookie>
    std::unique_ptr<Reply, decltype(&std::free)> answer(Cookie cookie)
    {
        constexpr int pace = 50; // ms
        const QDeadlineTimer deadline(PrivateDesktop::patience);
        void *reply = nullptr;
        xcb_generic_error_t *error = nullptr;
        xcb_flush(m_connection);
        while (xcb_poll_for_reply(m_connection, cookie.sequence, &reply, &error) == 0) {
            if (deadline.hasExpired())
                qFatal("The private desktop's X server has not answered for %d ms", PrivateDesktop::patience);
            pollfd socket{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            ::poll(&socket, 1, pace);
        }
        std::free(error);
        return {static_cast<Reply *>(reply), &std::free};
    }

    xcb_window_t root() const { return m_ewmh.screens[0]->root; }

    xcb_connection_t *m_connection;
    xcb_ewmh_connection_t m_ewmh{};
};

} // namespace

ScreenObserver &X11Screen::observer()
{
    return Observer::shared();
}

bool X11Screen::isKeyboardGrabbed()
{
    return Observer::shared().isKeyboardGrabbed();
}

bool X11Screen::isAKeyPressed()
{
    return Observer::shared().isAKeyPressed();
}

QSet<int> X11Screen::keysWithSymbols()
{
    return Observer::shared().keysWithSymbols();
}

bool X11Screen::hasFrame(quint32 window)
{
    return Observer::shared().hasFrame(window);
}

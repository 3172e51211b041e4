// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Selection.h"

#include <xcb/xfixes.h>

X11Selection::X11Selection(X11Connection &connection, const QByteArray &name,
                           std::function<void(xcb_window_t owner)> ownerChanged)
    : m_connection(connection), m_name(name + QByteArray::number(connection.screenNumber())),
      m_ownerChanged(std::move(ownerChanged))
{
}

void X11Selection::watch()
{
    xcb_connection_t *x = m_connection.get();
    const auto *extension = xcb_get_extension_data(x, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    const auto cookie = xcb_xfixes_query_version(x, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const X11Reply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x, cookie, nullptr));
    if (!version)
        return;
    m_notifyEvent = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    xcb_xfixes_select_selection_input(x, m_connection.root(), m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

void X11Selection::follow()
{
    m_selection = m_connection.internAtom(m_name.constData());
    watch();
    const auto cookie = xcb_get_selection_owner(m_connection.get(), m_selection);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.get(), cookie, nullptr));
    m_ownerChanged(reply ? reply->owner : xcb_window_t(XCB_NONE));
}

void X11Selection::handle(const xcb_generic_event_t &event)
{
    if ((event.response_type & 0x7F) != m_notifyEvent)
        return;
    const auto &notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event);
    if (notice.selection != m_selection)
        return;
    const bool isOwned = notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    m_ownerChanged(isOwned ? notice.owner : xcb_window_t(XCB_NONE));
}

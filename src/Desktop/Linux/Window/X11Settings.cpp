// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/X11Settings.h"

#include "Desktop/Linux/Window/AppearanceFacts.h"

X11Settings::X11Settings(X11Connection &connection, std::function<void(QString name)> themeChanged)
    : m_connection(connection),
      m_selection(connection, "_XSETTINGS_S", [this](xcb_window_t owner) { setDaemon(owner); }),
      m_themeChanged(std::move(themeChanged))
{
}

void X11Settings::follow()
{
    m_property = m_connection.internAtom("_XSETTINGS_SETTINGS");
    m_selection.follow();
}

void X11Settings::setDaemon(xcb_window_t daemon)
{
    m_daemon = daemon;
    if (daemon != XCB_NONE) {
        const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection.get(), daemon, XCB_CW_EVENT_MASK, &changes);
    }
    read();
}

void X11Settings::read()
{
    QString theme;
    if (m_daemon != XCB_NONE) {
        if (const std::optional<X11Property> settings = m_connection.property(m_daemon, m_property))
            theme = textInXSettings(settings->bytes, "Net/ThemeName").value_or(QString());
    }
    m_themeChanged(theme);
}

void X11Settings::handle(const xcb_generic_event_t &event)
{
    m_selection.handle(event);
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY || m_daemon == XCB_NONE)
        return;
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    if (change.window == m_daemon && change.atom == m_property)
        read();
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/SpareKeyNotices.h"

#include "Desktop/Linux/X11/Xkb.h"

#include <QGuiApplication>

namespace {

constexpr std::uint8_t sentByAnother = 0x80; // the SendEvent flag of a response type

// The server's 32-bit timestamp wraps around every 49 days.
bool isBefore(std::uint32_t left, std::uint32_t right)
{
    return static_cast<std::int32_t>(left - right) < 0;
}

} // namespace

SpareKeyNotices::SpareKeyNotices()
{
    auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *x11 =
        application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return;
    // Doesn't block: Qt has already queried the extension, so the reply is cached.
    const auto *extension = xcb_get_extension_data(x11->connection(), &xcb_xkb_id);
    if (!extension || !extension->present)
        return;
    m_eventType = extension->first_event;
    application->installNativeEventFilter(this);
}

SpareKeyNotices::~SpareKeyNotices()
{
    if (auto *application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

void SpareKeyNotices::begin(std::uint32_t time)
{
    m_from = time;
    m_isChanging = true;
}

void SpareKeyNotices::end(std::uint32_t time)
{
    m_until = time;
    m_isChanging = false;
}

// The last events arrive after `end`.
bool SpareKeyNotices::isOwn(std::uint32_t time) const
{
    return !isBefore(time, m_from) && (m_isChanging || !isBefore(m_until, time));
}

// We lend keysyms by one SetMap request with the keysyms of all keys and nothing else. A layout change
// affects more than keysyms; other programs that remap one key write only that key.
bool SpareKeyNotices::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *notice = static_cast<const xcb_xkb_map_notify_event_t *>(message);
    const bool isMap =
        (notice->response_type & ~sentByAnother) == m_eventType && notice->xkbType == XCB_XKB_MAP_NOTIFY;
    return isMap && isOwn(notice->time) && notice->changed == XCB_XKB_MAP_PART_KEY_SYMS &&
           notice->firstKeySym == notice->minKeyCode &&
           notice->nKeySyms == notice->maxKeyCode - notice->minKeyCode + 1;
}

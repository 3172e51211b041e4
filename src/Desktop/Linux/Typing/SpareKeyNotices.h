// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractNativeEventFilter>

#include <atomic>
#include <cstdint>

// Keeps notices of the symbols that this process lends to keys from Qt. At each of them Qt would read the
// whole keyboard anew, on the main thread and waiting for the X server, and typing lends symbols again and
// again. They are on keys that are sent, none of a user's. What other programs change reaches Qt, which may
// have to read their keys.
//
// Made and destroyed on the main thread; does nothing where Qt has no X server.
class SpareKeyNotices : public QAbstractNativeEventFilter
{
public:
    SpareKeyNotices();
    ~SpareKeyNotices() override;
    Q_DISABLE_COPY_MOVE(SpareKeyNotices)

    // Between these two, symbols are lent. With the X server's times; callable from any thread.
    void begin(std::uint32_t time);
    void end(std::uint32_t time);

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    bool isOwn(std::uint32_t time) const;

    std::uint8_t m_eventType = 0; // of the keyboard extension, on this server
    std::atomic_bool m_isChanging = false;
    std::atomic_uint32_t m_from = 0;
    std::atomic_uint32_t m_until = 0;
};

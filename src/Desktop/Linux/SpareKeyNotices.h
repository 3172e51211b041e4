// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractNativeEventFilter>

#include <atomic>
#include <cstdint>

// Keeps notices of the spare keys that this process changes from Qt. At each of them Qt would read the whole
// keyboard anew, on the main thread and waiting for the X server, and typing changes spare keys again and
// again. No key of a user is among them. What other programs change reaches Qt, which may have to read their
// keys.
//
// Made and destroyed on the main thread; does nothing where Qt has no X server.
class SpareKeyNotices : public QAbstractNativeEventFilter
{
public:
    SpareKeyNotices();
    ~SpareKeyNotices() override;
    Q_DISABLE_COPY_MOVE(SpareKeyNotices)

    // Between these two, spare keys change. With the X server's times; callable from any thread.
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

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>

// Keeps notices of changed spare keys from Qt, as long as it lives. At each of them Qt would read the whole
// keyboard anew, on the main thread and waiting for the X server, and typing changes spare keys again and
// again. No key of a user is among them. Main thread; does nothing where Qt has no X server.
class SpareKeyNotices : public QAbstractNativeEventFilter
{
public:
    SpareKeyNotices();
    ~SpareKeyNotices() override;
    Q_DISABLE_COPY_MOVE(SpareKeyNotices)

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    std::uint8_t m_eventType = 0; // of the keyboard extension, on this server
};

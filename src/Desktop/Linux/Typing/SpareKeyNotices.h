// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractNativeEventFilter>

#include <atomic>
#include <cstdint>

// Hides XkbMapNotify events from Qt that this process causes by lending keysyms to the XTEST keyboard. For
// each, Qt would re-read the whole keymap with a blocking round trip on the main thread, although physical
// keyboards aren't affected. Changes by other programs still reach Qt.
//
// Constructed and destroyed on the main thread; does nothing unless Qt uses X11.
class SpareKeyNotices : public QAbstractNativeEventFilter
{
public:
    SpareKeyNotices();
    ~SpareKeyNotices() override;
    Q_DISABLE_COPY_MOVE(SpareKeyNotices)

    // Mark the period in which keysyms are lent, in X server timestamps. Any thread.
    void begin(std::uint32_t time);
    void end(std::uint32_t time);

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    bool isOwn(std::uint32_t time) const;

    std::uint8_t m_eventType = 0; // the XKB extension's event code
    std::atomic_bool m_isChanging = false;
    std::atomic_uint32_t m_from = 0;
    std::atomic_uint32_t m_until = 0;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>

#include <chrono>
#include <cstddef>

// How fast keys may be sent. Compositors disconnect an application, which ends it, when it leaves too many
// events unread: about a thousand characters. This leaves time to applications that hang for a few seconds.
class KeyPace
{
public:
    KeyPace() { m_elapsed.start(); }

    // How long to wait before sending that many keys.
    std::chrono::milliseconds pauseBefore(std::size_t keys);

private:
    std::size_t m_sent = 0;
    QElapsedTimer m_elapsed;
};

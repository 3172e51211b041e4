// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

#include <QCoroTask>
#include <QFlags>
#include <QList>
#include <QString>

#include <chrono>
#include <cstdint>
#include <optional>

// Modifier keys. The values are the macOS event flag masks.
enum class EventFlag : std::uint32_t {
    Shift = 0x20000,
    Control = 0x40000,
    Alternate = 0x80000,
    Command = 0x100000,
};
Q_DECLARE_FLAGS(EventFlags, EventFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(EventFlags)

// Pressing and releasing one key. If `text` is not empty, it is typed literally, including line breaks,
// whatever the layout; `virtualKey` is then 0, without flags.
struct KeyStroke
{
    std::uint16_t virtualKey = 0; // macOS virtual key code (ANSI layout)
    EventFlags flags;
    QString text;

    friend bool operator==(const KeyStroke &, const KeyStroke &) = default;
};

// The synthetic keyboard. Thread: main.
class Keyboard
{
public:
    virtual ~Keyboard() = default;

    // Posts the strokes in order, with `pause` after each, to the receiver: the frontmost application as
    // found earlier. Resolves everything before the first key, waits until the user has released all
    // modifiers, and always releases pressed keys. Throws PlatformError, with nothing posted, if there is no
    // receiver or it is no longer frontmost right before the first key, if a text cannot be typed, or if keys
    // cannot be sent.
    virtual QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                   std::optional<RunningApplication> receiver) = 0;
};

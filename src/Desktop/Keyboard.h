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

// Modifier keys, with the mask values of the event flags.
enum class EventFlag : std::uint32_t {
    Shift = 0x20000,
    Control = 0x40000,
    Alternate = 0x80000,
    Command = 0x100000,
};
Q_DECLARE_FLAGS(EventFlags, EventFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(EventFlags)

// One key going down and up. With `text`, the key is only a carrier (code 0, no flags) and the text is typed
// literally, whatever the layout, line breaks included.
struct KeyStroke
{
    std::uint16_t virtualKey = 0; // macOS virtual key code (ANSI layout)
    EventFlags flags;
    QString text;

    friend bool operator==(const KeyStroke &, const KeyStroke &) = default;
};

// The synthetic keyboard. Main thread.
class Keyboard
{
public:
    virtual ~Keyboard() = default;

    // Posts the strokes in order to the receiver, which is the frontmost application as it was found before,
    // waiting `pause` after each. Everything is looked up before the first key goes out; modifiers that the
    // user still holds are waited for; whatever is pressed is released on every way out. The frontmost
    // application is looked at once more right before the first key. Throws PlatformError, with nothing
    // posted, when a text cannot be typed at all, when another application is in front than the receiver,
    // when there is no receiver, or when keys cannot be sent.
    virtual QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                   std::optional<RunningApplication> receiver) = 0;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QFlags>

#include <cstdint>
#include <functional>
#include <memory>

// Modifier keys of a hot key, with the mask values of the Carbon event manager.
enum class HotKeyModifier : std::uint32_t {
    Command = 0x100,
    Shift = 0x200,
    Option = 0x800,
    Control = 0x1000,
};
Q_DECLARE_FLAGS(HotKeyModifiers, HotKeyModifier)
Q_DECLARE_OPERATORS_FOR_FLAGS(HotKeyModifiers)

// Tells the hot keys of the whole system apart: the program's four-character code, and a number inside it.
struct HotKeyIdentifier
{
    std::uint32_t signature = 0;
    std::uint32_t number = 0;

    friend bool operator==(const HotKeyIdentifier &, const HotKeyIdentifier &) = default;
};

// The number of a four-character code: the first character is the most significant byte.
constexpr std::uint32_t fourCharacterCode(const char (&text)[5])
{
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

// A hot key that is ours for as long as this lives. Opaque. Main thread.
class HotKeyReference
{
public:
    virtual ~HotKeyReference() = default;
};

// Keys that reach us whichever application is in front. Main thread.
class HotKeys
{
public:
    virtual ~HotKeys() = default;

    // Registers the key with the given macOS virtual key code (49 is Space) and exactly these modifiers; the
    // state of Caps Lock and its like makes no difference. `pressed` is called on the main thread, once each
    // time the key goes down, until the reference is gone.
    //
    // Gives no reference, and says nothing, when another program owns the key or there are no such keys here.
    // Asynchronous, bounded, never throws. The reference may outlive neither this object nor what `pressed`
    // uses.
    virtual QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                         HotKeyModifiers modifiers,
                                                                         HotKeyIdentifier identifier,
                                                                         std::function<void()> pressed) = 0;
};

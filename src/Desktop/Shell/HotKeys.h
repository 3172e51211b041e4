// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QFlags>

#include <cstdint>
#include <functional>
#include <memory>

// Modifier keys of a hot key. The values are the Carbon Event Manager's modifier masks.
enum class HotKeyModifier : std::uint32_t {
    Command = 0x100,
    Shift = 0x200,
    Option = 0x800,
    Control = 0x1000,
};
Q_DECLARE_FLAGS(HotKeyModifiers, HotKeyModifier)
Q_DECLARE_OPERATORS_FOR_FLAGS(HotKeyModifiers)

// A system-wide identifier of a hot key: the program's four-character code and a number within the program.
struct HotKeyIdentifier
{
    std::uint32_t signature = 0;
    std::uint32_t number = 0;

    friend bool operator==(const HotKeyIdentifier &, const HotKeyIdentifier &) = default;
};

// Converts a four-character code to its number; the first character is the most significant byte.
constexpr std::uint32_t fourCharacterCode(const char (&text)[5])
{
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

// The program's own hot key, which shows and hides the window: Option+Space.
namespace ProgramHotKey {

inline constexpr std::uint16_t virtualKey = 49;
inline constexpr HotKeyModifier modifiers = HotKeyModifier::Option;
inline constexpr HotKeyIdentifier identifier{fourCharacterCode("ORVN"), 1};

} // namespace ProgramHotKey

// Keeps a hot key registered for its lifetime. Thread: main.
class HotKeyReference
{
public:
    virtual ~HotKeyReference() = default;
};

// System-wide hot keys, received whichever application is frontmost. Thread: main.
class HotKeys
{
public:
    virtual ~HotKeys() = default;

    // Registers the key with this macOS virtual key code (49 is Space) and exactly these modifiers; Caps Lock
    // and other locks are ignored. `pressed` is called on the main thread, once per physical key press, while
    // the returned reference exists.
    //
    // Returns null if another program owns the key or the platform has no hot keys. Has a timeout; never
    // throws. The reference must not outlive this object or anything that `pressed` uses.
    virtual QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                         HotKeyModifiers modifiers,
                                                                         HotKeyIdentifier identifier,
                                                                         std::function<void()> pressed) = 0;
};

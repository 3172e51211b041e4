// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/WindowSystem/ClipboardText.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"
#include "Desktop/ScreenCapture.h"

#include <memory>
#include <optional>

class X11Display;

// What the services ask of others.
struct DisplayEnvironment
{
    ReceiverKeyboard::FrontmostWindow frontmostWindow;
    std::function<QCoro::Task<bool>(RunningApplication)> takesEveryCharacter; // beyond U+FFFF
    std::function<QCoro::Task<bool>(RunningApplication)> isTerminal;
    // The names of the programs that may show windows with this Wayland app_id.
    std::function<QCoro::Task<QStringList>(QString)> programsOf;
};

// The services that depend on the display: those of the X server, or of the Wayland compositor if it offers
// windows and keys. In any other Wayland session there is an obstacle: every operation throws
// PlatformError with it, and nothing is ever sent to Xwayland. Thread: main.
class DisplayServices
{
public:
    virtual ~DisplayServices() = default;

    // Connects. Throws PlatformError if there is no display. Blocks up to two seconds, as does
    // `obstacleInEnvironment`. `clock` must outlive the services.
    static std::unique_ptr<DisplayServices> connect(Clock &clock, const DisplayEnvironment &environment);

    // The obstacle in the environment's session, if there is one.
    static std::optional<QString> obstacleInEnvironment();

    // Why the windows, keys and screen of this session are inaccessible at the moment, as a sentence for the
    // user; nothing if they are accessible.
    virtual std::optional<QString> obstacle() const { return std::nullopt; }

    virtual WindowSystem &windows() = 0;
    virtual ReceiverKeyboard &keyboard() = 0;
    virtual ScreenCapture &screenCapture() = 0;
    virtual ClipboardText &clipboard() = 0;

    // The X server of an X11 session; otherwise null.
    virtual X11Display *x11() { return nullptr; }
};

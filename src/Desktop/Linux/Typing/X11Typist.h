// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/TypingPlan.h"
#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"
#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Windows.h"

#include <atomic>
#include <chrono>

// Types strokes into one application only. Create one per sequence of strokes. Thread: X.
class X11Typist
{
public:
    // Typing stops with an error once `isStopped` is set or the time limit has passed.
    X11Typist(X11Connection &connection, X11Windows &windows, const std::atomic_bool &isStopped,
              std::chrono::milliseconds limit);

    // Types all strokes. Throws PlatformError: with nothing typed if the target doesn't have the focus or
    // something cannot be typed; with a part typed if the target loses the focus.
    void type(const QList<KeyStroke> &strokes, std::chrono::microseconds pause, const DesktopWindow &target);

    // Waits until the target has handled everything typed. Returns false on timeout or if the target doesn't
    // reply, for example because the keys have closed it.
    bool waitUntilHandled() const;

private:
    void typeBatch(class X11Keyboard &keyboard, const TypingBatch &batch, std::chrono::microseconds pause);
    void typeKey(X11Keyboard &keyboard, const PlannedKey &key);
    bool holdSymbols() const;
    void putBack(const class X11UserKeyboard &users) const;
    void requireTarget() const;
    void requireFreeKeyboard(const QString &consequence) const;

    X11Connection &m_connection;
    X11Windows &m_windows;
    const std::atomic_bool &m_isStopped;
    std::chrono::steady_clock::time_point m_deadline;
    QHash<ModifierKey, std::uint8_t> m_modifierCodes;
    DesktopWindow m_target;
    bool m_tellsWhenHandled = false;
};

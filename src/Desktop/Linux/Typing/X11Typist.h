// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/TypingPlan.h"
#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Snapshot.h"
#include "Desktop/Linux/X11/Windows.h"

#include <atomic>
#include <chrono>

// Types strokes into one application, and into no other: made for one sequence of strokes, on the X thread.
class X11Typist
{
public:
    // It stops, with an error, once `isStopped` is set or the time limit is over.
    X11Typist(X11Connection &connection, X11Windows &windows, const std::atomic_bool &isStopped,
              std::chrono::milliseconds limit);

    // Types everything, or throws PlatformError: with nothing typed if the target does not have the keys or
    // something cannot be typed, or part of it when the target loses the keys in the middle.
    void type(const QList<KeyStroke> &strokes, std::chrono::microseconds pause, const X11Window &target);

    // Waits until the target has handled what was typed, no longer than such a thing may take. False where it
    // does not tell, as when the keys have closed it.
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
    X11Window m_target;
    bool m_tellsWhenHandled = false;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Deadlines.h"
#include "Desktop/Linux/WindowSystem/ApplicationNumbers.h"
#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <cstdint>

// Our extension of GNOME Shell, which runs inside the shell and answers this program over the session bus
// (data/gnome-shell). Every call throws PlatformError if the extension doesn't run or doesn't answer within
// Deadlines::answer. Thread: main.
class ShellExtension
{
public:
    // The extension's name on the session bus, owned while it runs. On the lock screen it doesn't.
    static constexpr auto busName = QLatin1StringView("org.orvane.Shell");

    QCoro::Task<WindowSnapshot> windows();

    // Both return once the shell has requested it.
    QCoro::Task<void> activate(std::uint32_t window);
    QCoro::Task<void> close(std::uint32_t window);

    enum class Entry {
        Entered,
        Sent,        // but the application hasn't reported it
        NoFocus,     // another window or the shell itself has the keyboard focus
        NoTextField, // none has the focus, or it takes no text from input methods
    };

    // Enters the text, of at most 1,000 characters, into the text field with the focus if it is in this
    // window. A line feed or a tab is pressed as a key, and must be a text of its own; there must be no other
    // control characters.
    QCoro::Task<Entry> enterText(std::uint32_t window, QString text);

    struct Keys
    {
        bool isModifierHeld = false;
        bool isCapsLockOn = false;
        std::uint32_t group = 0;  // the active layout's in the keymap
        bool areComposed = false; // an input method makes text of them
    };

    // The state of the user's keyboard.
    QCoro::Task<Keys> keys();

private:
    static QCoro::Task<QDBusMessage> ask(QString method, QVariantList arguments);
    WindowSnapshot snapshotFrom(const QList<QVariantMap> &frontToBack);
    qint64 processOf(const QVariantMap &window);

    ApplicationNumbers m_unknownProcesses;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/HotKeys.h"
#include "Desktop/WindowStyler.h"

#include <QObject>
#include <QString>

// The program's global hot key, Option+Space, and what it does: it summons the window or hides it. The one
// shared instance lives as long as the process. Main thread.
class HotKey : public QObject
{
    Q_OBJECT

public:
    static HotKey &shared();

    // Registers the key. Where it is taken, the program runs without one. Both services are used until
    // `release`.
    void registerHotKey(HotKeys &hotKeys, WindowStyler &styler);
    // Gives the key back and forgets the services, which may go then.
    void release();

    // Hides the program's windows if the user is in one of them, else brings them forward.
    static void summon(const QString &activationToken = QString());

    // Brings the windows forward, wherever the user is.
    static void bringForward(const QString &activationToken = QString());

Q_SIGNALS:
    // The window has been brought forward: the user wants to type.
    void summonPalette();

private:
    HotKey() = default;
    QCoro::Task<void> acquire(HotKeys &hotKeys);

    WindowStyler *m_styler = nullptr; // not owned
    std::shared_ptr<HotKeyReference> m_reference;
    QCoro::Task<void> m_acquiring;
};

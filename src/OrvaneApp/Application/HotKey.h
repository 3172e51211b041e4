// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/HotKeys.h"
#include "Desktop/Shell/WindowStyler.h"

#include <QObject>
#include <QString>

// The global hot key, Option+Space, which shows or hides the window. A singleton for the life of the process.
// Thread: main.
class HotKey : public QObject
{
    Q_OBJECT

public:
    static HotKey &shared();

    // Registers the key; without effect if another program owns it. Both services are used until `release`.
    void registerHotKey(HotKeys &hotKeys, WindowStyler &styler);
    // Releases the key; the services may be destroyed afterwards.
    void release();

    // Hides the program's windows if one has the focus, otherwise brings them forward.
    static void summon(const QString &activationToken = QString());

    // Brings the windows forward.
    static void bringForward(const QString &activationToken = QString());

Q_SIGNALS:
    // Emitted after the window was brought forward: the user wants to type.
    void summonPalette();

private:
    HotKey() = default;
    QCoro::Task<void> acquire(HotKeys &hotKeys);

    WindowStyler *m_styler = nullptr; // not owned
    std::shared_ptr<HotKeyReference> m_reference;
    QCoro::Task<void> m_acquiring;
};

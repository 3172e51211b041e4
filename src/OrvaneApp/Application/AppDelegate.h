// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"
#include "Desktop/Shell.h"

#include <QObject>

// Answers the desktop for the application: what happens once it has started, when its window is closed, and
// when it is started once more. Main thread; the services are not owned and outlive this object.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    enum class StartUp { Shown, Hidden };

    AppDelegate(const Shell &shell, ProgramInstance &instance, QObject *parent = nullptr);
    ~AppDelegate() override;

    // The window is made: the hot key is registered and, unless the start is to be hidden, the window comes
    // to the front.
    void applicationDidFinishLaunching(StartUp startUp);

    // The process goes on without its window, so that the hot key keeps working.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }

    // Another start of the program, or a click on its icon in a dock: the window comes back.
    void applicationShouldHandleReopen(const QString &activationToken);

    // The desktop's request to quit, from a menu or at the end of its session, is followed.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    const Shell m_shell;
    ProgramInstance &m_instance;
};

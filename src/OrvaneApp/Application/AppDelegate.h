// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"
#include "Desktop/Shell/Shell.h"

#include <QObject>

// Handles application events: start, closing of the window, further starts. Thread: main. The services are
// not owned and must outlive this object.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    enum class StartUp { Shown, Hidden };

    AppDelegate(const Shell &shell, ProgramInstance &instance, QObject *parent = nullptr);
    ~AppDelegate() override;

    // Call once the window exists: registers the hot key and, unless hidden, brings the window forward.
    void applicationDidFinishLaunching(StartUp startUp);

    // The process outlives its window so that the hot key keeps working.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }

    // Another start of the program, or a click on its Dock icon: shows the window.
    void applicationShouldHandleReopen(const QString &activationToken);

    // Handles quit requests from a menu or the session's end.
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    const Shell m_shell;
    ProgramInstance &m_instance;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/LinuxWorkspace.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/SystemClock.h"

#include <QProcess>
#include <QString>

#include <memory>
#include <optional>

// The services of the real desktop with what tests need around them: other programs, and a look at the screen
// through a connection that the services do not use. Main thread.
class LinuxBench
{
public:
    // How long a test waits for what must happen in the end: long, for a slow machine that is busy.
    static constexpr int patience = 30'000; // milliseconds

    // A program that is ended, however the test ends.
    using Program = std::unique_ptr<QProcess, void (*)(QProcess *)>;
    static Program start(const QString &program, const QStringList &arguments = {});

    // The windows at this moment, oldest first.
    X11Snapshot snapshot();

    // Waits for a window whose title contains the text to be active.
    bool waitForActive(const QString &partOfTitle);
    // Waits for a window whose title contains the text to exist, and gives it.
    std::optional<X11Window> waitForWindow(const QString &partOfTitle);
    bool waitForNoWindow(const QString &partOfTitle);

    void bringForward(const X11Window &window);

    // Posts the strokes to the application that is in front; the message of what it ends with, as `errorOf`.
    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = {});

    // The message of the PlatformError that the task ends with; empty when it succeeds.
    static QString errorOf(QCoro::Task<void> task);

    // What a tool prints, as xprop or xmodmap.
    static QByteArray output(const QString &program, const QStringList &arguments);

    SystemClock clock;
    BoundedQueue gio{QStringLiteral("desktop.gio"), QStringLiteral("The registry")};
    X11Display display{clock};
    LinuxWorkspace workspace{display, gio, clock};
    LinuxKeyboard keyboard{display, [this] { return workspace.frontmostWindow(); }};
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/LinuxWorkspace.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/SystemClock.h"

#include <QProcess>
#include <QString>

#include <memory>
#include <optional>

// The services of the real desktop, and what tests need besides: other programs and window queries. Thread:
// main.
class LinuxBench
{
public:
    // The timeout for awaited conditions; long enough for a slow, busy machine.
    static constexpr int patience = 30'000; // milliseconds

    // A process that is killed at the end of its scope.
    using Program = std::unique_ptr<QProcess, void (*)(QProcess *)>;
    static Program start(const QString &program, const QStringList &arguments = {});

    // The current windows, oldest first.
    WindowSnapshot snapshot();

    // Waits until a window whose title contains the text is active.
    bool waitForActive(const QString &partOfTitle);
    // Waits for a window whose title contains the text; nothing on timeout.
    std::optional<DesktopWindow> waitForWindow(const QString &partOfTitle);
    bool waitForNoWindow(const QString &partOfTitle);

    void bringForward(const DesktopWindow &window);

    // Posts the strokes to the frontmost application. Returns the error message, as `errorOf` does.
    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = {});

    // The message of the task's PlatformError; empty if it succeeds.
    static QString errorOf(QCoro::Task<void> task);

    // Runs a tool such as xprop and returns its standard output.
    static QByteArray output(const QString &program, const QStringList &arguments);

    SystemClock clock;
    BoundedQueue gio{QStringLiteral("desktop.gio"), QStringLiteral("The registry")};
    X11Display display{clock};
    LinuxWorkspace workspace{display, gio, clock};
    LinuxKeyboard keyboard{display, [this] { return workspace.frontmostWindow(); }};
};

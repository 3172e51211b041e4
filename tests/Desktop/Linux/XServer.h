// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

// A private X server without a window manager. $DISPLAY refers to it for this object's lifetime. `screen` is
// its width, height and depth.
class XServer
{
public:
    explicit XServer(const QString &screen = QStringLiteral("1280x800x24"));
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    bool isRunning() const { return m_process.state() == QProcess::Running && !m_display.isEmpty(); }
    QByteArray display() const { return m_display; }
    void signal(int number);
    // Waits until it has exited.
    void kill();

private:
    QByteArray m_outerDisplay = qgetenv("DISPLAY");
    QByteArray m_display;
    QProcess m_process;
};

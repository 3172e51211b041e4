// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/ClipboardText.h"

#include <QThread>

#include <memory>

// The text in the X server's clipboard, the selection CLIPBOARD, over a connection of its own. Its thread
// answers other applications, and this program's own window while that waits for an answer. Thread: main.
class X11Clipboard : public ClipboardText
{
public:
    // With an obstacle, every operation throws PlatformError with that text.
    explicit X11Clipboard(const std::optional<QString> &obstacle = std::nullopt) : m_obstacle(obstacle) {}
    ~X11Clipboard() override;
    X11Clipboard(const X11Clipboard &) = delete;
    X11Clipboard &operator=(const X11Clipboard &) = delete;

    // Throws PlatformError also for texts that their owner would send in pieces, from some 256 KB.
    QCoro::Task<std::optional<QString>> read() override;
    QCoro::Task<void> write(QString text) override;

private:
    class Worker;
    template <typename Job>
    QFuture<std::optional<QString>> run(Job job);
    QCoro::Task<std::optional<QString>> result(QFuture<std::optional<QString>> future);

    const std::optional<QString> m_obstacle;
    QThread m_thread;           // started at the first use
    Worker *m_worker = nullptr; // lives on that thread, and is destroyed at its end
};

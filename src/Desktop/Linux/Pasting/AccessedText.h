// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pasting/ClipboardAccess.h"
#include "Desktop/Linux/WindowSystem/ClipboardText.h"

#include <functional>

// The clipboard's text, by way of all its formats. Thread: main.
class AccessedText : public ClipboardText
{
public:
    // Returns null if the desktop offers no such access. Called at the first use.
    using Open = std::function<std::unique_ptr<ClipboardAccess>()>;

    explicit AccessedText(Open open) : m_open(std::move(open)) {}

    QCoro::Task<std::optional<QString>> read() override;
    QCoro::Task<void> write(QString text) override;

    // The same on a given access.
    static QCoro::Task<std::optional<QString>> readFrom(ClipboardAccess &access);
    // Returns once the desktop has taken the text, and read it if it reads at once.
    static QCoro::Task<void> writeTo(ClipboardAccess &access, QString text);

private:
    ClipboardAccess &access();

    Open m_open;
    std::unique_ptr<ClipboardAccess> m_access;
};

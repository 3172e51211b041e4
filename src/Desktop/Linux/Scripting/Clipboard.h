// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/ClipboardText.h"
#include "Scripting/ScriptHost.h"

// Carries out `the clipboard` and `set the clipboard to`. `text` must outlive this object. Thread: main.
class Clipboard : public ScriptHost
{
public:
    explicit Clipboard(ClipboardText &text) : m_text(text) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    ClipboardText &m_text;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/ClipboardText.h"
#include "Scripting/ScriptHost.h"

#include <QString>

// Scripts that say nothing to applications.
namespace SampleScripts {

class NoApplications : public ScriptHost
{
public:
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand) override { co_return std::nullopt; }
};

class SampleClipboard : public ClipboardText
{
public:
    std::optional<QString> text;

    QCoro::Task<std::optional<QString>> read() override { co_return text; }
    QCoro::Task<void> write(QString written) override
    {
        text = written;
        co_return;
    }
};

// The result; "Error: " and the message; or "none".
QString run(const QString &source, SampleClipboard &clipboard);
QString run(const QString &source);

} // namespace SampleScripts

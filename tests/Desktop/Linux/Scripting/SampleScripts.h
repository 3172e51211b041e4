// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/ScriptHost.h"

#include <QString>

// Scripts that say nothing to applications.
namespace SampleScripts {

class NoApplications : public ScriptHost
{
public:
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand) override { co_return std::nullopt; }
};

// The result; "Error: " and the message; or "none".
QString run(const QString &source);

} // namespace SampleScripts

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Scripting/ScriptHost.h"

// Carries out `beep`, `set volume`, `get volume settings` and `say`, through the sound server and the
// desktop's speech service. Thread: main.
class Sound : public ScriptHost
{
public:
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    QCoro::Task<void> beep(ScriptCommand command);
    QCoro::Task<void> setVolume(ScriptCommand command);
    QCoro::Task<ScriptValue> settings();
    QCoro::Task<void> say(ScriptCommand command);

    BoundedQueue m_worker{QStringLiteral("desktop.sound"), QStringLiteral("The desktop's sound server")};
};

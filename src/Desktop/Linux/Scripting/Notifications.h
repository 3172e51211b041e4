// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Scripting/ScriptBus.h"
#include "Scripting/ScriptHost.h"

// Carries out `display notification` through the desktop's notification service. `bus` must outlive this
// object. Thread: main.
class Notifications : public ScriptHost
{
public:
    explicit Notifications(ScriptBus &bus) : m_bus(bus) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    QCoro::Task<bool> understandsMarkup();

    ScriptBus &m_bus;
};

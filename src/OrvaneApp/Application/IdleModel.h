// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "Models/ModelManager.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

// Frees the model's memory when no task has run for a while. The next task loads it again. Thread: main.
// The model manager and the session are not owned and must outlive this object.
class IdleModel : public QObject
{
    Q_OBJECT

public:
    // Returns how long to wait, or nothing for ever. Called after each task and load, so that a choice made
    // meanwhile holds.
    using Patience = std::function<std::optional<std::chrono::milliseconds>()>;

    IdleModel(ModelManager &models, const AgentSession &session, Patience patience,
              QObject *parent = nullptr);

private:
    void restart();

    ModelManager &m_models;
    const AgentSession &m_session;
    const Patience m_patience;
    QTimer m_timer;
};

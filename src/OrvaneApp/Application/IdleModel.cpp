// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/IdleModel.h"

IdleModel::IdleModel(ModelManager &models, const AgentSession &session, Patience patience, QObject *parent)
    : QObject(parent), m_models(models), m_session(session), m_patience(std::move(patience))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_timer, &QTimer::timeout, &models, &ModelManager::release);
    connect(&models, &ModelManager::stateChanged, this, &IdleModel::restart);
    connect(&session, &AgentSession::isRunningChanged, this, &IdleModel::restart);
    restart();
}

void IdleModel::restart()
{
    m_timer.stop();
    if (m_session.isRunning() || m_models.state().kind != ModelManager::State::Kind::Loaded)
        return;
    if (const std::optional<std::chrono::milliseconds> patience = m_patience())
        m_timer.start(*patience);
}

// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/ActivityReport.h"

using namespace Qt::StringLiterals;

ActivityReport::ActivityReport(const ModelManager &models, const AgentSession &session,
                               ProgramActivity &activity, QObject *parent)
    : QObject(parent), m_models(models), m_session(session), m_activity(activity)
{
    connect(&models, &ModelManager::stateChanged, this, &ActivityReport::update);
    connect(&session, &AgentSession::isRunningChanged, this, &ActivityReport::update);
    update();
}

ActivityReport::~ActivityReport()
{
    setAtWork(false);
}

void ActivityReport::update()
{
    const bool isDownloading = m_models.state().kind == ModelManager::State::Kind::Downloading;
    setAtWork(isDownloading || m_session.isRunning());
}

void ActivityReport::setAtWork(bool isAtWork)
{
    if (m_isAtWork == isAtWork)
        return;
    m_isAtWork = isAtWork;
    if (isAtWork)
        m_activity.begin(u"A task or a download is running."_s);
    else
        m_activity.end();
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "Desktop/ProgramActivity.h"
#include "Models/ModelManager.h"

#include <QObject>

// Tells the desktop that the program is at work while a task or a download runs: neither is to slow down when
// the window is out of sight. Main thread; nothing is owned, and everything outlives this object.
class ActivityReport : public QObject
{
    Q_OBJECT

public:
    ActivityReport(const ModelManager &models, const AgentSession &session, ProgramActivity &activity,
                   QObject *parent = nullptr);
    ~ActivityReport() override;

private:
    void update();
    void setAtWork(bool isAtWork);

    const ModelManager &m_models;
    const AgentSession &m_session;
    ProgramActivity &m_activity;
    bool m_isAtWork = false;
};

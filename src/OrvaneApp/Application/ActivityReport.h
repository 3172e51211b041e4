// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "Desktop/Shell/ProgramActivity.h"
#include "Models/ModelManager.h"

#include <QObject>

// Reports a running task or download to the desktop, so that the program is not slowed down while its window
// is hidden. Thread: main. Nothing is owned; all arguments must outlive this object.
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

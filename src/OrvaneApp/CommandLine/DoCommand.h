// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "OrvaneApp/CommandLine/AnswerReader.h"
#include "OrvaneApp/CommandLine/Terminal.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

// `orvane do`: has the session carry out one task, shows its steps as they come, and asks before the risky
// ones. Main thread; nothing is owned.
class DoCommand : public QObject
{
    Q_OBJECT

public:
    DoCommand(ModelManager &models, AgentSession &session, Terminal &terminal, AnswerReader &answers,
              QObject *parent = nullptr);
    ~DoCommand() override;

    // Returns at once; `finished` tells the end. Once in the object's life.
    void start(const QString &task);

    // The user wants it to stop: it does so before the next step.
    void interrupt();

    // How a finished turn ended.
    static int exitStatus(const Turn &turn);

    // Says that the selected model cannot be used, and how to get it.
    static void reportNotReady(const ModelManager &models, Terminal &terminal);

Q_SIGNALS:
    void finished(int exitStatus);

private:
    QCoro::Task<void> begin(QString task);
    void watchSession();
    void showProgress();
    void showEntry(int turnIndex, int entryIndex);
    void ask();
    void awaitAnswer();
    void answer(bool yes);
    void showEnd(int turnIndex);

    ModelManager &m_models;
    AgentSession &m_session;
    Terminal &m_terminal;
    AnswerReader &m_answers;
    bool m_isInterrupted = false;
    QCoro::Task<void> m_beginning;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "OrvaneApp/CommandLine/AnswerReader.h"
#include "OrvaneApp/CommandLine/Terminal.h"
#include "OrvaneApp/CommandLine/TerminalDialogs.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

// `orvane do`: runs one task in a session, prints its steps, and asks before risky ones and for scripts.
// Thread: main; nothing is owned.
class DoCommand : public QObject
{
    Q_OBJECT

public:
    DoCommand(ModelManager &models, AgentSession &session, Dialogs &dialogs, Terminal &terminal,
              AnswerReader &answers, QObject *parent = nullptr);
    ~DoCommand() override;

    // Asynchronous; ends with `finished`. Call once.
    void start(const QString &task);

    // Stops before the next step.
    void interrupt();

    // The exit status for a finished turn.
    static int exitStatus(const Turn &turn);

    // Prints that the selected model is unusable, and how to get it.
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
    TerminalDialogs m_scriptsQuestions;
    bool m_isInterrupted = false;
    QCoro::Task<void> m_beginning;
};

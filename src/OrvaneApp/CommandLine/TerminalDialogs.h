// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Dialogs.h"
#include "OrvaneApp/CommandLine/AnswerReader.h"
#include "OrvaneApp/CommandLine/Terminal.h"

#include <QObject>

// Asks scripts' questions at the terminal, one line for each part of the answer. Thread: main; nothing is
// owned.
class TerminalDialogs : public QObject
{
    Q_OBJECT

public:
    TerminalDialogs(Dialogs &dialogs, Terminal &terminal, AnswerReader &answers, QObject *parent = nullptr);

    bool isAsking() const { return m_part != Part::None; }

Q_SIGNALS:
    // The question was answered or withdrawn.
    void asked();

private:
    enum class Part { None, Text, Choice, Button };

    void takeChange();
    void show(const Dialog &dialog);
    void ask(Part part);
    void take(const QString &line);
    void takeChoice(const QString &line);
    void takeButton(const QString &line);
    void end(int button);
    void close();
    QString prompt() const;

    Dialogs &m_dialogs;
    Terminal &m_terminal;
    AnswerReader &m_answers;
    Part m_part = Part::None;
    DialogAnswer m_answer;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Machine/ScriptCode.h"
#include "Scripting/Machine/ScriptLoop.h"
#include "Scripting/Machine/ScriptVariables.h"
#include "Scripting/ScriptCommand.h"
#include "Scripting/ScriptError.h"

#include <chrono>
#include <optional>

// Executes a compiled script piece by piece, without waiting for anything: a command to the outside pauses it
// until the answer is given. Bounded in instructions, memory and depth. Thread: one.
class ScriptMachine
{
public:
    // The most instructions of a script, and the most handlers running at a time.
    static constexpr qint64 mostInstructions = 50'000'000;
    static constexpr std::size_t deepestCalls = 1000;

    explicit ScriptMachine(ScriptCode code);

    enum class State {
        Paused,   // the time is over: go on
        Waiting,  // for the answer to `command`
        Finished, // with `result`
    };

    // Goes on for about this time. Throws ScriptError if the script fails.
    State run(std::chrono::microseconds time);

    const ScriptCommand &command() const { return m_command; }
    // The answers to a command.
    void answer(const ScriptValue &value);
    void fail(const ScriptError &error);

    const ScriptValue &result() const { return m_result; }

private:
    // What an error returns to.
    struct Heights
    {
        std::size_t values = 0;
        std::size_t targets = 0;
        std::size_t settings = 0;
        std::size_t loops = 0;
        std::size_t tries = 0;
        std::size_t calls = 0;
    };
    struct Try
    {
        int handler = 0;
        Heights heights;
    };
    struct CallFrame
    {
        int returnAddress = 0;
        Heights heights;
    };
    enum class Answer { Pushed, Ignored, ReplacesItem };

    void execute(const ScriptInstruction &instruction);
    void executeValue(const ScriptInstruction &instruction);
    void executeVariable(const ScriptInstruction &instruction);
    void executeControl(const ScriptInstruction &instruction);
    void executeLoop(const ScriptInstruction &instruction);

    void push(ScriptValue value) { m_values.push_back(std::move(value)); }
    void pushNew(ScriptValue value);
    ScriptValue pop();
    QList<ScriptValue> popSeveral(int count);
    void checkMemory();

    ScriptValue target() const;
    std::optional<QString> applicationOfTarget() const;
    const QString &nameOf(int index) const { return m_code.names.at(index); }
    const QStringList &labelsOf(int index) const { return m_code.labels.at(static_cast<std::size_t>(index)); }
    ScriptSettings &settings() { return m_settings.back(); }

    void load(const QString &name, bool isPropertyFirst);
    void store(const QString &name, const ScriptValue &value);
    void storeTerm(const QString &name, const ScriptValue &value);
    void storeContents(const QString &name, const ScriptValue &value);
    void makeReference(const QString &name);
    void makeRecord(const QStringList &labels);
    void spread(int count);
    ScriptObject selection(const ScriptInstruction &instruction);
    ScriptValue propertyOf(const ScriptValue &container, const QString &name);
    void setProperty(const ScriptValue &container, const QString &name, const ScriptValue &value);
    void getElement(const ScriptInstruction &instruction);
    void resolve();
    void setOutside(const ScriptValue &object, const ScriptValue &value);
    void setDelimiters(const ScriptValue &value);
    void call(const ScriptInstruction &instruction);
    void returnFromCall();
    void perform(const ScriptInstruction &instruction);
    void request(ScriptCommand command, Answer answer);
    void enterConsidering(const QStringList &attributes);
    void raise();
    void caught(const ScriptError &error);

    Heights heights() const;
    void restore(const Heights &heights);

    ScriptCode m_code;
    int m_next = 0; // instruction
    qint64 m_instructions = 0;
    qsizetype m_produced = 0; // units since the last check of the memory
    bool m_isFinished = false;

    std::vector<ScriptValue> m_values;
    std::vector<ScriptValue> m_targets; // of `tell`; missing values separate the handlers'
    std::vector<ScriptSettings> m_settings{1};
    std::vector<ScriptLoop> m_loops;
    std::vector<Try> m_tries;
    std::vector<CallFrame> m_calls;
    ScriptVariables m_variables;
    ScriptValue m_result;
    QString m_errorMessage;
    int m_errorNumber = 0;

    bool m_isWaiting = false;
    ScriptCommand m_command;
    Answer m_answer = Answer::Ignored;
    qsizetype m_item = 0; // of the list that is being resolved
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/LocalizedError.h"

#include <utility>

// A failure in a script, which `try` can catch. The numbers are those that scripts test for.
class ScriptError : public LocalizedError
{
public:
    enum Number {
        General = -2700,
        Syntax = -2741,
        DivisionByZero = -2701,
        UndefinedVariable = -2753,
        UserCancelled = -128,
        TimedOut = -1712,
        BadCoercion = -1700,
        NotUnderstood = -1708,
        NoSuchObject = -1728,
        NotSettable = -10006,
        TooLarge = -2710,
    };

    explicit ScriptError(QString message, int number = General)
        : m_message(std::move(message)), m_number(number)
    {
    }

    QString errorDescription() const override { return m_message; }
    int number() const { return m_number; }

private:
    QString m_message;
    int m_number;
};

// The end of a script by a limit or by cancellation; `try` doesn't catch it.
class ScriptStopped : public ScriptError
{
public:
    using ScriptError::ScriptError;
};

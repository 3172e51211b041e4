// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/LocalizedError.h"
#include "Base/Text.h"

// A failure detected by an action: one English sentence, cleaned to a single line because it may quote other
// texts.
class ActionError : public LocalizedError
{
public:
    explicit ActionError(const QString &message) : m_message(Text::cleaned(message)) {}

    QString message() const { return m_message; }
    QString errorDescription() const override { return m_message; }

    friend bool operator==(const ActionError &left, const ActionError &right)
    {
        return left.m_message == right.m_message;
    }

private:
    QString m_message;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QList>
#include <QString>

// A recorded task, from the system prompt to the closing reply, and the prompts of its steps. Files:
// conversations/N-steps.json with N = 3, 6, 12.
class RecordedConversation
{
public:
    // Aborts if the file is missing.
    static QList<ChatMessage> read(int steps);

    // The conversation as sent to the model at each step.
    static QList<QList<ChatMessage>> prompts(const QList<ChatMessage> &conversation);

    // The message contents.
    static QList<QString> texts(const QList<ChatMessage> &conversation);
};

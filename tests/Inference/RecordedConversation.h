// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QList>
#include <QString>

// A whole task as the agent holds it, from the system prompt to the closing reply, and the prompts that its
// steps make out of it. The conversations lie beside this file, one for each number of steps: 3, 6 and 12.
class RecordedConversation
{
public:
    // Ends the process when there is none.
    static QList<ChatMessage> read(int steps);

    // What the model is shown at each step.
    static QList<QList<ChatMessage>> prompts(const QList<ChatMessage> &conversation);

    // The contents alone.
    static QList<QString> texts(const QList<ChatMessage> &conversation);
};

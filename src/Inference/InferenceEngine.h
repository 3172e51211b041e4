// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <functional>

// What the rest of the system holds of the model runtime. All operations are called on the main thread.
class InferenceEngine
{
public:
    virtual ~InferenceEngine() = default;

    // True while a model and a context are ready.
    virtual bool isLoaded() const = 0;

    // Loads the model file at this path in place of the one loaded before. Throws InferenceError.
    virtual QCoro::Task<void> load(QString path) = 0;

    // Asks for the model to be released, and returns at once.
    virtual void unload() = 0;

    // The model's reply to the conversation, of at most `maxTokens` tokens. `onToken` is called with each
    // decoded piece of text, in order, on a thread of the engine. Throws InferenceError.
    virtual QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                          std::function<void(QString)> onToken) = 0;
};

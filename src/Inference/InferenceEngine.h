// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <functional>

// Interface of the model runtime. Thread: main.
class InferenceEngine
{
public:
    virtual ~InferenceEngine() = default;

    // True while a model and a context are loaded.
    virtual bool isLoaded() const = 0;

    // Replaces the loaded model by the file at `path`. Throws InferenceError.
    virtual QCoro::Task<void> load(QString path) = 0;

    // Releases the model asynchronously.
    virtual void unload() = 0;

    // The model's reply of at most `maxTokens` tokens. `onToken` receives each decoded piece of text in
    // order, on an engine thread. Throws InferenceError.
    virtual QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                          std::function<void(QString)> onToken) = 0;
};

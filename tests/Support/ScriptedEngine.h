// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"
#include "Base/Text.h"
#include "Inference/InferenceEngine.h"
#include "Inference/InferenceError.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

// An engine without a model: answers and timing are scripted, calls are recorded. Called on the main thread;
// pieces of a reply come from another thread, as with the real engine. A waiting call may outlive the engine.
class ScriptedEngine : public InferenceEngine
{
public:
    using Reply = std::variant<QString, InferenceError>;
    // Awaited before a call returns, so that a test can hold it (see Gate).
    using Hook = std::function<QCoro::Task<void>()>;

    // The script: replies in order, then DecodeFailed.
    QList<Reply> replies;
    Hook beforeReply;
    Hook beforeLoaded;
    std::optional<InferenceError> loadError;
    // If false, `unload` is only recorded and the model stays loaded until the next load, like a busy
    // engine's.
    bool unloadsAtOnce = true;

    // The record, one entry per call.
    QList<QList<ChatMessage>> conversations;
    QList<int> tokenLimits;
    QStringList loadedPaths;
    int unloadCount = 0;

    void setLoaded(bool loaded) { *m_loaded = loaded; }

    bool isLoaded() const override { return *m_loaded; }

    QCoro::Task<void> load(QString path) override
    {
        loadedPaths.append(path);
        const std::shared_ptr<bool> loaded = m_loaded;
        const std::optional<InferenceError> error = loadError;
        const Hook hook = beforeLoaded;
        if (hook)
            co_await hook();
        *loaded = !error;
        if (error)
            throw *error;
    }

    void unload() override
    {
        ++unloadCount;
        if (unloadsAtOnce)
            *m_loaded = false;
    }

    QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                  std::function<void(QString)> onToken) override
    {
        conversations.append(messages);
        tokenLimits.append(maxTokens);
        const Reply reply = replies.isEmpty() ? Reply(InferenceError(InferenceError::Code::DecodeFailed))
                                              : replies.takeFirst();
        const std::shared_ptr<SerialQueue> queue = m_queue;
        const Hook hook = beforeReply;
        if (hook)
            co_await hook();
        if (const auto *error = std::get_if<InferenceError>(&reply))
            throw *error;
        const QString text = std::get<QString>(reply);
        const auto streamPieces = [text, onToken] {
            for (const QString &piece : Text::chunked(text, 4))
                onToken(piece);
        };
        const QFuture<void> streamed = queue->run(streamPieces);
        co_await streamed;
        // Deliver the pieces before the reply, even if the future was finished before the await.
        const auto untilTheyHaveArrived = std::chrono::milliseconds(0);
        co_await QCoro::sleepFor(untilTheyHaveArrived);
        co_return text;
    }

private:
    std::shared_ptr<bool> m_loaded = std::make_shared<bool>(false);
    std::shared_ptr<SerialQueue> m_queue = std::make_shared<SerialQueue>(QStringLiteral("scripted.engine"));
};

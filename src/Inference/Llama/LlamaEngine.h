// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"
#include "Inference/ContextFitting.h"
#include "Inference/ControlTokens.h"
#include "Inference/InferenceEngine.h"
#include "Inference/Llama/LlamaHandles.h"
#include "Inference/Llama/LlamaPromptCache.h"

#include <memory>
#include <mutex>
#include <stop_token>

struct llama_vocab;

// Runs one local GGUF model through llama.cpp. Every call of the library is made on the serial queue
// "llama.engine", in the order in which loads, unloads and generations were asked for; so generations queue
// up behind each other, and a generation that has started runs to its end.
//
// The operations are called on the main thread; the awaited ones resume there. The destructor waits for what
// is queued, and makes a load or a generation in progress end early. It does not free a loaded model: whoever
// owns the engine calls `unload` first, and the queue then carries that out before the engine is gone.
class LlamaEngine final : public InferenceEngine
{
public:
    // The context length in tokens.
    static constexpr quint32 contextSize = ContextFitting::contextSize;

    // Every conversation is expected to begin with these messages: once a model is loaded they are evaluated
    // ahead, whenever there is nothing else to do.
    explicit LlamaEngine(QList<ChatMessage> beginning = {});
    ~LlamaEngine() override;

    bool isLoaded() const override;

    // Frees the model held before it looks at the new file, so after a failure none is loaded. Throws
    // InferenceError loadFailed or contextFailed; loadFailed as well when the engine is destroyed meanwhile.
    QCoro::Task<void> load(QString path) override;

    void unload() override;

    // Calls `onToken` on the queue's thread; it must be quick and never wait for the main thread. Throws
    // InferenceError notLoaded, tokenizeFailed, contextFailed or decodeFailed; the model stays loaded.
    // Cancelling whoever awaits it does not stop it; destroying the engine does, before the next token.
    QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                  std::function<void(QString)> onToken) override;

private:
    // On the queue only, all of them.
    void loadModel(const QString &path);
    void freeAll();
    QString run(const QList<ChatMessage> &messages, int maxTokens,
                const std::function<void(QString)> &onToken);
    // None when no model is loaded, or it has no vocabulary.
    const llama_vocab *vocab() const;
    std::vector<qint32> prompt(const QList<ChatMessage> &messages) const;
    void evaluateAhead();
    void evaluateAheadChunk();
    void keepPrompt();
    void forNobody(const std::function<void()> &work);
    void setLoaded(bool loaded);

    const QList<ChatMessage> m_beginning;

    // Touched on the queue only.
    LlamaModel m_model;
    LlamaContext m_ctx;
    ControlTokens m_controlTokens;
    LlamaPromptCache m_promptCache;
    bool m_isEvaluatingAhead = false;

    mutable std::mutex m_lock; // guards m_loaded, the one thing that other threads read
    bool m_loaded = false;

    std::stop_source m_end; // of the engine itself: the user quits
    std::unique_ptr<SerialQueue> m_queue;
};

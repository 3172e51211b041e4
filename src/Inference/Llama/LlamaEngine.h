// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"
#include "Base/SystemMemory.h"
#include "Inference/ContextFitting.h"
#include "Inference/ControlTokens.h"
#include "Inference/InferenceEngine.h"
#include "Inference/Llama/LlamaHandles.h"
#include "Inference/Llama/LlamaPromptCache.h"

#include <memory>
#include <mutex>
#include <stop_token>

struct llama_vocab;

// Runs a local GGUF model through llama.cpp. All library calls are made on the serial queue "llama.engine",
// in the order of the loads, unloads and generations requested.
//
// Thread: main; awaited operations resume there. The destructor drains the queue; a running load or
// generation ends early. It does not free a loaded model: the owner calls `unload` first.
class LlamaEngine final : public InferenceEngine
{
public:
    // Context length in tokens.
    static constexpr quint32 contextSize = ContextFitting::contextSize;

    // Returns the free memory in bytes, or nothing if it isn't known. Called on the queue.
    using MemorySource = std::function<std::optional<qint64>()>;

    // `beginning` is the common start of all conversations: after a model is loaded, it is evaluated ahead
    // while the engine is idle.
    explicit LlamaEngine(
        QList<ChatMessage> beginning = {},
        MemorySource freeMemory = [] { return SystemMemory::available(); });
    ~LlamaEngine() override;

    bool isLoaded() const override;

    // Frees the current model first, so after a failure none is loaded. Throws InferenceError
    // TooLittleMemory, if the machine would have to swap, LoadFailed or ContextFailed; LoadFailed also if the
    // engine is destroyed meanwhile.
    QCoro::Task<void> load(QString path) override;

    void unload() override;

    // Calls `onToken` on the queue's thread; it must be quick and never wait for the main thread. Throws
    // InferenceError NotLoaded, TokenizeFailed, ContextFailed or DecodeFailed; the model stays loaded.
    // Cancelling the awaiting task does not stop it; destroying the engine does, before the next token.
    QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                  std::function<void(QString)> onToken) override;

private:
    // Thread for all of these: the queue.
    void loadModel(const QString &path);
    void requireMemory(const QString &path) const;
    void freeAll();
    QString run(const QList<ChatMessage> &messages, int maxTokens,
                const std::function<void(QString)> &onToken);
    // Null if no model is loaded, or it has no vocabulary.
    const llama_vocab *vocab() const;
    std::vector<qint32> prompt(const QList<ChatMessage> &messages) const;
    void evaluateAhead();
    void evaluateAheadChunk();
    void keepPrompt();
    void runSpeculatively(const std::function<void()> &work);
    void setLoaded(bool loaded);

    const QList<ChatMessage> m_beginning;
    const MemorySource m_freeMemory;

    // Accessed on the queue only.
    LlamaModel m_model;
    LlamaContext m_ctx;
    ControlTokens m_controlTokens;
    LlamaPromptCache m_promptCache;
    bool m_isEvaluatingAhead = false;

    mutable std::mutex m_lock; // guards m_loaded, the only state that other threads read
    bool m_loaded = false;

    std::stop_source m_end; // requested by the destructor
    std::unique_ptr<SerialQueue> m_queue;
};

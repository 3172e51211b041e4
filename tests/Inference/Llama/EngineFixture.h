// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/InferenceError.h"
#include "Inference/Llama/LlamaEngine.h"
#include "Inference/Llama/LlamaLog.h"
#include "Inference/TinyModel.h"
#include "Support/Awaited.h"

#include <QCoroTask>
#include <QTemporaryDir>
#include <QThread>

#include <optional>

// An engine with the real library, and helpers for its tests. Thread: main. Unloads before destruction, as
// the program does.
class EngineFixture
{
public:
    explicit EngineFixture(
        const QList<ChatMessage> &beginning = {},
        const LlamaEngine::MemorySource &freeMemory = [] { return SystemMemory::available(); })
    {
        LlamaLog::keep(LlamaLog::Kept::Errors);
        m_engine.emplace(beginning, freeMemory);
    }
    ~EngineFixture() { m_engine->unload(); }

    LlamaEngine &engine() { return *m_engine; }

    QString filePath(const QString &name) const { return m_folder.filePath(name); }

    // Each model gets its own file: the engine may still be reading the previous one.
    void load(const TinyModel &model)
    {
        const QString path = filePath(QStringLiteral("model-%1.gguf").arg(++m_models));
        model.write(path);
        Awaited::result(m_engine->load(path));
    }

    static QList<ChatMessage> userSays(const QString &content)
    {
        return {{ChatMessage::Role::User, content}};
    }

    // The reply to one short message; its pieces are in `pieces`.
    QString reply(int maxTokens, const QString &content = QStringLiteral("Hi"))
    {
        pieces.clear();
        return Awaited::result(m_engine->generate(userSays(content), maxTokens, collect()));
    }

    std::function<void(QString)> collect()
    {
        return [this](const QString &text) {
            pieces.append(text);
            pieceThread = QThread::currentThread();
            pieceThreadName = pieceThread->objectName();
        };
    }

    // The error code thrown by `work`, or nothing.
    template <typename Work>
    static std::optional<InferenceError::Code> failureOf(Work work)
    {
        try {
            work();
        } catch (const InferenceError &error) {
            return error.code();
        }
        return std::nullopt;
    }

    QStringList pieces;
    QThread *pieceThread = nullptr;
    QString pieceThreadName;

private:
    QTemporaryDir m_folder;
    int m_models = 0;
    std::optional<LlamaEngine> m_engine; // created after the log callback is installed
};

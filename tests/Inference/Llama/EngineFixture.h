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

// An engine with the real library behind it, and the small things that its tests keep asking for. Used on the
// test's main thread; unloads before it goes, as the program does.
class EngineFixture
{
public:
    explicit EngineFixture(const QList<ChatMessage> &beginning = {})
    {
        LlamaLog::keep(LlamaLog::Kept::Errors);
        m_engine.emplace(beginning);
    }
    ~EngineFixture() { m_engine->unload(); }

    LlamaEngine &engine() { return *m_engine; }

    QString filePath(const QString &name) const { return m_folder.filePath(name); }

    // Each model in a file of its own: the engine may be reading the last one until this one is loaded.
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

    // The reply to one short message; the pieces in which it came are in `pieces`.
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

    // The code of the failure with which this work ends; nothing if it succeeds.
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
    std::optional<LlamaEngine> m_engine; // once the library's log is taken over
};

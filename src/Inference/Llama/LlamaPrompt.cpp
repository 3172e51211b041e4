// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaPrompt.h"

#include "Inference/Llama/LibraryCount.h"
#include "Inference/Llama/LibraryFailure.h"
#include "Inference/Llama/PromptTemplate.h"

#include <llama.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 spareTokens = 16;

// Some files declare their turn markers as ordinary added tokens. Unlike added words, these are bracketed and
// occur in the chat template.
bool isTemplateMarker(const QString &text, const QString &chatTemplate)
{
    const bool bracketed =
        (text.startsWith(u'<') && text.endsWith(u'>')) || (text.startsWith(u'[') && text.endsWith(u']'));
    return bracketed && chatTemplate.contains(text);
}

} // namespace

ControlTokens LlamaPrompt::controlTokens(const llama_model *model)
{
    const QString chatTemplate = QString::fromUtf8(llama_model_chat_template(model, nullptr));
    const llama_vocab *const vocab = llama_model_get_vocab(model);
    if (llama_vocab_type(vocab) == LLAMA_VOCAB_TYPE_NONE)
        return {}; // querying tokens of such a vocabulary aborts

    QStringList texts;
    for (llama_token token = 0; token < llama_vocab_n_tokens(vocab); ++token) {
        const int attributes = llama_vocab_get_attr(vocab, token);
        const bool control = attributes & (LLAMA_TOKEN_ATTR_CONTROL | LLAMA_TOKEN_ATTR_UNKNOWN);
        if (!control && !(attributes & LLAMA_TOKEN_ATTR_USER_DEFINED))
            continue;
        const QString text = QString::fromUtf8(llama_vocab_get_text(vocab, token));
        if (control || isTemplateMarker(text, chatTemplate))
            texts.append(text);
    }
    return ControlTokens(texts);
}

QString LlamaPrompt::render(const QList<ChatMessage> &messages, const llama_model *model,
                            const ControlTokens &controlTokens)
{
    QList<ChatMessage> harmless = messages;
    for (ChatMessage &message : harmless)
        message.content = controlTokens.broken(message.content);

    const char *const chatTemplate = llama_model_chat_template(model, nullptr);
    const auto apply = [chatTemplate](const llama_chat_message *chat, size_t count, char *buffer,
                                      qint32 size) {
        return llama_chat_apply_template(chatTemplate, chat, count, true, buffer, size);
    };
    return PromptTemplate::render(harmless, apply);
}

std::vector<qint32> LlamaPrompt::tokenized(const llama_vocab *vocab, const QString &prompt)
{
    const QByteArray text = prompt.toUtf8();
    const qint32 bytes = libraryCount(text.size());
    std::vector<llama_token> tokens(static_cast<size_t>(libraryCount(bytes + spareTokens)), 0);
    const auto tokenize = [&] {
        const bool addSpecial = true;
        const bool parseSpecial = true;
        return llama_tokenize(vocab, text.constData(), bytes, tokens.data(),
                              libraryCount(qint64(tokens.size())), addSpecial, parseSpecial);
    };
    const qint32 count = reported(InferenceError::Code::TokenizeFailed, tokenize);
    if (count < 1)
        throw InferenceError(InferenceError::Code::TokenizeFailed);
    tokens.resize(static_cast<size_t>(count));
    return tokens;
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"
#include "Inference/ControlTokens.h"

#include <QList>
#include <QString>

#include <vector>

struct llama_model;
struct llama_vocab;

// What a loaded model says about prompts. On the engine's queue.
namespace LlamaPrompt {

// The control-token texts of the model's vocabulary. Walks the whole vocabulary: read once after loading.
ControlTokens controlTokens(const llama_model *model);

// The prompt of the conversation by the model's own chat template (ChatML without one), with no content able
// to stand for a control token. Never fails.
QString render(const QList<ChatMessage> &messages, const llama_model *model,
               const ControlTokens &controlTokens);

// The prompt's tokens, the marks of turns among them. Throws InferenceError tokenizeFailed.
std::vector<qint32> tokenized(const llama_vocab *vocab, const QString &prompt);

} // namespace LlamaPrompt

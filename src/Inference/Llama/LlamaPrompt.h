// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"
#include "Inference/ControlTokens.h"

#include <QList>
#include <QString>

#include <vector>

struct llama_model;
struct llama_vocab;

// Prompt rendering and tokenisation with a loaded model. Thread: the engine's queue.
namespace LlamaPrompt {

// Control token texts of the model's vocabulary. Scans the whole vocabulary: call once per load.
ControlTokens controlTokens(const llama_model *model);

// The prompt in the model's chat template (ChatML if it has none), with control tokens in the contents
// broken. Never fails.
QString render(const QList<ChatMessage> &messages, const llama_model *model,
               const ControlTokens &controlTokens);

// The prompt's tokens, special tokens included. Throws InferenceError TokenizeFailed.
std::vector<qint32> tokenized(const llama_vocab *vocab, const QString &prompt);

} // namespace LlamaPrompt

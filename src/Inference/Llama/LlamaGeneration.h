// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>
#include <stop_token>
#include <vector>

class LlamaPromptCache;
struct llama_context;
struct llama_vocab;

// One reply of the model, from the prompt's tokens to the last token. On the engine's queue only.
namespace LlamaGeneration {

// Fits the prompt into the context, and samples at most `maxTokens` tokens; starts from an empty context
// memory and a fresh random seed, so that no generation sees another (`memory` spares work, and changes no
// bit). `onToken` gets each piece of whole text as it comes. Throws InferenceError tokenizeFailed,
// contextFailed or decodeFailed; the context stays usable.
QString run(llama_context *context, const llama_vocab *vocab, LlamaPromptCache &memory,
            std::vector<qint32> prompt, int maxTokens, const std::function<void(QString)> &onToken,
            const std::stop_token &cancellation);

} // namespace LlamaGeneration

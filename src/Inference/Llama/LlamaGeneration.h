// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>
#include <stop_token>
#include <vector>

class LlamaPromptCache;
struct llama_context;
struct llama_vocab;

// Generates one reply. Thread: the engine's queue.
namespace LlamaGeneration {

// Fits the prompt into the context and samples at most `maxTokens` tokens. Starts from an empty KV cache and
// a fresh random seed, so generations are independent; `memory` saves work without changing a bit of the
// result. `onToken` receives each piece of complete text. Throws InferenceError TokenizeFailed, ContextFailed
// or DecodeFailed; the context stays usable.
QString run(llama_context *context, const llama_vocab *vocab, LlamaPromptCache &memory,
            std::vector<qint32> prompt, int maxTokens, const std::function<void(QString)> &onToken,
            const std::stop_token &cancellation);

} // namespace LlamaGeneration

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <functional>
#include <stop_token>

struct llama_context;
struct llama_vocab;

// One reply of the model, from the prompt text to the last token. On the engine's queue only.
namespace LlamaGeneration {

// Tokenises the prompt, fits it into the context, and samples at most `maxTokens` tokens; starts from an
// empty context memory and a fresh random seed, so that no generation sees another. `onToken` gets each piece
// of whole text as it comes. Throws InferenceError tokenizeFailed, contextFailed or decodeFailed; the context
// stays usable.
QString run(llama_context *context, const llama_vocab *vocab, const QString &prompt, int maxTokens,
            const std::function<void(QString)> &onToken, const std::stop_token &cancellation);

} // namespace LlamaGeneration

// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaGeneration.h"

#include "Inference/ContextFitting.h"
#include "Inference/InferenceError.h"
#include "Inference/Llama/LibraryCount.h"
#include "Inference/Llama/LibraryFailure.h"
#include "Inference/Llama/LlamaPromptCache.h"
#include "Inference/Utf8.h"

#include <QRandomGenerator>

#include <llama.h>

#include <algorithm>
#include <array>
#include <memory>

namespace {

using Code = InferenceError::Code;

constexpr qint32 topK = 40;
constexpr float temperature = 0.2F;
constexpr qsizetype pieceBytes = 64;
constexpr qint32 lastPosition = -1;

struct SamplerDeleter
{
    void operator()(llama_sampler *sampler) const { llama_sampler_free(sampler); }
};
using Sampler = std::unique_ptr<llama_sampler, SamplerDeleter>;

Sampler makeSampler()
{
    Sampler chain(llama_sampler_chain_init(llama_sampler_chain_default_params()));
    if (!chain)
        throw InferenceError(Code::ContextFailed);
    llama_sampler_chain_add(chain.get(), llama_sampler_init_top_k(topK));
    llama_sampler_chain_add(chain.get(), llama_sampler_init_temp(temperature));
    llama_sampler_chain_add(chain.get(), llama_sampler_init_dist(QRandomGenerator::system()->generate()));
    return chain;
}

// Evaluates one sampled token.
void decode(llama_context *context, llama_token token)
{
    const auto decodeToken = [&] { return llama_decode(context, llama_batch_get_one(&token, 1)); };
    if (reported(Code::DecodeFailed, decodeToken) != 0)
        throw InferenceError(Code::DecodeFailed);
}

// Evaluates the prompt; false if cancelled.
bool evaluate(LlamaPromptCache &memory, const std::stop_token &cancellation)
{
    while (!memory.isEvaluated()) {
        if (cancellation.stop_requested())
            return false;
        memory.evaluateChunk();
    }
    return true;
}

// The bytes of a token; empty for a special token or one longer than the buffer.
QByteArrayView piece(const llama_vocab *vocab, llama_token token, std::array<char, pieceBytes> &buffer)
{
    buffer.fill('\0');
    const qint32 stripped = 0;
    const bool renderSpecial = false;
    const qint32 length =
        llama_token_to_piece(vocab, token, buffer.data(), libraryCount(pieceBytes), stripped, renderSpecial);
    return QByteArrayView(buffer.data(), std::max(length, 0));
}

} // namespace

QString LlamaGeneration::run(llama_context *context, const llama_vocab *vocab, LlamaPromptCache &memory,
                             std::vector<qint32> prompt, int maxTokens,
                             const std::function<void(QString)> &onToken, const std::stop_token &cancellation)
{
    memory.begin(context, ContextFitting::fitted(std::move(prompt), maxTokens));
    const Sampler sampler = makeSampler();
    if (maxTokens < 1 || !evaluate(memory, cancellation))
        return {};

    QString reply;
    Utf8::Assembler assembler;
    std::array<char, pieceBytes> buffer;
    for (int step = 1;; ++step) {
        const llama_token token = llama_sampler_sample(sampler.get(), context, lastPosition);
        if (llama_vocab_is_eog(vocab, token))
            break;
        const QString text = assembler.append(piece(vocab, token, buffer));
        if (!text.isEmpty()) {
            reply += text;
            onToken(text);
        }
        if (step >= maxTokens || cancellation.stop_requested())
            break;
        decode(context, token);
    }
    return reply;
}

// SPDX-License-Identifier: Apache-2.0
#include "Inference/LlamaGeneration.h"

#include "Inference/ContextFitting.h"
#include "Inference/InferenceError.h"
#include "Inference/LibraryCount.h"
#include "Inference/LlamaLimits.h"
#include "Inference/Utf8.h"

#include <QRandomGenerator>

#include <llama.h>

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <vector>

namespace {

using Code = InferenceError::Code;

constexpr qint32 topK = 40;
constexpr float temperature = 0.2F;
constexpr qint64 spareTokens = 16;
constexpr qsizetype pieceBytes = 64;
constexpr qint32 lastPosition = -1;

struct SamplerDeleter
{
    void operator()(llama_sampler *sampler) const { llama_sampler_free(sampler); }
};
using Sampler = std::unique_ptr<llama_sampler, SamplerDeleter>;

// The library throws through its C interface where a vocabulary is broken; every such failure of a call is
// the error that the call's bad return value would be.
template <typename Call>
auto reported(Code failure, Call call)
{
    try {
        return call();
    } catch (const std::exception &) {
        throw InferenceError(failure);
    }
}

std::vector<llama_token> tokenized(const llama_vocab *vocab, const QString &prompt)
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
    const qint32 count = reported(Code::tokenizeFailed, tokenize);
    if (count < 1)
        throw InferenceError(Code::tokenizeFailed);
    tokens.resize(static_cast<size_t>(count));
    return tokens;
}

Sampler makeSampler()
{
    Sampler chain(llama_sampler_chain_init(llama_sampler_chain_default_params()));
    if (!chain)
        throw InferenceError(Code::contextFailed);
    llama_sampler_chain_add(chain.get(), llama_sampler_init_top_k(topK));
    llama_sampler_chain_add(chain.get(), llama_sampler_init_temp(temperature));
    llama_sampler_chain_add(chain.get(), llama_sampler_init_dist(QRandomGenerator::system()->generate()));
    return chain;
}

enum class Decoding { Complete, Cancelled };

// The library aborts on a batch longer than its limit, so a prompt goes in in several.
Decoding decode(llama_context *context, std::span<llama_token> tokens, const std::stop_token &cancellation)
{
    // A model that only embeds text keeps no memory; the library would encode the batch and leave no scores.
    if (!llama_get_memory(context))
        throw InferenceError(Code::decodeFailed);
    while (!tokens.empty()) {
        if (cancellation.stop_requested())
            return Decoding::Cancelled;
        const std::span<llama_token> part =
            tokens.first(std::min<size_t>(tokens.size(), LlamaLimits::batchSize));
        tokens = tokens.subspan(part.size());
        const auto decodePart = [&] {
            return llama_decode(context, llama_batch_get_one(part.data(), libraryCount(qint64(part.size()))));
        };
        if (reported(Code::decodeFailed, decodePart) != 0)
            throw InferenceError(Code::decodeFailed);
    }
    return Decoding::Complete;
}

// The bytes of a token; none for a special token and for one longer than the buffer.
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

QString LlamaGeneration::run(llama_context *context, const llama_vocab *vocab, const QString &prompt,
                             int maxTokens, const std::function<void(QString)> &onToken,
                             const std::stop_token &cancellation)
{
    std::vector<llama_token> input = ContextFitting::fitted(tokenized(vocab, prompt), maxTokens);
    const bool clearData = true;
    llama_memory_clear(llama_get_memory(context), clearData);
    const Sampler sampler = makeSampler();

    QString reply;
    Utf8::Assembler assembler;
    std::array<char, pieceBytes> buffer;
    for (int step = 0; step < maxTokens; ++step) {
        if (decode(context, input, cancellation) == Decoding::Cancelled)
            break;
        const llama_token token = llama_sampler_sample(sampler.get(), context, lastPosition);
        if (llama_vocab_is_eog(vocab, token))
            break;
        const QString text = assembler.append(piece(vocab, token, buffer));
        if (!text.isEmpty()) {
            reply += text;
            onToken(text);
        }
        if (cancellation.stop_requested())
            break;
        input.assign(1, token);
    }
    return reply;
}

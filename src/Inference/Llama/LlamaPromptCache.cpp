// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaPromptCache.h"

#include "Inference/InferenceError.h"
#include "Inference/Llama/LibraryCount.h"
#include "Inference/Llama/LibraryFailure.h"

#include <QLoggingCategory>

#include <llama.h>

#include <cstring>
#include <new>

namespace {

// Enabled by QT_LOGGING_RULES="orvane.prompt*=true"; for developers only.
Q_LOGGING_CATEGORY(promptLog, "orvane.prompt", QtWarningMsg)

using Code = InferenceError::Code;

constexpr llama_seq_id sequence = 0;
constexpr qint32 lastPosition = -1;
constexpr llama_pos toTheEnd = -1;

const llama_vocab *vocabOf(const llama_context *context)
{
    return llama_model_get_vocab(llama_get_model(context));
}

std::span<const float> lastScores(llama_context *context)
{
    const llama_vocab *const vocab = vocabOf(context);
    return {llama_get_logits_ith(context, lastPosition), static_cast<size_t>(llama_vocab_n_tokens(vocab))};
}

// The end-of-generation tokens, which end messages.
std::vector<qint32> messageEnds(const llama_vocab *vocab)
{
    std::vector<qint32> ends;
    for (llama_token token = 0; token < llama_vocab_n_tokens(vocab); ++token)
        if (llama_vocab_is_eog(vocab, token))
            ends.push_back(token);
    return ends;
}

} // namespace

PromptReuse LlamaPromptCache::reuseFor(const llama_context *context, std::span<const qint32> prompt)
{
    return PromptReuse(longestChunk, messageEnds(vocabOf(context)), prompt);
}

void LlamaPromptCache::reset()
{
    *this = LlamaPromptCache(m_mostBytes);
}

void LlamaPromptCache::begin(llama_context *context, std::vector<qint32> prompt)
{
    if (m_context != context)
        m_reuse = reuseFor(context, prompt);
    m_context = context;
    m_prompt = std::move(prompt);
    clearMemory();
    const size_t known = m_trust == Trust::Proven ? m_reuse.reusable(m_prompt) : 0;
    m_reused = known > 0 && putBack(m_kept, known) ? known : 0;
    m_evaluated = m_reused;
}

void LlamaPromptCache::evaluateChunk()
{
    const size_t end = m_reuse.chunkEnd(m_evaluated, m_prompt);
    decode(std::span(m_prompt).subspan(m_evaluated, end - m_evaluated));
    m_evaluated = end;
}

void LlamaPromptCache::keep()
{
    if (m_trust == Trust::Refused || !m_context)
        return;
    if (m_reuse.keptCount() > 0 && m_reuse.keptCount() == m_reused &&
        m_reuse.wholeChunks(evaluated()) == m_reused)
        return; // the copy is still current: no whole chunk has been added
    m_reuse.keep(evaluated());
    bool isKept = forgetBehindTheKept();
    // The state's size grows with its tokens; shorten it until it fits.
    for (size_t bytes = 0; isKept && (bytes = stateBytes()) > m_mostBytes; isKept = forgetBehindTheKept())
        m_reuse.keep(evaluated().first(m_reuse.keptCount() * m_mostBytes / bytes));
    if (!isKept)
        return forget();
    try {
        take(m_kept);
    } catch (const std::bad_alloc &) {
        return forget();
    }
    if (m_kept.bytes == 0)
        return forget();
    qCDebug(promptLog, "Keeps the state of %zu tokens in %.1f MB", m_reuse.keptCount(),
            double(m_kept.bytes) * 1e-6);
}

bool LlamaPromptCache::forgetBehindTheKept() const
{
    const auto kept = static_cast<llama_pos>(m_reuse.keptCount());
    return kept > 0 && llama_memory_seq_rm(llama_get_memory(m_context), sequence, kept, toTheEnd);
}

size_t LlamaPromptCache::stateBytes() const
{
    return llama_state_seq_get_size(m_context, sequence);
}

bool LlamaPromptCache::needsTrial() const
{
    return m_trust == Trust::Untried && m_prompt.size() >= 2 * trialTokens;
}

void LlamaPromptCache::tryOut()
{
    m_evaluated = 0;
    m_reused = 0;
    const bool isTheSame = isTheSameAfterPuttingBack();
    clearMemory();
    m_trust = isTheSame ? Trust::Proven : Trust::Refused;
    if (!isTheSame) {
        qCDebug(promptLog, "Prompts are evaluated in full: this model's state cannot be put back exactly.");
        forget();
    }
}

// Mirrors real use: evaluate, copy, restore partly, continue.
bool LlamaPromptCache::isTheSameAfterPuttingBack()
{
    const std::span<qint32> first = std::span(m_prompt).first(trialTokens);
    const std::span<qint32> second = std::span(m_prompt).subspan(trialTokens, trialTokens);
    clearMemory();
    decode(first);
    decode(second);
    const std::span<const float> scores = lastScores(m_context);
    const std::vector<float> before(scores.begin(), scores.end());
    Copy copy;
    take(copy);
    clearMemory();
    if (copy.bytes == 0 || !putBack(copy, first.size()))
        return false;
    decode(second);
    const std::span<const float> after = lastScores(m_context);
    return std::memcmp(after.data(), before.data(), after.size_bytes()) == 0;
}

void LlamaPromptCache::clearMemory() const
{
    const bool clearData = true;
    llama_memory_clear(llama_get_memory(m_context), clearData);
}

void LlamaPromptCache::take(Copy &copy) const
{
    const size_t bytes = stateBytes();
    if (bytes > copy.bytes || bytes < copy.bytes / 2) {
        copy = {}; // free first, so that two buffers never coexist
        copy.data = std::make_unique_for_overwrite<quint8[]>(bytes);
    }
    copy.bytes = llama_state_seq_get_data(m_context, copy.data.get(), bytes, sequence);
}

bool LlamaPromptCache::putBack(const Copy &copy, size_t count) const
{
    const llama_memory_t memory = llama_get_memory(m_context);
    const auto end = static_cast<llama_pos>(count);
    const bool isBack = llama_state_seq_set_data(m_context, copy.data.get(), copy.bytes, sequence) > 0 &&
                        llama_memory_seq_rm(memory, sequence, end, toTheEnd) &&
                        // A sliding-window model keeps the last tokens only.
                        llama_memory_seq_pos_min(memory, sequence) == 0 &&
                        llama_memory_seq_pos_max(memory, sequence) == end - 1;
    if (!isBack)
        clearMemory();
    return isBack;
}

void LlamaPromptCache::decode(std::span<qint32> part)
{
    // An embedding model has no KV cache; llama_decode would encode and leave no logits.
    if (!llama_get_memory(m_context))
        throw InferenceError(Code::DecodeFailed);
    const auto decodePart = [this, part] {
        return llama_decode(m_context, llama_batch_get_one(part.data(), libraryCount(qint64(part.size()))));
    };
    if (reported(Code::DecodeFailed, decodePart) != 0)
        throw InferenceError(Code::DecodeFailed);
}

void LlamaPromptCache::forget()
{
    m_reuse.forget();
    m_kept = {};
}

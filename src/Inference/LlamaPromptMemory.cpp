// SPDX-License-Identifier: Apache-2.0
#include "Inference/LlamaPromptMemory.h"

#include "Inference/InferenceError.h"
#include "Inference/LibraryCount.h"
#include "Inference/LibraryFailure.h"

#include <QLoggingCategory>

#include <llama.h>

#include <cstring>
#include <new>

namespace {

// For those who ask for it (QT_LOGGING_RULES="orvane.prompt*=true"): nothing of it concerns a user.
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

// The tokens with which messages end, as replies do.
std::vector<qint32> messageEnds(const llama_vocab *vocab)
{
    std::vector<qint32> ends;
    for (llama_token token = 0; token < llama_vocab_n_tokens(vocab); ++token)
        if (llama_vocab_is_eog(vocab, token))
            ends.push_back(token);
    return ends;
}

} // namespace

PromptReuse LlamaPromptMemory::reuseFor(const llama_context *context, std::span<const qint32> prompt)
{
    return PromptReuse(longestChunk, messageEnds(vocabOf(context)), prompt);
}

void LlamaPromptMemory::reset()
{
    *this = LlamaPromptMemory();
}

void LlamaPromptMemory::begin(llama_context *context, std::vector<qint32> prompt)
{
    if (m_context != context)
        m_reuse = reuseFor(context, prompt);
    m_context = context;
    m_prompt = std::move(prompt);
    clearMemory();
    const size_t known = m_trust == Trust::Proven ? m_reuse.reusable(m_prompt) : 0;
    m_reused = known > 0 && putBack(known) ? known : 0;
    m_evaluated = m_reused;
}

void LlamaPromptMemory::evaluateChunk()
{
    decode(m_reuse.chunkEnd(m_evaluated, m_prompt));
    if (m_trust == Trust::Untried)
        rememberScores();
}

void LlamaPromptMemory::keep()
{
    if (m_trust == Trust::Refused || !m_context)
        return;
    if (m_reuse.keptCount() > 0 && m_reuse.keptCount() == m_reused &&
        m_reuse.wholeChunks(evaluated()) == m_reused)
        return; // the copy is what was put back, and no whole chunk has come to it
    m_reuse.keep(evaluated());
    const auto kept = static_cast<llama_pos>(m_reuse.keptCount());
    if (kept == 0 || !llama_memory_seq_rm(llama_get_memory(m_context), sequence, kept, toTheEnd))
        return forget();
    try {
        const size_t bytes = llama_state_seq_get_size(m_context, sequence);
        if (bytes > m_stateBytes || bytes < m_stateBytes / 2)
            m_state = std::make_unique_for_overwrite<quint8[]>(bytes);
        m_stateBytes = llama_state_seq_get_data(m_context, m_state.get(), bytes, sequence);
    } catch (const std::bad_alloc &) {
        return forget();
    }
    if (m_stateBytes == 0)
        return forget();
    qCDebug(promptLog, "Keeps the state of %d tokens in %.1f MB", int(kept), double(m_stateBytes) * 1e-6);
}

bool LlamaPromptMemory::needsTrial() const
{
    return m_trust == Trust::Untried && !m_scores.empty() && m_evaluated > 0 &&
           m_reuse.wholeChunks(evaluated().first(m_evaluated - 1)) > 0;
}

void LlamaPromptMemory::tryOut()
{
    keep();
    const std::span<const qint32> tried = evaluated();
    const size_t known = m_reuse.reusable(tried);
    clearMemory();
    m_evaluated = known > 0 && putBack(known) ? known : 0;
    const bool wasPutBack = m_evaluated > 0;
    while (m_evaluated < tried.size())
        decode(m_reuse.chunkEnd(m_evaluated, tried));
    m_trust = wasPutBack && scoresAreTheSame() ? Trust::Proven : Trust::Refused;
    m_scores = {};
    if (m_trust == Trust::Refused) {
        qCDebug(promptLog, "Prompts are evaluated in full: this model's state cannot be put back exactly.");
        forget();
    }
}

void LlamaPromptMemory::clearMemory() const
{
    const bool clearData = true;
    llama_memory_clear(llama_get_memory(m_context), clearData);
}

bool LlamaPromptMemory::putBack(size_t count) const
{
    const llama_memory_t memory = llama_get_memory(m_context);
    const auto end = static_cast<llama_pos>(count);
    const bool isBack = llama_state_seq_set_data(m_context, m_state.get(), m_stateBytes, sequence) > 0 &&
                        llama_memory_seq_rm(memory, sequence, end, toTheEnd) &&
                        // A model that attends to the last tokens only keeps no more than those.
                        llama_memory_seq_pos_min(memory, sequence) == 0 &&
                        llama_memory_seq_pos_max(memory, sequence) == end - 1;
    if (!isBack)
        clearMemory();
    return isBack;
}

void LlamaPromptMemory::decode(size_t end)
{
    // A model that only embeds text keeps no memory; the library would encode the batch and leave no scores.
    if (!llama_get_memory(m_context))
        throw InferenceError(Code::decodeFailed);
    const std::span<qint32> part = std::span(m_prompt).subspan(m_evaluated, end - m_evaluated);
    const auto decodePart = [this, part] {
        return llama_decode(m_context, llama_batch_get_one(part.data(), libraryCount(qint64(part.size()))));
    };
    if (reported(Code::decodeFailed, decodePart) != 0)
        throw InferenceError(Code::decodeFailed);
    m_evaluated = end;
}

void LlamaPromptMemory::rememberScores()
{
    const std::span<const float> scores = lastScores(m_context);
    m_scores.assign(scores.begin(), scores.end());
}

bool LlamaPromptMemory::scoresAreTheSame() const
{
    const std::span<const float> scores = lastScores(m_context);
    return std::memcmp(scores.data(), m_scores.data(), scores.size_bytes()) == 0;
}

void LlamaPromptMemory::forget()
{
    m_reuse.forget();
    m_state.reset();
    m_stateBytes = 0;
}

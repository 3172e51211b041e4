// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/PromptReuse.h"

#include <memory>
#include <span>
#include <vector>

struct llama_context;

// Evaluates prompts and reuses the KV cache of the previous one. In a task each prompt begins with the one
// before it, and on a CPU the user mostly waits for prompt evaluation.
//
// Every prompt starts from a cleared KV cache. The state after the last prompt, copied to the host, is
// restored up to the last common chunk boundary. Prompts are always evaluated in the same chunks, so the
// logits are bit-identical with and without the copy. A short trial verifies this once per loaded model; if
// it fails, or the context cannot truncate a sequence, nothing is ever restored.
//
// Thread: the engine's queue. The context must stay the same until `reset`.
class LlamaPromptCache
{
public:
    // Maximum tokens per llama_decode call, which bounds the delay that evaluation ahead causes. Figures:
    // docs/benchmarks.md.
    static constexpr size_t longestChunk = 256;

    // Maximum size of the copy in bytes. Of a longer prompt only the beginning is kept. Enough for twelve
    // steps with each catalog model. Figures: docs/benchmarks.md.
    static constexpr size_t mostKeptBytes = size_t(256) << 20;

    // Tokens that the trial restores; it evaluates as many again after them, twice.
    static constexpr size_t trialTokens = 16;

    explicit LlamaPromptCache(size_t mostBytes = mostKeptBytes) : m_mostBytes(mostBytes) {}

    // Chunk boundaries for prompts like the given one, with the context's model.
    static PromptReuse reuseFor(const llama_context *context, std::span<const qint32> prompt);

    // Frees everything; required before using another context.
    void reset();

    // Clears the KV cache, restores the known part of the prompt, and makes the prompt current.
    void begin(llama_context *context, std::vector<qint32> prompt);

    bool isEvaluated() const { return m_evaluated == m_prompt.size(); }

    // Evaluates the next chunk of the current prompt. Throws InferenceError DecodeFailed.
    void evaluateChunk();

    // Copies the state of the evaluated whole chunks, up to the size limit, and truncates the KV cache to
    // them. Drops the copy if memory is short; does nothing after a failed trial.
    void keep();

    // False once a trial has failed.
    bool canReuse() const { return m_trust != Trust::Refused; }

    // Whether the trial is still to be run and the current prompt is long enough for it.
    bool needsTrial() const;

    // Runs the trial with the first tokens of the current prompt, none of which count as evaluated
    // afterwards. The copy is kept. Throws InferenceError DecodeFailed.
    void tryOut();

    // Tokens of the current prompt that were restored rather than evaluated.
    size_t reusedCount() const { return m_reused; }
    // Size of the copy in bytes.
    size_t keptBytes() const { return m_kept.bytes; }

private:
    enum class Trust { Untried, Proven, Refused };

    // A sequence state on the host.
    struct Copy
    {
        std::unique_ptr<quint8[]> data;
        size_t bytes = 0;
    };

    void clearMemory() const;
    // Truncates the KV cache to the kept tokens. False if none are kept or the context cannot truncate.
    bool forgetBehindTheKept() const;
    size_t stateBytes() const;
    // Throws std::bad_alloc.
    void take(Copy &copy) const;
    // Restores the first `count` tokens. On failure returns false and clears the KV cache.
    bool putBack(const Copy &copy, size_t count) const;
    void decode(std::span<qint32> part);
    bool isTheSameAfterPuttingBack();
    std::span<const qint32> evaluated() const { return std::span(m_prompt).first(m_evaluated); }
    void forget();

    size_t m_mostBytes;
    llama_context *m_context = nullptr;
    std::vector<qint32> m_prompt;
    size_t m_evaluated = 0; // tokens of the prompt, restored ones included
    size_t m_reused = 0;

    PromptReuse m_reuse{longestChunk};
    Copy m_kept;
    Trust m_trust = Trust::Untried;
};

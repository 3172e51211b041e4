// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/PromptReuse.h"

#include <memory>
#include <span>
#include <vector>

struct llama_context;

// Evaluates prompts, and does not evaluate again what it knows already. In a task each prompt begins with the
// one before it; on a processor the evaluation is what the user waits for.
//
// Every prompt still starts from a cleared context memory. What is put back into it is a copy on the host of
// the state that the last prompt left, cut to the longest beginning that both share in whole chunks. Prompts
// are always evaluated in the same chunks, so the scores are the same bits as without the copy. That is tried
// once with each model and machine before it is relied upon, with so few tokens that it holds nobody up;
// where it does not hold, or a context cannot forget the end of a prompt, nothing is ever put back.
//
// On the engine's queue only. The context must be the same one until `reset`.
class LlamaPromptCache
{
public:
    // Tokens evaluated in one call of the library, at most: whoever asks for a reply while the beginning is
    // being evaluated waits for one call. docs/benchmarks.md has the figures.
    static constexpr size_t longestChunk = 256;

    // Bytes of the copy, at most. Of a longer prompt the beginning is kept, and the rest is evaluated again.
    // Enough for twelve steps with each model of the catalog; docs/benchmarks.md has the figures.
    static constexpr size_t mostKeptBytes = size_t(256) << 20;

    // Tokens whose state a trial puts back, and as many again that it evaluates behind them, twice.
    static constexpr size_t trialTokens = 16;

    explicit LlamaPromptCache(size_t mostBytes = mostKeptBytes) : m_mostBytes(mostBytes) {}

    // How prompts like the given one are cut into chunks for the context's model.
    static PromptReuse reuseFor(const llama_context *context, std::span<const qint32> prompt);

    // Gives everything back; for another context.
    void reset();

    // Clears the context's memory, puts back what is known of the prompt, and makes it the current one.
    void begin(llama_context *context, std::vector<qint32> prompt);

    bool isEvaluated() const { return m_evaluated == m_prompt.size(); }

    // Evaluates the current prompt's next chunk. Throws InferenceError decodeFailed.
    void evaluateChunk();

    // Copies the state of what is evaluated of the current prompt, as far as it may; what the context's
    // memory holds behind that is lost. Does nothing without enough memory, or where it is of no use.
    void keep();

    // Whether what is kept may come to use; false once a trial has failed.
    bool canReuse() const { return m_trust != Trust::Refused; }

    // Whether it has yet to be tried that putting back changes no bit of the scores, and can be tried now.
    bool needsTrial() const;

    // Tries it with the first tokens of the current prompt, of which nothing is evaluated afterwards. What is
    // kept stays. Throws InferenceError decodeFailed.
    void tryOut();

    // Tokens of the current prompt that were put back rather than evaluated.
    size_t reusedCount() const { return m_reused; }
    // Bytes of the copy.
    size_t keptBytes() const { return m_kept.bytes; }

private:
    enum class Trust { Untried, Proven, Refused };

    // A context's state on the host.
    struct Copy
    {
        std::unique_ptr<quint8[]> data;
        size_t bytes = 0;
    };

    void clearMemory() const;
    // False when nothing is to be kept, or the context cannot forget what stands behind it.
    bool forgetBehindTheKept() const;
    size_t stateBytes() const;
    // Throws std::bad_alloc.
    void take(Copy &copy) const;
    // False, with an empty memory, when the context does not take the first `count` tokens back.
    bool putBack(const Copy &copy, size_t count) const;
    void decode(std::span<qint32> part);
    bool isTheSameAfterPuttingBack();
    std::span<const qint32> evaluated() const { return std::span(m_prompt).first(m_evaluated); }
    void forget();

    size_t m_mostBytes;
    llama_context *m_context = nullptr;
    std::vector<qint32> m_prompt;
    size_t m_evaluated = 0; // of the prompt, those put back included
    size_t m_reused = 0;

    PromptReuse m_reuse{longestChunk};
    Copy m_kept;
    Trust m_trust = Trust::Untried;
};

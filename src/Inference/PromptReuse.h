// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

// Says how much of a prompt need not be evaluated again, going by the tokens alone. Prompts are evaluated in
// chunks that all have the same length and begin at its multiples, so that a chunk gives the same bits
// whoever evaluated what stands before it; only whole chunks can be taken over. One thread at a time.
class PromptReuse
{
public:
    // `chunk` is the length of a chunk in tokens.
    explicit PromptReuse(size_t chunk);

    // The first tokens of `evaluated` from now on, as far as they fill whole chunks.
    void keep(std::span<const qint32> evaluated);
    void forget();

    size_t keptCount() const { return m_kept.size(); }

    // How many of the first tokens of `prompt` are kept, in whole chunks. Never all of them: what comes next
    // is known from the evaluation of the last one only.
    size_t reusable(std::span<const qint32> prompt) const;

    // The end of the chunk that begins at `start`, in a prompt of so many tokens.
    size_t chunkEnd(size_t start, size_t count) const;

private:
    size_t inWholeChunks(size_t count) const { return count / m_chunk * m_chunk; }

    size_t m_chunk;
    std::vector<qint32> m_kept;
};

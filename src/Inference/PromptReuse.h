// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

// Says how much of a prompt need not be evaluated again, going by the tokens alone. Prompts are evaluated in
// chunks: each ends with a message, or where it has become as long as chunks may be. So where chunks begin
// and end depends on nothing but the tokens before, a chunk gives the same bits whoever evaluated what stands
// before it, and the messages that a conversation has got are known in whole chunks when the next one comes.
// One thread at a time.
class PromptReuse
{
public:
    // `longestChunk` in tokens; the tokens that end a message, in rising order.
    explicit PromptReuse(size_t longestChunk, std::vector<qint32> messageEnds = {});

    // The first tokens of `evaluated` from now on, as far as they are whole chunks.
    void keep(std::span<const qint32> evaluated);
    void forget();

    size_t keptCount() const { return m_kept.size(); }

    // How many of the first tokens of `prompt` are kept, in whole chunks. Never all of them: what comes next
    // is known from the evaluation of the last one only.
    size_t reusable(std::span<const qint32> prompt) const;

    // How many of the first tokens are whole chunks.
    size_t wholeChunks(std::span<const qint32> tokens) const;

    // The end of the chunk that begins at `start`, which is the end of another or 0.
    size_t chunkEnd(size_t start, std::span<const qint32> prompt) const;

private:
    bool endsMessage(qint32 token) const;

    size_t m_longestChunk;
    std::vector<qint32> m_messageEnds;
    std::vector<qint32> m_kept;
};

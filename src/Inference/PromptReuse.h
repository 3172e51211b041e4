// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

// Says how much of a prompt need not be evaluated again, going by the tokens alone. Prompts are evaluated in
// chunks: they end with the first message, which all conversations share, from then on where a reply is to
// begin, and wherever one has become as long as chunks may be. So where chunks begin and end depends on
// nothing but the tokens before, a chunk gives the same bits whoever evaluated what stands before it, and the
// prompt that a reply was given to is known in whole chunks when the next one comes. One thread at a time.
class PromptReuse
{
public:
    // `longestChunk` in tokens; the tokens that end a message, in rising order; a prompt, which ends where a
    // reply is to begin. Where its end does not show how a reply begins, chunks end with every message.
    explicit PromptReuse(size_t longestChunk, std::vector<qint32> messageEnds = {},
                         std::span<const qint32> prompt = {});

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
    // Whether a chunk ends with the last of the given tokens, a prompt's first ones, however short it is.
    bool endsChunk(std::span<const qint32> tokens) const;

    size_t m_longestChunk;
    std::vector<qint32> m_messageEnds;
    std::vector<qint32> m_generationPrompt; // what stands between a message's end and the reply to it
    std::vector<qint32> m_kept;
};

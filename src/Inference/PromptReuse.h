// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

// Computes how much of a prompt can be reused, from the tokens alone. A chunk ends with the first message,
// then at each generation prompt, and at the maximum length. Chunk boundaries depend only on the preceding
// tokens, so the same chunk gives the same bits in every evaluation, and all of a previous prompt is reusable
// in whole chunks. Not thread-safe.
class PromptReuse
{
public:
    // `longestChunk` in tokens; `messageEnds` are the tokens that end a message, ascending; `prompt` ends
    // with a generation prompt. If its end does not show one, chunks end with every message.
    explicit PromptReuse(size_t longestChunk, std::vector<qint32> messageEnds = {},
                         std::span<const qint32> prompt = {});

    // Remembers the whole chunks of `evaluated`.
    void keep(std::span<const qint32> evaluated);
    void forget();

    size_t keptCount() const { return m_kept.size(); }

    // How many leading tokens of `prompt` are kept, in whole chunks. Never all: the logits of the last token
    // must be computed.
    size_t reusable(std::span<const qint32> prompt) const;

    // The length of the leading whole chunks.
    size_t wholeChunks(std::span<const qint32> tokens) const;

    // The end of the chunk that begins at `start`, which is 0 or the end of another chunk.
    size_t chunkEnd(size_t start, std::span<const qint32> prompt) const;

private:
    bool endsMessage(qint32 token) const;
    // Whether a chunk ends with the last of `tokens`, regardless of the maximum length. `tokens` is the start
    // of a prompt.
    bool endsChunk(std::span<const qint32> tokens) const;

    size_t m_longestChunk;
    std::vector<qint32> m_messageEnds;
    std::vector<qint32> m_generationPrompt; // the tokens between a message's end and the reply
    std::vector<qint32> m_kept;
};

// SPDX-License-Identifier: Apache-2.0
#include "Inference/PromptReuse.h"

#include <algorithm>

PromptReuse::PromptReuse(size_t longestChunk, std::vector<qint32> messageEnds)
    : m_longestChunk(longestChunk), m_messageEnds(std::move(messageEnds))
{
}

void PromptReuse::keep(std::span<const qint32> evaluated)
{
    const auto whole = evaluated.first(wholeChunks(evaluated));
    m_kept.assign(whole.begin(), whole.end());
}

void PromptReuse::forget()
{
    m_kept.clear();
}

size_t PromptReuse::reusable(std::span<const qint32> prompt) const
{
    if (prompt.empty())
        return 0;
    const auto compared = prompt.first(prompt.size() - 1);
    const auto different = std::ranges::mismatch(compared, m_kept).in1;
    return wholeChunks(prompt.first(static_cast<size_t>(different - compared.begin())));
}

size_t PromptReuse::wholeChunks(std::span<const qint32> tokens) const
{
    size_t start = 0;
    while (start < tokens.size()) {
        const size_t end = chunkEnd(start, tokens);
        const bool isWhole = end - start == m_longestChunk || endsMessage(tokens[end - 1]);
        if (!isWhole)
            break; // it goes on behind what is given
        start = end;
    }
    return start;
}

size_t PromptReuse::chunkEnd(size_t start, std::span<const qint32> prompt) const
{
    const auto longest = prompt.subspan(start, std::min(prompt.size() - start, m_longestChunk));
    const auto last = std::ranges::find_if(longest, [this](qint32 token) { return endsMessage(token); });
    const auto length = static_cast<size_t>(last - longest.begin());
    return start + std::min(length + 1, longest.size());
}

bool PromptReuse::endsMessage(qint32 token) const
{
    return std::ranges::binary_search(m_messageEnds, token);
}

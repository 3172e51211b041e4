// SPDX-License-Identifier: Apache-2.0
#include "Inference/PromptReuse.h"

#include <algorithm>

PromptReuse::PromptReuse(size_t longestChunk, std::vector<qint32> messageEnds, std::span<const qint32> prompt)
    : m_longestChunk(longestChunk), m_messageEnds(std::move(messageEnds))
{
    const auto isMessageEnd = [this](qint32 token) { return endsMessage(token); };
    const auto lastEnd = std::ranges::find_if(prompt.rbegin(), prompt.rend(), isMessageEnd);
    if (lastEnd != prompt.rend())
        m_generationPrompt.assign(lastEnd.base(), prompt.end());
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
        const bool isWhole = end - start == m_longestChunk || endsChunk(tokens.first(end));
        if (!isWhole)
            break; // an incomplete chunk
        start = end;
    }
    return start;
}

size_t PromptReuse::chunkEnd(size_t start, std::span<const qint32> prompt) const
{
    const size_t longest = std::min(prompt.size(), start + m_longestChunk);
    size_t end = start + 1;
    while (end < longest && !endsChunk(prompt.first(end)))
        ++end;
    return end;
}

bool PromptReuse::endsChunk(std::span<const qint32> tokens) const
{
    if (!m_generationPrompt.empty() && tokens.size() >= m_generationPrompt.size() &&
        std::ranges::equal(tokens.last(m_generationPrompt.size()), m_generationPrompt))
        return true;
    const auto isMessageEnd = [this](qint32 token) { return endsMessage(token); };
    return isMessageEnd(tokens.back()) &&
           (m_generationPrompt.empty() ||
            std::ranges::none_of(tokens.first(tokens.size() - 1), isMessageEnd));
}

bool PromptReuse::endsMessage(qint32 token) const
{
    return std::ranges::binary_search(m_messageEnds, token);
}

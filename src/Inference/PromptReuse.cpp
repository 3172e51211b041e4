// SPDX-License-Identifier: Apache-2.0
#include "Inference/PromptReuse.h"

#include <algorithm>

PromptReuse::PromptReuse(size_t chunk) : m_chunk(chunk) {}

void PromptReuse::keep(std::span<const qint32> evaluated)
{
    const auto whole = evaluated.first(inWholeChunks(evaluated.size()));
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
    return inWholeChunks(static_cast<size_t>(different - compared.begin()));
}

size_t PromptReuse::chunkEnd(size_t start, size_t count) const
{
    return std::min(inWholeChunks(start) + m_chunk, count);
}

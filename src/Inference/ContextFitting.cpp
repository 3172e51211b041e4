// SPDX-License-Identifier: Apache-2.0
#include "Inference/ContextFitting.h"

#include "Inference/InferenceError.h"

#include <algorithm>

namespace {

constexpr qint64 smallestBudget = 65;
constexpr qint64 largestHead = 900;

} // namespace

std::vector<qint32> ContextFitting::fitted(std::vector<qint32> tokens, int maxTokens)
{
    const qint64 count = static_cast<qint64>(tokens.size());
    if (count + maxTokens <= contextSize)
        return tokens;

    const qint64 budget = qint64(contextSize) - maxTokens;
    if (budget < smallestBudget)
        throw InferenceError(InferenceError::Code::TokenizeFailed);

    const qint64 head = std::min(budget / 2, largestHead);
    const qint64 tail = budget - head;
    tokens.erase(tokens.begin() + head, tokens.end() - tail);
    return tokens;
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

// Fits a prompt and the reply into the model's context. Pure; any thread.
namespace ContextFitting {

// Context length in tokens, for prompt and reply together.
inline constexpr qint32 contextSize = 4096;

// The prompt tokens to evaluate if `maxTokens` are reserved for the reply: all of them if they fit, otherwise
// the start (at most 900 tokens, which contain the rules) and the most recent part. Throws InferenceError
// TokenizeFailed if a prompt that does not fit would be left fewer than 65 tokens.
std::vector<qint32> fitted(std::vector<qint32> tokens, int maxTokens);

} // namespace ContextFitting

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <vector>

// How a prompt is made to fit into the model's context beside the reply. Pure; any thread.
namespace ContextFitting {

// The length of the context in tokens: prompt and reply together.
inline constexpr qint32 contextSize = 4096;

// The tokens that the model is to see when `maxTokens` of the context are kept for the reply: all of them if
// they fit; otherwise the start of the conversation (it holds the rules, at most 900 tokens) and its most
// recent part, with the middle left out. Throws InferenceError tokenizeFailed when fewer than 65 tokens would
// remain for a prompt that does not fit.
std::vector<qint32> fitted(std::vector<qint32> tokens, int maxTokens);

} // namespace ContextFitting

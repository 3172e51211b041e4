// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/PlatformWords.h"

#include <QString>

// The first message of every conversation: available actions and the reply format. Any thread.
namespace SystemPrompt {

// Fixed text with the current platform's words, built on first use. Small models are sensitive to every
// blank, and the practice model is trained on exactly these bytes.
const QString &text();

// The text with the given platform's words.
QString textFor(const PlatformWords &words);

} // namespace SystemPrompt

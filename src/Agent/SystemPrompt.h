// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/PlatformWords.h"

#include <QString>

// The first message of every conversation with the model: what it may do, and how it answers. Callable from
// any thread.
namespace SystemPrompt {

// Fixed text, built on first use, that names the computer as this platform does. The small models are
// sensitive to every blank of it, and the practice model is trained on exactly these bytes.
const QString &text();

// The same on the platform with these words.
QString textFor(const PlatformWords &words);

} // namespace SystemPrompt

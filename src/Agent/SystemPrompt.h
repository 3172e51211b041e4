// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The first message of every conversation with the model: what it may do, and how it answers. Callable from
// any thread.
namespace SystemPrompt {

// Fixed text, built on first use. The small models are sensitive to every blank of it, and the practice model
// is trained on exactly these bytes.
const QString &text();

} // namespace SystemPrompt

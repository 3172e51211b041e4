// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/TypingPlan.h"

// Plans how to type the strokes with the virtual keyboard: batches, each with a keymap of its own, of chunks
// of at most 20 keys. The last key of a chunk "ends a stroke"; long texts have several chunks. ASCII
// characters keep their keys of the US layout; all others are lent keys whose own characters the batch
// doesn't need. Throws PlatformError if a stroke can't be typed. A pure function.
QList<TypingBatch> planKeyChunks(const QList<KeyStroke> &strokes);

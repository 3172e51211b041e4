// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>

// Captures all outputs of the compositor, side by side as they are arranged, in the resolution of the
// sharpest one. Uses a connection of its own and blocks, but each wait takes at most Deadlines::answer.
// Throws PlatformError, also if an output is rotated or vanishes. Thread: any but main.
QImage pictureOfOutputs();

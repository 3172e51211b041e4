// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Estimates what a model takes in memory.
namespace ModelMemory {

// The bytes for the weights of the file, a context of this many tokens, the copy of it that is kept between
// two conversations, and the buffers for computing `batch` tokens at once. Data that the file doesn't have
// count as zero. `path` must be a plausible model file. Thread: any but a window's main thread.
qint64 needed(const QString &path, quint32 context, quint32 batch);

} // namespace ModelMemory

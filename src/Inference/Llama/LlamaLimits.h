// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

// Fixed sizes for running models.
namespace LlamaLimits {

// Maximum tokens per llama_decode call.
inline constexpr quint32 batchSize = 512;

// Layers offloaded to the GPU if there is one; more than any model has.
inline constexpr qint32 gpuLayers = 99;

} // namespace LlamaLimits

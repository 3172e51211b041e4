// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

// The fixed sizes with which models are run.
namespace LlamaLimits {

// Most tokens in one call of llama_decode.
inline constexpr quint32 batchSize = 512;

// Layers handed to the graphics processor where there is one: more than any model has.
inline constexpr qint32 gpuLayers = 99;

} // namespace LlamaLimits

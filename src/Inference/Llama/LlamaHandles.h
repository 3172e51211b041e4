// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

struct llama_model;
struct llama_context;

// Owning handles of llama.cpp objects, for headers that must not include the library. Destroy a context
// before its model.
struct LlamaModelDeleter
{
    void operator()(llama_model *model) const;
};
struct LlamaContextDeleter
{
    void operator()(llama_context *context) const;
};

using LlamaModel = std::unique_ptr<llama_model, LlamaModelDeleter>;
using LlamaContext = std::unique_ptr<llama_context, LlamaContextDeleter>;

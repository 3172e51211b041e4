// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/InferenceError.h"

#include <exception>

// Runs a llama.cpp call and turns exceptions into an InferenceError. The C API throws on a broken vocabulary.
template <typename Call>
auto reported(InferenceError::Code failure, Call call)
{
    try {
        return call();
    } catch (const std::exception &) {
        throw InferenceError(failure);
    }
}

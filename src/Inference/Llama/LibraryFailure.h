// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/InferenceError.h"

#include <exception>

// The library throws through its C interface where a vocabulary is broken; every such failure of a call is
// the error that the call's bad return value would be.
template <typename Call>
auto reported(InferenceError::Code failure, Call call)
{
    try {
        return call();
    } catch (const std::exception &) {
        throw InferenceError(failure);
    }
}

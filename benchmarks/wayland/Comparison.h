// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <functional>

// Orvane's way beside a plain one, in turns. Thread: main.
namespace Comparison {

// The milliseconds until the condition holds after `begin`; the event loop runs meanwhile. Ends the program
// if it never does.
double timed(const std::function<void()> &begin, const std::function<bool()> &isDone);

// One round, in milliseconds.
using Measurement = std::function<double()>;

// Reports the medians of both ways and their ratio. Without a plain way, only Orvane's. An action that Orvane
// refuses ends it with its sentence.
void compare(benchmark::State &state, const Measurement &ours, const Measurement &plain);

// Ends the program with this message if it isn't true.
void require(bool isTrue, const char *failure);

} // namespace Comparison

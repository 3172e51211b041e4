// SPDX-License-Identifier: Apache-2.0
#pragma once

// What becomes of llama.cpp's own messages. Process-wide, as the library's log is: for the program that
// composes everything, before the first model is loaded and when it ends. Never called, the library's default
// applies.
namespace LlamaLog {

// Keeps the library's progress reports off standard error; its errors go through Qt's logging.
void keepErrorsOnly();

// Drops everything, for a program that is about to end: the library reports as errors what it is made to
// leave unfinished then.
void keepNothing();

} // namespace LlamaLog

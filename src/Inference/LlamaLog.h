// SPDX-License-Identifier: Apache-2.0
#pragma once

// What becomes of llama.cpp's own messages. Process-wide, as the library's log is: called once, by the
// program that composes everything, before the first model is loaded. Never called, the library's default
// applies.
namespace LlamaLog {

// Keeps the library's progress reports off standard error; its errors go through Qt's logging.
void keepErrorsOnly();

// Gives the library's log back its default.
void useLibraryDefault();

} // namespace LlamaLog

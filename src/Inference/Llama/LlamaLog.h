// SPDX-License-Identifier: Apache-2.0
#pragma once

// What becomes of llama.cpp's own messages. Process-wide, as the library's log is. Never called, the
// library's default applies.
namespace LlamaLog {

enum class Kept {
    Everything, // goes to standard error, as the library would have it
    Errors,     // go through Qt's logging; the library's progress reports stay off standard error
    Nothing     // for a program that is about to end: the library reports what it is made to leave unfinished
};

// The first call takes the library's log over, so it comes before any thread that may enter the library.
// Later ones may come at any time and on any thread.
void keep(Kept kept);

} // namespace LlamaLog

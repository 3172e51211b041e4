// SPDX-License-Identifier: Apache-2.0
#pragma once

// Filters llama.cpp's log, process-wide. Without a call of `keep`, the library's default applies.
namespace LlamaLog {

enum class Kept {
    Everything, // to standard error, as is llama.cpp's default
    Errors,     // errors only, through Qt's logging
    Nothing     // at exit, when the library complains about interrupted work
};

// The first call installs the log callback and must precede any thread that uses the library. Later calls:
// any time, any thread.
void keep(Kept kept);

} // namespace LlamaLog

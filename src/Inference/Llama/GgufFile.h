// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QString>

// Checks a model file before llama.cpp loads it, because its loader may abort on inconsistent files, and
// before a download gets a model's name. Reads metadata only. Thread: any but a window's main thread.
namespace GgufFile {

enum class Verdict {
    Plausible,
    Unreadable,     // missing, or no permission
    NotGguf,        // does not begin with "GGUF"
    UnknownVersion, // neither 2 nor 3
    CutShort,       // shorter than its metadata announces
    Malformed,      // metadata that no model file has
    NoModel         // complete, but without architecture or weights
};

Verdict examine(const QString &path);

// A sentence for the log: "The file ...".
QLatin1String explanation(Verdict verdict);

} // namespace GgufFile

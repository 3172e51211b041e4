// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>
#include <QString>

// A look at a model file before llama.cpp gets it, because the library's loader may end the process on a file
// that contradicts itself; and before a download gets a model's name. Reads the file's metadata only, never
// its weights. Any thread but the main one of a program with a window.
namespace GgufFile {

enum class Verdict {
    Plausible,
    Unreadable,     // no such file, or no permission
    NotGguf,        // does not begin with "GGUF"
    UnknownVersion, // neither 2 nor 3
    CutShort,       // ends before what it announces
    Malformed,      // announces what no model file holds
    NoModel         // is whole, but of no architecture or without weights
};

Verdict examine(const QString &path);

// What a verdict says about a file, for the log: "The file ...".
QLatin1String explanation(Verdict verdict);

} // namespace GgufFile

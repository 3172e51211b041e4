// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptSyntax.h"

#include <QString>

// Parses scripts, in time linear in their length. Any thread.
namespace ScriptParser {

// The longest script, in UTF-16 units.
inline constexpr qsizetype longestSource = 64 * 1024;

// Returns the script as a Block. Throws ScriptError, which names the line and the word that is not
// understood.
ScriptNodePointer parse(const QString &source);

} // namespace ScriptParser

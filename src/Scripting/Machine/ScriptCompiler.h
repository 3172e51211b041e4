// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptSyntax.h"
#include "Scripting/Machine/ScriptCode.h"

// Translates a parsed script into instructions. Any thread.
namespace ScriptCompiler {

// Throws ScriptError, which names the line.
ScriptCode compile(const ScriptNode &script);

} // namespace ScriptCompiler

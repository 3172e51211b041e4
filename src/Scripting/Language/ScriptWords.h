// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptVocabulary.h"

#include <span>

// The words that are not the grammar's: those of the standard additions and of applications. Any thread.
namespace ScriptWords {

const QList<ScriptCommandForm> &commands();

using Words = std::span<const char *const>;

// Singular; the plural has an "s" unless it follows a colon.
Words classes();
Words properties();
Words constants();

} // namespace ScriptWords

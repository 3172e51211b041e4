// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptCoercion.h"

// Splits texts into characters as perceived by the user, words, paragraphs and text items. Any thread.
namespace ScriptTextParts {

// In UTF-16 units.
struct Part
{
    qsizetype start = 0;
    qsizetype length = 0;
};
using Parts = QList<Part>;

bool isClass(const QString &className);

// Nothing if the class is no part of a text.
std::optional<Parts> of(const QString &text, const QString &className, const ScriptDelimiters &delimiters);

} // namespace ScriptTextParts

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptCoercion.h"

// The properties and elements of texts, lists, records, dates and numbers. Throw ScriptError.
namespace ScriptElements {

// A property such as "length". Nothing if the value has none of that name.
std::optional<ScriptValue> property(const ScriptValue &value, const QString &name);

// `set name of value to newValue`.
void setProperty(const ScriptValue &value, const QString &name, const ScriptValue &newValue);

// The elements of a class selected by the form: one value, or a list for Every and Range. `everyClass` of a
// list selects its items of that class. A range of a text is a text for the class "text".
ScriptValue element(const ScriptValue &value, const ScriptObject &selection,
                    const ScriptDelimiters &delimiters);

// Replaces an item of a list, or inserts one for the properties "beginning" and "end".
void setElement(const ScriptValue &value, const ScriptObject &selection, const ScriptValue &newValue);

// The position of an element, from 0. Throws if there is none.
qsizetype position(const ScriptValue &index, qsizetype count, const QString &className,
                   const ScriptValue &whole);

// Whether this is a class of elements of texts and lists, which applications don't have themselves.
bool isTextClass(const QString &className);

} // namespace ScriptElements

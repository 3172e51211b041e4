// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QHash>
#include <QList>

// An element that a script can select, such as a window or a file, with the values of its properties.
struct ScriptItem
{
    QString name;
    QHash<QString, ScriptValue> properties;
};

// The elements and properties of applications, from lists of what there is. Throw ScriptError for what isn't
// there. Thread: main.
namespace ScriptItems {

// Returns what there is of the class of an element in its container; nothing if it has no such elements.
using Provider = QCoro::Task<std::optional<QList<ScriptItem>>> (*)(ScriptValue::Object element,
                                                                   Desktop desktop);

// The items that the element selects.
QList<ScriptItem> selected(const ScriptObject &element, const QList<ScriptItem> &items);

// Carries out "get" of an element or of a property of one, and "exists". Nothing for other commands and
// objects.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Provider provider, Desktop desktop);

// The object of the command's direct parameter; null if it is none.
ScriptValue::Object objectOf(const ScriptCommand &command);

// Whether the object is the application itself.
bool isApplication(const ScriptObject &object);

// A text; throws ScriptError if it is none.
QString textOf(const ScriptValue &value);

} // namespace ScriptItems

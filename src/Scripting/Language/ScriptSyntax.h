// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptOperators.h"

#include <QStringList>

#include <memory>
#include <vector>

struct ScriptNode;
using ScriptNodePointer = std::unique_ptr<ScriptNode>;

// A part of a script. What `name`, `names` and `children` hold is said for each kind; a child in brackets may
// be null.
struct ScriptNode
{
    enum class Kind {
        // Expressions
        Literal,     // value
        Variable,    // name; inside `tell`, a property of its target if no such variable exists
        Term,        // name; a property of the target of `tell` if there is an application, else a variable
        It,          // the target of `tell`
        Script,      // `me`
        Language,    // `AppleScript`
        Result,      // the value of the last statement
        Application, // children: its name
        List,        // children
        Record,      // names; children: their values
        Binary,      // operation; children: both operands
        And,         // children: both operands; the second one is evaluated only if needed
        Or,
        Not,       // children: operand
        Negative,  // children: operand
        Coercion,  // children: value, class
        Property,  // name; children: [container]
        Element,   // name, form; children: [container], [key], [last key]
        Filter,    // children: an Element, its condition
        Reference, // children: the expression that is referred to
        Call,      // name, names: labels; children: arguments
        Command,   // name, names: labels; children: [direct parameter], values of the labels

        // Statements
        Block,           // children
        Evaluation,      // children: expression
        Set,             // children: target, value
        Copy,            // children: target, value
        If,              // children: condition, then, [else]
        RepeatForever,   // children: body
        RepeatTimes,     // children: count, body
        RepeatWhile,     // children: condition, body
        RepeatUntil,     // children: condition, body
        RepeatWithRange, // name; children: from, to, [step], body
        RepeatWithList,  // name; children: list, body
        ExitRepeat,
        Try,         // names: variables for the message and the number, or empty; children: body, [handler]
        Error,       // children: [message], [number]
        Tell,        // children: target, body
        Considering, // names: "consider case", "ignore hyphens", …; children: body
        Return,      // children: [value]
        Global,      // names
        Local,       // names
        PropertyDefinition, // name; children: value
        Handler,            // name, names: labels; children: parameters (patterns), then the body
    };

    Kind kind = Kind::Literal;
    int line = 1;
    QString name = {};
    QStringList names = {};
    ScriptValue value = {};
    ScriptOperator operation = ScriptOperator::Plus;
    ScriptObject::Form form = ScriptObject::Form::Every;
    std::vector<ScriptNodePointer> children = {};
};

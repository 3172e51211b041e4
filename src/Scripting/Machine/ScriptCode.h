// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptOperators.h"

#include <QHash>
#include <QStringList>

#include <vector>

// The instructions of ScriptMachine, which has a stack of values. "a", "b" and "c" are their operands.
enum class ScriptOpcode {
    Push, // the constant a
    Drop,
    Duplicate,    // replaces the value by a copy that shares nothing
    LoadVariable, // the variable a, or the property a of the target
    LoadTerm,     // the same; b: the property precedes the variable
    LoadTarget,   // `it`
    LoadScript,   // `me`
    LoadLanguage, // `AppleScript`
    LoadResult,
    StoreResult,
    StoreVariable,  // a
    StoreLocal,     // a
    StoreTerm,      // the variable a if there is one, otherwise the property a of the target
    StoreContents,  // through the reference in the variable a
    DeclareGlobals, // the labels a
    DeclareLocals,
    DefineProperty,    // a: a variable of the whole script
    MakeApplication,   // from its name
    MakeList,          // of the last a values
    MakeRecord,        // of the labels a
    MakeReference,     // to the variable a
    MakeItemReference, // to an item; on the stack: list, index
    MarkValue,         // an object that won't be asked for its value
    Spread,            // replaces a list by its first a items, in reverse order
    Binary,            // the operator a
    Not,
    Negate,
    Coerce,        // on the stack: value, class
    GetProperty,   // a
    GetElement,    // the class a by the form b with c keys; on the stack: container, keys
    MakeSelection, // the same without container, for the ends of ranges
    Resolve,       // replaces an object by its value
    SetProperty,   // a; on the stack: value, container
    SetElement,    // like GetElement; on the stack: value, container, keys
    Jump,          // to a
    JumpIfFalse,
    JumpIfFalseOrDrop, // keeps a false value and jumps, or drops a true one
    JumpIfTrueOrDrop,
    CheckBoolean,
    Call, // the handler a with the labels b and c arguments
    Return,
    Command, // the command a with the labels b; c: whether it has a direct parameter
    EnterTell,
    LeaveTell,
    EnterConsidering, // the labels a
    LeaveConsidering,
    EnterTry, // the handler of errors at a
    LeaveTry,
    LoadErrorMessage,
    LoadErrorNumber,
    Raise,      // on the stack: message, number
    BeginTimes, // on the stack: count
    BeginRange, // on the stack: from, to, step
    BeginList,  // on the stack: list
    NextRound,  // of the innermost loop, with the variable a or -1; jumps to b after the last one
    EndLoop,
    BeginFilter,   // like BeginList, for `whose`
    NextCandidate, // becomes the target; jumps to b after the last one
    KeepCandidate, // if the value is true; restores the target
    EndFilter,     // pushes the list of those kept
};

struct ScriptInstruction
{
    ScriptOpcode opcode;
    int a = 0;
    int b = 0;
    int c = 0;
};

struct ScriptHandlerEntry
{
    int address = 0;
    QStringList labels; // empty: by position
    int parameters = 0;
};

// A compiled script.
struct ScriptCode
{
    std::vector<ScriptInstruction> instructions;
    std::vector<ScriptValue> constants;
    QStringList names;
    std::vector<QStringList> labels;
    QHash<QString, ScriptHandlerEntry> handlers;
};

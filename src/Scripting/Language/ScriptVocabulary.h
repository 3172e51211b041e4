// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptOperators.h"

#include <QStringList>

#include <optional>

// How a command is written. Labels name the parameters after the direct one.
struct ScriptCommandForm
{
    enum class Direct {
        None,
        Value,   // an expression, evaluated before the command
        Operand, // the same, but an operator ends it
        Object,  // a description of an object, which the command receives unevaluated
    };

    QString name;
    Direct direct = Direct::None;
    QStringList labels;
};

// A word or words with a meaning of their own.
struct ScriptPhrase
{
    enum class Kind {
        Command,
        Class,   // singular; `value` if it is a constant as well
        Classes, // plural; `name` is the singular
        Property,
        Constant, // `value`
    };

    Kind kind = Kind::Property;
    QString name;
    ScriptValue value = {};
    int words = 1; // of the script
};

// The fixed words of the language, the standard additions and the applications. Any thread.
namespace ScriptVocabulary {

inline constexpr int longestPhrase = 4; // in words

// The phrase that consists of exactly these words, in lower case, separated by blanks.
const ScriptPhrase *phrase(const QString &words);

// Only for names of Command phrases.
const ScriptCommandForm &commandForm(const QString &name);

// The comparison operator that consists of exactly these words: "is not equal to".
std::optional<ScriptOperator> comparison(const QString &words);

// 1 for "first" and "1st", -1 for "last" and "back".
std::optional<int> ordinal(const QString &word);

// Whether the word belongs to the grammar, so that it can't be a variable.
bool isReserved(const QString &word);

// The words that may label the parameters of a script's own handlers: "of", "above", …
const QStringList &prepositions();

} // namespace ScriptVocabulary

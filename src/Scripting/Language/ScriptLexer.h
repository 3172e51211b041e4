// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <QList>
#include <QString>

struct ScriptToken
{
    enum class Kind {
        Word,   // `text` in lower case, `written` as written; includes "isn't"
        Barred, // an identifier in bars: never a keyword
        Text,   // the content of a text literal
        Number, // `number`
        Symbol, // operators and brackets; "’s" as "'s"
        LineEnd,
        End,
    };

    Kind kind = Kind::End;
    QString text;
    QString written;
    ScriptValue number;
    int line = 1;

    bool isWord(QStringView word) const { return kind == Kind::Word && text == word; }
    bool isSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
};

// Splits a script into words, without comments and continued line ends. Linear in the script's length.
namespace ScriptLexer {

// The last token is an End. Throws ScriptError, which names the line.
QList<ScriptToken> tokens(const QString &source);

} // namespace ScriptLexer

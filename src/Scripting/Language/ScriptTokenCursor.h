// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptLexer.h"
#include "Scripting/Language/ScriptVocabulary.h"

// The parser's position in the tokens.
class ScriptTokenCursor
{
public:
    explicit ScriptTokenCursor(QList<ScriptToken> tokens) : m_tokens(std::move(tokens)) {}

    const ScriptToken &peek(qsizetype offset = 0) const
    {
        return m_tokens.at(std::min(m_position + offset, m_tokens.size() - 1));
    }
    ScriptToken take() { return m_tokens.at(std::min(m_position++, m_tokens.size() - 1)); }
    void skip(qsizetype count) { m_position += count; }
    int line() const { return peek().line; }

    bool isWord(QStringView word, qsizetype offset = 0) const { return peek(offset).isWord(word); }
    bool isSymbol(QStringView symbol, qsizetype offset = 0) const { return peek(offset).isSymbol(symbol); }
    bool isLineEnd(qsizetype offset = 0) const
    {
        return peek(offset).kind == ScriptToken::Kind::LineEnd || isEnd(offset);
    }
    bool isEnd(qsizetype offset = 0) const { return peek(offset).kind == ScriptToken::Kind::End; }

    // Skips the word or symbol if it is next; returns whether it was.
    bool takeWord(QStringView word);
    bool takeSymbol(QStringView symbol);
    // Skips these words, separated by blanks, if they are next.
    bool takeWords(QStringView words);
    bool areWords(QStringView words) const;
    void skipLineEnds();

    // Fail if it isn't next.
    void expectWord(QStringView word);
    void expectSymbol(QStringView symbol);
    void expectLineEnd();

    // The longest phrase that begins with the next token, or null.
    const ScriptPhrase *phrase() const;
    struct Comparison
    {
        ScriptOperator operation;
        int tokens;
    };
    std::optional<Comparison> comparison() const;

    // Throw ScriptError that names the line and the next word.
    [[noreturn]] void fail() const;
    [[noreturn]] void failExpecting(const QString &expected) const;

private:
    QString joined(int count) const;

    QList<ScriptToken> m_tokens;
    qsizetype m_position = 0;
};

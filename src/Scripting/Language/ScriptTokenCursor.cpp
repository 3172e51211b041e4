// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptTokenCursor.h"

#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int longestComparison = 7; // in words

QString described(const ScriptToken &token)
{
    switch (token.kind) {
    case ScriptToken::Kind::LineEnd:
        return u"the end of the line"_s;
    case ScriptToken::Kind::End:
        return u"the end of the script"_s;
    default:
        return u'“' + token.written.left(40) + u'”';
    }
}

} // namespace

bool ScriptTokenCursor::takeWord(QStringView word)
{
    const bool isNext = isWord(word);
    m_position += isNext ? 1 : 0;
    return isNext;
}

bool ScriptTokenCursor::takeSymbol(QStringView symbol)
{
    const bool isNext = isSymbol(symbol);
    m_position += isNext ? 1 : 0;
    return isNext;
}

bool ScriptTokenCursor::areWords(QStringView words) const
{
    qsizetype offset = 0;
    for (const QStringView word : words.split(u' ')) {
        if (!isWord(word, offset++))
            return false;
    }
    return true;
}

bool ScriptTokenCursor::takeWords(QStringView words)
{
    const bool areNext = areWords(words);
    m_position += areNext ? words.count(u' ') + 1 : 0;
    return areNext;
}

void ScriptTokenCursor::skipLineEnds()
{
    while (peek().kind == ScriptToken::Kind::LineEnd)
        ++m_position;
}

void ScriptTokenCursor::expectWord(QStringView word)
{
    if (!takeWord(word))
        failExpecting(u'“' + word.toString() + u'”');
}

void ScriptTokenCursor::expectSymbol(QStringView symbol)
{
    if (!takeSymbol(symbol))
        failExpecting(u'“' + symbol.toString() + u'”');
}

void ScriptTokenCursor::expectLineEnd()
{
    if (!isLineEnd())
        failExpecting(u"the end of the line"_s);
    skipLineEnds();
}

QString ScriptTokenCursor::joined(int count) const
{
    QString words;
    for (int offset = 0; offset < count; ++offset) {
        const ScriptToken &token = peek(offset);
        const bool isPart =
            token.kind == ScriptToken::Kind::Word || (token.kind == ScriptToken::Kind::Symbol && count == 1);
        if (!isPart)
            return QString();
        words += offset > 0 ? u' ' + token.text : token.text;
    }
    return words;
}

const ScriptPhrase *ScriptTokenCursor::phrase() const
{
    for (int words = ScriptVocabulary::longestPhrase; words > 0; --words) {
        const QString text = joined(words);
        const ScriptPhrase *phrase = text.isEmpty() ? nullptr : ScriptVocabulary::phrase(text);
        if (phrase)
            return phrase;
    }
    return nullptr;
}

std::optional<ScriptTokenCursor::Comparison> ScriptTokenCursor::comparison() const
{
    for (int words = longestComparison; words > 0; --words) {
        const QString text = joined(words);
        const auto operation = text.isEmpty() ? std::nullopt : ScriptVocabulary::comparison(text);
        if (operation)
            return Comparison{*operation, words};
    }
    return std::nullopt;
}

void ScriptTokenCursor::fail() const
{
    throw ScriptError(u"Line %1: %2 is not understood here."_s.arg(line()).arg(described(peek())),
                      ScriptError::Syntax);
}

void ScriptTokenCursor::failExpecting(const QString &expected) const
{
    throw ScriptError(u"Line %1: Expected %2 but found %3."_s.arg(line()).arg(expected, described(peek())),
                      ScriptError::Syntax);
}

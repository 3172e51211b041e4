// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptLexer.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptNumbers.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

bool isNameStart(QChar character)
{
    return character.isLetter() || character == u'_';
}

bool isNamePart(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character == u'_';
}

bool isApostrophe(QChar character)
{
    return character == u'\'' || character == u'’';
}

class Lexer
{
public:
    explicit Lexer(const QString &source) : m_source(source) {}

    QList<ScriptToken> tokens()
    {
        while (m_position < m_source.size())
            readNext();
        add(ScriptToken::Kind::LineEnd);
        add(ScriptToken::Kind::End);
        return m_tokens;
    }

private:
    QChar at(qsizetype offset) const
    {
        const qsizetype position = m_position + offset;
        return position < m_source.size() ? m_source.at(position) : QChar();
    }

    bool startsWith(QStringView text) const { return QStringView(m_source).mid(m_position).startsWith(text); }

    void add(ScriptToken::Kind kind, const QString &text = {}, const QString &written = {})
    {
        m_tokens.append({kind, text, written.isNull() ? text : written, {}, m_line});
    }

    [[noreturn]] void fail(const QString &problem, int line) const
    {
        throw ScriptError(u"Line %1: %2"_s.arg(line).arg(problem), ScriptError::Syntax);
    }

    void readNext()
    {
        const QChar character = at(0);
        if (character == u'\n' || character == u'\r')
            readLineEnd();
        else if (character.isSpace())
            ++m_position;
        else if (startsWith(u"--") || character == u'#')
            skipToLineEnd();
        else if (startsWith(u"(*"))
            skipComment();
        else if (character == u'¬')
            skipContinuation();
        else if (character == u'"' || character == u'“')
            readText();
        else if (character == u'|')
            readBarred();
        else if (character.isDigit() || (character == u'.' && at(1).isDigit()))
            readNumber();
        else if (isNameStart(character))
            readWord();
        else
            readSymbol();
    }

    void readLineEnd()
    {
        m_position += startsWith(u"\r\n") ? 2 : 1;
        add(ScriptToken::Kind::LineEnd);
        ++m_line;
    }

    void skipToLineEnd()
    {
        while (m_position < m_source.size() && at(0) != u'\n' && at(0) != u'\r')
            ++m_position;
    }

    // Comments in (* … *) nest.
    void skipComment()
    {
        const int firstLine = m_line;
        int depth = 0;
        do {
            if (m_position >= m_source.size())
                fail(u"The comment that begins here has no end."_s, firstLine);
            if (startsWith(u"(*")) {
                ++depth;
                m_position += 2;
            } else if (startsWith(u"*)")) {
                --depth;
                m_position += 2;
            } else {
                countLine();
                ++m_position;
            }
        } while (depth > 0);
    }

    void countLine()
    {
        if (at(0) == u'\n' || (at(0) == u'\r' && at(1) != u'\n'))
            ++m_line;
    }

    // A comment may follow the continuation sign.
    void skipContinuation()
    {
        ++m_position;
        while (at(0) == u' ' || at(0) == u'\t')
            ++m_position;
        if (startsWith(u"--") || at(0) == u'#')
            skipToLineEnd();
        if (at(0) != u'\n' && at(0) != u'\r')
            fail(u"Expected the end of the line after “¬”."_s, m_line);
        m_position += startsWith(u"\r\n") ? 2 : 1;
        ++m_line;
    }

    void readText()
    {
        const int firstLine = m_line;
        const QChar closing = at(0) == u'“' ? u'”' : u'"';
        QString text;
        for (++m_position; at(0) != closing; ++m_position) {
            if (m_position >= m_source.size())
                fail(u"The text that begins here has no closing quotation mark."_s, firstLine);
            countLine();
            text += at(0) == u'\\' ? escaped() : at(0);
        }
        ++m_position;
        m_tokens.append({ScriptToken::Kind::Text, text, u'"' + text + u'"', {}, firstLine});
    }

    QChar escaped()
    {
        ++m_position;
        switch (at(0).unicode()) {
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u't':
            return u'\t';
        case u'"':
        case u'\\':
            return at(0);
        default:
            fail(u"“\\%1” is no character in a text."_s.arg(at(0)), m_line);
        }
    }

    void readBarred()
    {
        const qsizetype end = m_source.indexOf(u'|', m_position + 1);
        const QString name = m_source.mid(m_position + 1, end - m_position - 1);
        if (end < 0 || name.contains(u'\n'))
            fail(u"The name that begins with “|” has no end."_s, m_line);
        add(ScriptToken::Kind::Barred, name);
        m_position = end + 1;
    }

    void readDigits()
    {
        while (at(0).isDigit())
            ++m_position;
    }

    void readNumber()
    {
        const qsizetype start = m_position;
        readDigits();
        const bool isOrdinal = isNameStart(at(0)) && isOrdinalEnding();
        if (isOrdinal) {
            readOrdinal(start);
            return;
        }
        if (at(0) == u'.' && at(1).isDigit()) {
            ++m_position;
            readDigits();
        }
        readExponent();
        const QString digits = m_source.mid(start, m_position - start);
        const std::optional<ScriptValue> number = ScriptNumbers::fromText(digits);
        if (!number || isNameStart(at(0)))
            fail(u"“%1” is no number."_s.arg(digits + at(0)), m_line);
        m_tokens.append({ScriptToken::Kind::Number, digits, digits, *number, m_line});
    }

    void readExponent()
    {
        const bool isSigned = at(1) == u'+' || at(1) == u'-';
        if ((at(0) != u'e' && at(0) != u'E') || !at(isSigned ? 2 : 1).isDigit())
            return;
        m_position += isSigned ? 2 : 1;
        readDigits();
    }

    bool isOrdinalEnding() const
    {
        static constexpr std::array<QStringView, 4> endings{u"st", u"nd", u"rd", u"th"};
        const QString ending = m_source.mid(m_position, 2).toLower();
        return !isNamePart(at(2)) && std::find(endings.begin(), endings.end(), ending) != endings.end();
    }

    // "2nd" is the word "2nd"; the parser knows what it selects.
    void readOrdinal(qsizetype start)
    {
        m_position += 2;
        const QString written = m_source.mid(start, m_position - start);
        add(ScriptToken::Kind::Word, written.toLower(), written);
    }

    void readWord()
    {
        const qsizetype start = m_position;
        while (isNamePart(at(0)))
            ++m_position;
        const QChar last = m_source.at(m_position - 1).toLower();
        if (last == u'n' && isApostrophe(at(0)) && at(1).toLower() == u't' && !isNamePart(at(2)))
            m_position += 2;
        const QString written = m_source.mid(start, m_position - start);
        QString text = written.toLower();
        text.replace(u'’', u'\'');
        add(ScriptToken::Kind::Word, text, written);
    }

    void readSymbol()
    {
        static constexpr std::array<QStringView, 25> symbols{
            u"<=", u">=", u"/=", u"'s", u"’s", u"(", u")", u"{", u"}", u",", u":", u"&", u"+",
            u"-",  u"*",  u"/",  u"^",  u"=",  u"<", u">", u"≤", u"≥", u"≠", u"÷", u"×"};
        for (const QStringView symbol : symbols) {
            if (!startsWith(symbol))
                continue;
            add(ScriptToken::Kind::Symbol, symbol == u"’s" ? u"'s"_s : symbol.toString());
            m_position += symbol.size();
            return;
        }
        fail(u"“%1” is not understood."_s.arg(at(0)), m_line);
    }

    const QString &m_source;
    qsizetype m_position = 0;
    int m_line = 1;
    QList<ScriptToken> m_tokens;
};

} // namespace

QList<ScriptToken> ScriptLexer::tokens(const QString &source)
{
    return Lexer(source).tokens();
}

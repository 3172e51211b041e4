// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptParser.h"

#include "Scripting/Language/ScriptExpressionParser.h"
#include "Scripting/ScriptError.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;

namespace {

using Expressions = ScriptExpressionParser;

// Parses statements, one per line.
class StatementParser
{
public:
    explicit StatementParser(const QList<ScriptToken> &tokens) : m_cursor(tokens), m_expressions(m_cursor)
    {
        m_expressions.collectNames(tokens);
    }

    ScriptNodePointer script()
    {
        ScriptNodePointer block = Expressions::node(Kind::Block, m_cursor.line());
        m_cursor.skipLineEnds();
        while (!m_cursor.isEnd()) {
            block->children.push_back(topLevelStatement());
            m_cursor.expectLineEnd();
        }
        return block;
    }

private:
    template <typename... Children>
    ScriptNodePointer node(Kind kind, int line, Children &&...children)
    {
        return Expressions::node(kind, line, QString(), std::forward<Children>(children)...);
    }

    ScriptNodePointer topLevelStatement()
    {
        if (m_cursor.isWord(u"on") || m_cursor.isWord(u"to"))
            return handler();
        if (m_cursor.isWord(u"use"))
            return ignoredLine();
        return statement();
    }

    // `use` names the language's version and the standard additions, which are always there.
    ScriptNodePointer ignoredLine()
    {
        const int line = m_cursor.line();
        const bool isKnown = m_cursor.isWord(u"applescript", 1) || m_cursor.isWord(u"scripting", 1);
        if (!isKnown) {
            m_cursor.skip(1);
            m_cursor.fail();
        }
        while (!m_cursor.isLineEnd())
            m_cursor.skip(1);
        return node(Kind::Block, line);
    }

    ScriptNodePointer statement()
    {
        const Expressions::Level level(m_expressions);
        m_expressions.beginStatement();
        using Parse = ScriptNodePointer (StatementParser::*)();
        static const QHash<QString, Parse> parsers{
            {u"set"_s, &StatementParser::set},
            {u"copy"_s, &StatementParser::copy},
            {u"if"_s, &StatementParser::condition},
            {u"repeat"_s, &StatementParser::repetition},
            {u"exit"_s, &StatementParser::exitRepeat},
            {u"try"_s, &StatementParser::attempt},
            {u"error"_s, &StatementParser::error},
            {u"tell"_s, &StatementParser::tell},
            {u"with"_s, &StatementParser::timeout},
            {u"considering"_s, &StatementParser::considering},
            {u"ignoring"_s, &StatementParser::considering},
            {u"using"_s, &StatementParser::terms},
            {u"return"_s, &StatementParser::returned},
            {u"global"_s, &StatementParser::declaration},
            {u"local"_s, &StatementParser::declaration},
            {u"property"_s, &StatementParser::property},
            {u"prop"_s, &StatementParser::property},
            {u"script"_s, &StatementParser::scriptObject},
        };
        const bool isKeyword = m_cursor.peek().kind == ScriptToken::Kind::Word;
        const Parse parse = isKeyword ? parsers.value(m_cursor.peek().text) : nullptr;
        return parse ? (this->*parse)() : evaluation();
    }

    ScriptNodePointer evaluation()
    {
        const int line = m_cursor.line();
        return node(Kind::Evaluation, line, m_expressions.expression());
    }

    // The lines up to one that begins with one of these words.
    ScriptNodePointer block(std::initializer_list<QStringView> ends)
    {
        ScriptNodePointer lines = Expressions::node(Kind::Block, m_cursor.line());
        const auto isLast = [&] {
            return std::any_of(ends.begin(), ends.end(),
                               [this](QStringView words) { return m_cursor.areWords(words); });
        };
        m_cursor.skipLineEnds();
        while (!isLast()) {
            if (m_cursor.isEnd())
                m_cursor.failExpecting(u'“' + ends.begin()->toString() + u'”');
            lines->children.push_back(statement());
            m_cursor.expectLineEnd();
        }
        return lines;
    }

    ScriptNodePointer blockUntilEnd(QStringView name)
    {
        m_cursor.expectLineEnd();
        ScriptNodePointer lines = block({u"end"});
        takeEnd(name);
        return lines;
    }

    void takeEnd(QStringView name)
    {
        m_cursor.expectWord(u"end");
        if (!m_cursor.isLineEnd() && !m_cursor.takeWords(name))
            m_cursor.failExpecting(u"“end "_s + name.toString() + u'”');
    }

    // `set volume …` and `set the clipboard to …` are commands.
    ScriptNodePointer set()
    {
        const ScriptPhrase *phrase = m_cursor.phrase();
        if (m_cursor.areWords(u"set volume") && !m_cursor.isWord(u"to", 2) && !m_cursor.isWord(u"of", 2))
            return evaluation();
        if (phrase && phrase->name == u"set the clipboard to")
            return evaluation();
        const int line = m_cursor.take().line;
        ScriptNodePointer target = assignable();
        m_cursor.expectWord(u"to");
        ScriptNodePointer value = m_expressions.expression();
        return node(Kind::Set, line, std::move(target), std::move(value));
    }

    // The grammar has `copy VALUE to VARIABLE`.
    ScriptNodePointer copy()
    {
        const int line = m_cursor.take().line;
        ScriptNodePointer value = m_expressions.expression();
        if (!m_cursor.takeWord(u"into"))
            m_cursor.expectWord(u"to");
        ScriptNodePointer target = assignable();
        return node(Kind::Copy, line, std::move(target), std::move(value));
    }

    // A variable, even one named like a class or command, or a property, element or list of them.
    ScriptNodePointer assignable()
    {
        const int line = m_cursor.line();
        if (m_cursor.isWord(u"to", 1)) {
            const ScriptPhrase *phrase = m_cursor.phrase();
            const bool isTerm = phrase && phrase->kind == ScriptPhrase::Kind::Property;
            const QString name = m_expressions.variableName();
            return Expressions::node(isTerm ? Kind::Term : Kind::Variable, line, name);
        }
        ScriptNodePointer target = m_expressions.reference();
        const bool isAssignable = target->kind == Kind::Variable || target->kind == Kind::Term ||
                                  target->kind == Kind::Property || target->kind == Kind::Element ||
                                  target->kind == Kind::List || target->kind == Kind::Record;
        if (!isAssignable)
            throw ScriptError(u"Line %1: Only variables, properties and elements can be set."_s.arg(line),
                              ScriptError::Syntax);
        return target;
    }

    ScriptNodePointer condition()
    {
        const int line = m_cursor.take().line;
        ScriptNodePointer test = m_expressions.expression();
        m_cursor.takeWord(u"then");
        if (!m_cursor.isLineEnd())
            return conditionOnOneLine(line, std::move(test));
        ScriptNodePointer choice = node(Kind::If, line, std::move(test), block({u"end", u"else"}));
        if (m_cursor.areWords(u"else if")) {
            m_cursor.skip(1);
            const Expressions::Level level(m_expressions);
            // It takes the `end if`.
            choice->children.push_back(condition());
            return choice;
        }
        if (m_cursor.takeWord(u"else"))
            choice->children.push_back(block({u"end"}));
        takeEnd(u"if");
        return choice;
    }

    ScriptNodePointer conditionOnOneLine(int line, ScriptNodePointer test)
    {
        ScriptNodePointer choice = node(Kind::If, line, std::move(test), statement());
        if (m_cursor.takeWord(u"else"))
            choice->children.push_back(statement());
        return choice;
    }

    ScriptNodePointer repetition()
    {
        const int line = m_cursor.take().line;
        if (m_cursor.isLineEnd())
            return node(Kind::RepeatForever, line, blockUntilEnd(u"repeat"));
        if (m_cursor.takeWord(u"with"))
            return repetitionWith(line);
        const bool isWhile = m_cursor.takeWord(u"while");
        const bool isUntil = !isWhile && m_cursor.takeWord(u"until");
        ScriptNodePointer test = m_expressions.expression();
        if (!isWhile && !isUntil)
            m_cursor.expectWord(u"times");
        const Kind kind = isWhile ? Kind::RepeatWhile : (isUntil ? Kind::RepeatUntil : Kind::RepeatTimes);
        ScriptNodePointer body = blockUntilEnd(u"repeat");
        return node(kind, line, std::move(test), std::move(body));
    }

    ScriptNodePointer repetitionWith(int line)
    {
        const QString name = m_expressions.variableName();
        if (m_cursor.takeWord(u"in")) {
            ScriptNodePointer list = m_expressions.expression();
            ScriptNodePointer body = blockUntilEnd(u"repeat");
            return Expressions::node(Kind::RepeatWithList, line, name, std::move(list), std::move(body));
        }
        m_cursor.expectWord(u"from");
        ScriptNodePointer from = m_expressions.expression();
        m_cursor.expectWord(u"to");
        ScriptNodePointer to = m_expressions.expression();
        ScriptNodePointer step = m_cursor.takeWord(u"by") ? m_expressions.expression() : nullptr;
        ScriptNodePointer body = blockUntilEnd(u"repeat");
        return Expressions::node(Kind::RepeatWithRange, line, name, std::move(from), std::move(to),
                                 std::move(step), std::move(body));
    }

    ScriptNodePointer exitRepeat()
    {
        const int line = m_cursor.take().line;
        m_cursor.takeWord(u"repeat");
        return node(Kind::ExitRepeat, line);
    }

    ScriptNodePointer attempt()
    {
        const int line = m_cursor.take().line;
        m_cursor.expectLineEnd();
        ScriptNodePointer attempt = node(Kind::Try, line, block({u"end", u"on error"}));
        if (m_cursor.takeWords(u"on error")) {
            attempt->names = {QString(), QString()};
            if (!m_cursor.isLineEnd() && !m_cursor.isWord(u"number"))
                attempt->names[0] = m_expressions.variableName();
            if (m_cursor.takeWord(u"number"))
                attempt->names[1] = m_expressions.variableName();
            m_cursor.expectLineEnd();
            attempt->children.push_back(block({u"end"}));
        }
        takeEnd(m_cursor.isWord(u"error", 1) ? u"error" : u"try");
        return attempt;
    }

    ScriptNodePointer error()
    {
        const int line = m_cursor.take().line;
        ScriptNodePointer message;
        ScriptNodePointer number;
        if (!m_cursor.isLineEnd() && !m_cursor.isWord(u"number"))
            message = m_expressions.expression();
        if (m_cursor.takeWord(u"number"))
            number = m_expressions.expression();
        return node(Kind::Error, line, std::move(message), std::move(number));
    }

    ScriptNodePointer tell()
    {
        const int line = m_cursor.take().line;
        ScriptNodePointer target = m_expressions.reference();
        if (m_cursor.takeWord(u"to"))
            return node(Kind::Tell, line, std::move(target), statement());
        ScriptNodePointer body = blockUntilEnd(u"tell");
        return node(Kind::Tell, line, std::move(target), std::move(body));
    }

    // The time that the applications get is bounded in any case.
    ScriptNodePointer timeout()
    {
        m_cursor.skip(1);
        const bool isTimeout = m_cursor.takeWord(u"timeout");
        if (!isTimeout)
            m_cursor.expectWord(u"transaction");
        if (isTimeout && !m_cursor.isLineEnd()) {
            m_cursor.takeWord(u"of");
            m_expressions.expression();
            if (!m_cursor.takeWord(u"seconds"))
                m_cursor.expectWord(u"second");
        }
        return blockUntilEnd(isTimeout ? u"timeout" : u"transaction");
    }

    // Known to the dictionary of another application, but it is the same dictionary here.
    ScriptNodePointer terms()
    {
        m_cursor.skip(1);
        m_cursor.expectWord(u"terms");
        m_cursor.expectWord(u"from");
        m_expressions.reference();
        return blockUntilEnd(u"using terms from");
    }

    ScriptNodePointer considering()
    {
        const ScriptToken first = m_cursor.peek();
        ScriptNodePointer block = node(Kind::Considering, first.line);
        takeAttributes(*block);
        // `considering case but ignoring punctuation`
        if (m_cursor.takeWord(u"but"))
            takeAttributes(*block);
        block->children.push_back(blockUntilEnd(first.text));
        return block;
    }

    void takeAttributes(ScriptNode &block)
    {
        if (!m_cursor.isWord(u"considering") && !m_cursor.isWord(u"ignoring"))
            m_cursor.failExpecting(u"“ignoring”"_s);
        const QString prefix = m_cursor.take().text == u"ignoring" ? u"ignore "_s : u"consider "_s;
        static const QStringList attributes{
            u"case"_s,        u"diacriticals"_s, u"hyphens"_s,         u"punctuation"_s,
            u"white space"_s, u"expansion"_s,    u"numeric strings"_s, u"application responses"_s};
        do {
            const QString attribute = m_expressions.nextLabel(attributes);
            if (attribute.isEmpty())
                m_cursor.fail();
            m_cursor.skip(attribute.count(u' ') + 1);
            block.names.append(prefix + attribute);
        } while (m_cursor.takeSymbol(u",") || m_cursor.takeWord(u"and"));
    }

    ScriptNodePointer returned()
    {
        const int line = m_cursor.take().line;
        return node(Kind::Return, line, m_cursor.isLineEnd() ? nullptr : m_expressions.expression());
    }

    ScriptNodePointer declaration()
    {
        const ScriptToken word = m_cursor.take();
        ScriptNodePointer names = node(word.text == u"global" ? Kind::Global : Kind::Local, word.line);
        do {
            names->names.append(m_expressions.variableName());
        } while (m_cursor.takeSymbol(u","));
        return names;
    }

    ScriptNodePointer property()
    {
        const int line = m_cursor.take().line;
        const QString name = m_expressions.variableName();
        m_cursor.expectSymbol(u":");
        return Expressions::node(Kind::PropertyDefinition, line, name, m_expressions.expression());
    }

    ScriptNodePointer scriptObject()
    {
        throw ScriptError(u"Line %1: Script objects are not supported."_s.arg(m_cursor.line()),
                          ScriptError::Syntax);
    }

    // on NAME(a, {b, c}) | on NAME of a above b given c:d | on run [a]
    ScriptNodePointer handler()
    {
        const int line = m_cursor.take().line;
        const QString written = m_cursor.peek().text;
        ScriptNodePointer handler = Expressions::node(Kind::Handler, line, m_expressions.variableName());
        if (m_cursor.takeSymbol(u"("))
            takePositionalParameters(*handler);
        else
            takeLabelledParameters(*handler);
        handler->children.push_back(blockUntilEnd(written));
        return handler;
    }

    void takePositionalParameters(ScriptNode &handler)
    {
        while (!m_cursor.takeSymbol(u")")) {
            if (!handler.children.empty())
                m_cursor.expectSymbol(u",");
            handler.children.push_back(parameter());
        }
    }

    void takeLabelledParameters(ScriptNode &handler)
    {
        // `on run argv`
        if (handler.name == u"run" && !m_cursor.isLineEnd())
            handler.children.push_back(parameter());
        while (!m_cursor.isLineEnd()) {
            if (m_cursor.takeWord(u"given")) {
                takeGivenParameters(handler);
                continue;
            }
            const QString label = m_expressions.nextLabel(ScriptVocabulary::prepositions());
            if (label.isEmpty())
                m_cursor.fail();
            m_cursor.skip(label.count(u' ') + 1);
            handler.names.append(label);
            handler.children.push_back(parameter());
        }
    }

    void takeGivenParameters(ScriptNode &handler)
    {
        do {
            handler.names.append(m_expressions.variableName());
            m_cursor.expectSymbol(u":");
            handler.children.push_back(parameter());
        } while (m_cursor.takeSymbol(u","));
    }

    // A variable, or a list of them to which the items of a list are assigned.
    ScriptNodePointer parameter()
    {
        const Expressions::Level level(m_expressions);
        const int line = m_cursor.line();
        if (!m_cursor.takeSymbol(u"{"))
            return Expressions::node(Kind::Variable, line, m_expressions.variableName());
        ScriptNodePointer list = node(Kind::List, line);
        while (!m_cursor.takeSymbol(u"}")) {
            if (!list->children.empty())
                m_cursor.expectSymbol(u",");
            list->children.push_back(parameter());
        }
        return list;
    }

    ScriptTokenCursor m_cursor;
    ScriptExpressionParser m_expressions;
};

} // namespace

ScriptNodePointer ScriptParser::parse(const QString &source)
{
    if (source.size() > longestSource)
        throw ScriptError(u"The script is too long."_s, ScriptError::TooLarge);
    return StatementParser(ScriptLexer::tokens(source)).script();
}

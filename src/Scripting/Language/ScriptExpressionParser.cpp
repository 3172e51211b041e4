// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptExpressionParser.h"

#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;

namespace {

constexpr int deepestNesting = 100;
constexpr int mostOperators = 1000;

std::optional<ScriptOperator>
operatorOf(const ScriptToken &token, std::initializer_list<std::pair<QStringView, ScriptOperator>> operators)
{
    for (const auto &[text, operation] : operators) {
        if (token.isSymbol(text) || token.isWord(text))
            return operation;
    }
    return std::nullopt;
}

} // namespace

ScriptExpressionParser::ScriptExpressionParser(ScriptTokenCursor &cursor) : m_cursor(cursor) {}

ScriptExpressionParser::Level::Level(ScriptExpressionParser &parser) : m_parser(parser)
{
    if (parser.m_depth >= deepestNesting)
        throw ScriptError(u"Line %1: The script is nested too deeply."_s.arg(parser.m_cursor.line()),
                          ScriptError::Syntax);
    ++parser.m_depth;
}

ScriptNodePointer ScriptExpressionParser::node(ScriptNode::Kind kind, int line, QString name)
{
    auto created = std::make_unique<ScriptNode>();
    created->kind = kind;
    created->line = line;
    created->name = std::move(name);
    return created;
}

void ScriptExpressionParser::countOperator()
{
    if (++m_operators > mostOperators)
        throw ScriptError(u"Line %1: The statement has too many operators."_s.arg(m_cursor.line()),
                          ScriptError::Syntax);
}

ScriptNodePointer ScriptExpressionParser::binary(ScriptOperator operation, int line, ScriptNodePointer left,
                                                 ScriptNodePointer right)
{
    countOperator();
    ScriptNodePointer created = node(Kind::Binary, line, {}, std::move(left), std::move(right));
    created->operation = operation;
    return created;
}

ScriptNodePointer ScriptExpressionParser::expression()
{
    const Level level(*this);
    return disjunction();
}

ScriptNodePointer ScriptExpressionParser::disjunction()
{
    ScriptNodePointer left = conjunction();
    while (m_cursor.isWord(u"or")) {
        const int line = m_cursor.take().line;
        ScriptNodePointer right = conjunction();
        countOperator();
        left = node(Kind::Or, line, {}, std::move(left), std::move(right));
    }
    return left;
}

ScriptNodePointer ScriptExpressionParser::conjunction()
{
    ScriptNodePointer left = negation();
    while (m_cursor.isWord(u"and")) {
        const int line = m_cursor.take().line;
        ScriptNodePointer right = negation();
        countOperator();
        left = node(Kind::And, line, {}, std::move(left), std::move(right));
    }
    return left;
}

ScriptNodePointer ScriptExpressionParser::negation()
{
    if (!m_cursor.isWord(u"not"))
        return comparison();
    const Level level(*this);
    const int line = m_cursor.take().line;
    return node(Kind::Not, line, {}, negation());
}

ScriptNodePointer ScriptExpressionParser::comparison()
{
    ScriptNodePointer left = coercion();
    while (true) {
        if (ScriptNodePointer property = comparedProperty(left)) {
            countOperator();
            left = std::move(property);
            continue;
        }
        const auto found = m_cursor.comparison();
        if (!found)
            return left;
        const int line = m_cursor.line();
        m_cursor.skip(found->tokens);
        ScriptNodePointer right = coercion();
        left = binary(found->operation, line, std::move(left), std::move(right));
    }
}

// `x is running`, `x is not running`, `x exists`, `x does not exist`. Null if none of them is next.
ScriptNodePointer ScriptExpressionParser::comparedProperty(ScriptNodePointer &left)
{
    const int line = m_cursor.line();
    if (m_cursor.takeWords(u"is running"))
        return node(Kind::Property, line, u"running"_s, std::move(left));
    const auto exists = [&] {
        ScriptNodePointer command = node(Kind::Command, line, u"exists"_s);
        command->children.push_back(std::move(left));
        return command;
    };
    if (m_cursor.takeWord(u"exists"))
        return exists();
    if (m_cursor.takeWords(u"does not exist") || m_cursor.takeWords(u"doesn't exist"))
        return node(Kind::Not, line, {}, exists());
    if (m_cursor.takeWords(u"is not running") || m_cursor.takeWords(u"isn't running"))
        return node(Kind::Not, line, {}, node(Kind::Property, line, u"running"_s, std::move(left)));
    return nullptr;
}

ScriptNodePointer ScriptExpressionParser::coercion()
{
    ScriptNodePointer value = concatenation();
    while (m_cursor.isWord(u"as") && !m_labels.contains(u"as"_s)) {
        const int line = m_cursor.take().line;
        countOperator();
        value = node(Kind::Coercion, line, {}, std::move(value), operand());
    }
    return value;
}

ScriptNodePointer ScriptExpressionParser::concatenation()
{
    ScriptNodePointer left = sum();
    while (m_cursor.isSymbol(u"&")) {
        const int line = m_cursor.take().line;
        ScriptNodePointer right = sum();
        left = binary(ScriptOperator::Concatenate, line, std::move(left), std::move(right));
    }
    return left;
}

ScriptNodePointer ScriptExpressionParser::sum()
{
    ScriptNodePointer left = product();
    while (const auto operation =
               operatorOf(m_cursor.peek(), {{u"+", ScriptOperator::Plus}, {u"-", ScriptOperator::Minus}})) {
        const int line = m_cursor.take().line;
        ScriptNodePointer right = product();
        left = binary(*operation, line, std::move(left), std::move(right));
    }
    return left;
}

ScriptNodePointer ScriptExpressionParser::product()
{
    ScriptNodePointer left = power();
    while (const auto operation = operatorOf(m_cursor.peek(), {{u"*", ScriptOperator::Multiply},
                                                               {u"×", ScriptOperator::Multiply},
                                                               {u"/", ScriptOperator::Divide},
                                                               {u"÷", ScriptOperator::Divide},
                                                               {u"div", ScriptOperator::Div},
                                                               {u"mod", ScriptOperator::Mod}})) {
        const int line = m_cursor.take().line;
        ScriptNodePointer right = power();
        left = binary(*operation, line, std::move(left), std::move(right));
    }
    return left;
}

// From right to left: 2 ^ 3 ^ 2 is 2 ^ 9.
ScriptNodePointer ScriptExpressionParser::power()
{
    ScriptNodePointer base = signedOperand();
    if (!m_cursor.isSymbol(u"^"))
        return base;
    const Level level(*this);
    const int line = m_cursor.take().line;
    return binary(ScriptOperator::Power, line, std::move(base), power());
}

ScriptNodePointer ScriptExpressionParser::signedOperand()
{
    if (!m_cursor.isSymbol(u"-") && !m_cursor.isSymbol(u"+"))
        return reference();
    const Level level(*this);
    const ScriptToken sign = m_cursor.take();
    ScriptNodePointer value = signedOperand();
    return sign.text == u"-" ? node(Kind::Negative, sign.line, {}, std::move(value)) : std::move(value);
}

ScriptNodePointer ScriptExpressionParser::reference()
{
    return filtered(chain());
}

// An operand with its containers: `word 1 of name of x`, `x's name`.
ScriptNodePointer ScriptExpressionParser::chain()
{
    const Level level(*this);
    ScriptNodePointer result = operand();
    ScriptNode *innermost = result.get();
    while (true) {
        if (m_cursor.isSymbol(u"'s")) {
            m_cursor.take();
            countOperator();
            ScriptNodePointer part = operand();
            ScriptNode *inner = part.get();
            if (inner->kind == Kind::Variable || inner->kind == Kind::Term)
                inner->kind = Kind::Property;
            if ((inner->kind != Kind::Property && inner->kind != Kind::Element) ||
                (!inner->children.empty() && inner->children.front()))
                m_cursor.fail();
            if (inner->children.empty())
                inner->children.emplace_back();
            inner->children.front() = std::move(result);
            result = std::move(part);
            innermost = nullptr;
            continue;
        }
        const bool hasContainer =
            m_cursor.isWord(u"of") || (m_cursor.isWord(u"in") && !m_labels.contains(u"in"_s));
        if (!hasContainer || !innermost)
            return result;
        takeContainer(*innermost);
        innermost = nullptr;
    }
}

void ScriptExpressionParser::takeContainer(ScriptNode &innermost)
{
    const bool isVariable = innermost.kind == Kind::Variable || innermost.kind == Kind::Term;
    if (isVariable)
        innermost.kind = Kind::Property;
    const bool isCall = innermost.kind == Kind::Call;
    if (innermost.kind != Kind::Property && innermost.kind != Kind::Element && !isCall)
        m_cursor.fail();
    if (!isCall && !innermost.children.empty() && innermost.children.front())
        m_cursor.fail();
    m_cursor.take();
    ScriptNodePointer container = chain();
    // `f(x) of me`: all handlers belong to the script.
    if (isCall && container->kind == Kind::Script)
        return;
    if (isCall)
        m_cursor.fail();
    if (innermost.children.empty())
        innermost.children.emplace_back();
    innermost.children.front() = std::move(container);
}

// A `whose` belongs to the outermost element of the chain.
ScriptNodePointer ScriptExpressionParser::filtered(ScriptNodePointer outermost)
{
    if (!m_cursor.isWord(u"whose") && !m_cursor.isWord(u"where"))
        return outermost;
    ScriptNodePointer *place = &outermost;
    while (*place && (*place)->kind == Kind::Property && !(*place)->children.empty())
        place = &(*place)->children.front();
    if (!*place || (*place)->kind != Kind::Element)
        m_cursor.fail();
    const int line = m_cursor.take().line;
    ScriptNodePointer condition = expression();
    *place = node(Kind::Filter, line, {}, std::move(*place), std::move(condition));
    return outermost;
}

// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptLexer.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ScriptLexerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void splitsIntoTokens_data();
    void splitsIntoTokens();
    void countsLines_data();
    void countsLines();
};

namespace {

QString kindOf(const ScriptToken &token)
{
    switch (token.kind) {
    case ScriptToken::Kind::Word:
        return u"word "_s;
    case ScriptToken::Kind::Barred:
        return u"name "_s;
    case ScriptToken::Kind::Text:
        return u"text "_s;
    case ScriptToken::Kind::Number:
        return u"number "_s;
    case ScriptToken::Kind::Symbol:
        return u"symbol "_s;
    case ScriptToken::Kind::LineEnd:
        return u"line end"_s;
    case ScriptToken::Kind::End:
        return u"end"_s;
    }
    return {};
}

} // namespace

void ScriptLexerTest::splitsIntoTokens_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("expected"); // before the last line end
    QTest::newRow("words") << u"Set x TO y"_s
                           << QStringList{u"word set"_s, u"word x"_s, u"word to"_s, u"word y"_s};
    QTest::newRow("underscore and digits") << u"_a1"_s << QStringList{u"word _a1"_s};
    QTest::newRow("contraction") << u"isn't doesn’t"_s << QStringList{u"word isn't"_s, u"word doesn't"_s};
    QTest::newRow("possessive") << u"x's y"_s << QStringList{u"word x"_s, u"symbol 's"_s, u"word y"_s};
    QTest::newRow("possessive after n") << u"Ann's"_s << QStringList{u"word ann"_s, u"symbol 's"_s};
    QTest::newRow("bars") << u"|My Name|"_s << QStringList{u"name My Name"_s};
    QTest::newRow("text") << uR"("a \"b\"")"_s << QStringList{uR"(text a "b")"_s};
    QTest::newRow("curly quotes") << u"“a”"_s << QStringList{u"text a"_s};
    QTest::newRow("numbers") << u"1 2.5 3E+2"_s
                             << QStringList{u"number 1"_s, u"number 2.5"_s, u"number 3E+2"_s};
    QTest::newRow("ordinal") << u"2nd word"_s << QStringList{u"word 2nd"_s, u"word word"_s};
    QTest::newRow("symbols") << u"a<=b≠c/=d"_s
                             << QStringList{u"word a"_s, u"symbol <="_s, u"word b"_s, u"symbol ≠"_s,
                                            u"word c"_s, u"symbol /="_s, u"word d"_s};
    QTest::newRow("comments") << u"a -- b\nc # d\n(* e (* f *) *) g"_s
                              << QStringList{u"word a"_s, u"line end"_s, u"word c"_s, u"line end"_s,
                                             u"word g"_s};
    QTest::newRow("two hyphens in a text") << uR"("a--b")"_s << QStringList{u"text a--b"_s};
    QTest::newRow("continuation") << u"a ¬\nb"_s << QStringList{u"word a"_s, u"word b"_s};
    QTest::newRow("continuation with comment") << u"a ¬ -- c\nb"_s << QStringList{u"word a"_s, u"word b"_s};
    QTest::newRow("line ends") << u"a\r\nb\rc"_s
                               << QStringList{u"word a"_s, u"line end"_s, u"word b"_s, u"line end"_s,
                                              u"word c"_s};
    QTest::newRow("accents") << u"größe"_s << QStringList{u"word größe"_s};
    QTest::newRow("nothing") << QString() << QStringList();
}

void ScriptLexerTest::splitsIntoTokens()
{
    QFETCH(QString, source);
    QStringList tokens;
    for (const ScriptToken &token : ScriptLexer::tokens(source))
        tokens.append(kindOf(token) + token.text);
    QCOMPARE(tokens.size() >= 2 ? tokens.mid(tokens.size() - 2) : tokens,
             (QStringList{u"line end"_s, u"end"_s}));
    QTEST(tokens.mid(0, tokens.size() - 2), "expected");
}

void ScriptLexerTest::countsLines_data()
{
    QTest::addColumn<QString>("source"); // its last word is in line 3
    QTest::newRow("line feeds") << u"a\nb\nc"_s;
    QTest::newRow("returns") << u"a\rb\rc"_s;
    QTest::newRow("both") << u"a\r\nb\r\nc"_s;
    QTest::newRow("a comment") << u"(* a\nb\n*) c"_s;
    QTest::newRow("a text") << u"\"a\nb\n\" c"_s;
    QTest::newRow("continuations") << u"a ¬\nb ¬\nc"_s;
}

void ScriptLexerTest::countsLines()
{
    QFETCH(QString, source);
    const QList<ScriptToken> tokens = ScriptLexer::tokens(source);
    QCOMPARE(tokens.at(tokens.size() - 3).text, u"c"_s);
    QCOMPARE(tokens.at(tokens.size() - 3).line, 3);
}

QTEST_APPLESS_MAIN(ScriptLexerTest)
#include "ScriptLexerTest.moc"

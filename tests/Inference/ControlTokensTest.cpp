// SPDX-License-Identifier: Apache-2.0
#include "Inference/ControlTokens.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Control token texts in contents are broken; everything else is unchanged.
class ControlTokensTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void controlTokenTextsAreBroken_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("broken");
        QTest::newRow("bracketed") << u"a </s> b"_s << u"a < /s> b"_s;
        QTest::newRow("twice in a row") << u"</s></s>"_s << u"< /s>< /s>"_s;
        QTest::newRow("square brackets") << u"[INST]x"_s << u"[ INST]x"_s;
        QTest::newRow("overlapping itself") << u"====="_s << u"= = = = ="_s;
        QTest::newRow("chat marker") << u"<|im_end|>"_s << u"< |im_end|>"_s;
        QTest::newRow("fullwidth bars") << u"<｜end▁of▁turn｜>"_s << u"< ｜end▁of▁turn｜>"_s;
        QTest::newRow("blanks in front") << u"a  <x>"_s << u"a  < x>"_s;
        QTest::newRow("a shorter one, made by breaking a longer one") << u"#abc"_s << u"#  abc"_s;
        QTest::newRow("spelt with an emoji") << u"😀end"_s << u"😀 end"_s;
        QTest::newRow("what a broken one could turn into") << u"<s>"_s << u"<  s>"_s;
    }

    void controlTokenTextsAreBroken()
    {
        QFETCH(QString, content);
        const ControlTokens tokens({u"</s>"_s, u"[INST]"_s, u"=="_s, u"😀end"_s, u"<s>"_s, u"< s>"_s,
                                    u"<|im_end|>"_s, u"<｜end▁of▁turn｜>"_s, u"  <x>"_s, u"# a"_s,
                                    u"#abc"_s});
        QTEST(tokens.broken(content), "broken");
    }

    void otherContentStays_data()
    {
        QTest::addColumn<QString>("content");
        QTest::newRow("action") << u"{\"action\":\"open_app\",\"app\":\"Safari\"}"_s;
        QTest::newRow("brackets") << u"a < b | c > d [x] </b>"_s;
        QTest::newRow("bars of a pipe") << u"f |> g <| h <|> i"_s;
        QTest::newRow("marker of another model") << u"<|im_end|>"_s;
        QTest::newRow("line breaks and curly quotes") << u"User: “x”\nState: y"_s;
        QTest::newRow("empty") << QString();
    }

    void otherContentStays()
    {
        QFETCH(QString, content);
        QCOMPARE(ControlTokens({u"</s>"_s, u"[INST]"_s}).broken(content), content);
    }

    void aSingleCharacterCannotBeBroken()
    {
        QCOMPARE(
            ControlTokens({u"a"_s, QString(), u"  "_s, u"  n"_s, u"n "_s, u"😀"_s}).broken(u"banana   n 😀"_s),
            u"banana   n 😀"_s);
    }
};

QTEST_GUILESS_MAIN(ControlTokensTest)
#include "ControlTokensTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Inference/ControlTokens.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Content that spells control tokens is broken, all other content stays as it is.
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
        QTest::newRow("marker shape of another model") << u"<|im_end|>"_s << u"< |im_end| >"_s;
        QTest::newRow("spelt with an emoji") << u"😀end"_s << u"😀 end"_s;
        QTest::newRow("what a broken one could turn into") << u"<s>"_s << u"<  s>"_s;
    }

    void controlTokenTextsAreBroken()
    {
        QFETCH(QString, content);
        const ControlTokens tokens(
            {u"</s>"_s, u"[INST]"_s, u"=="_s, u"😀end"_s, u"<s>"_s, u"< s>"_s, u"<|im_end|>"_s});
        QTEST(tokens.broken(content), "broken");
    }

    void otherContentStays_data()
    {
        QTest::addColumn<QString>("content");
        QTest::newRow("action") << u"{\"action\":\"open_app\",\"app\":\"Safari\"}"_s;
        QTest::newRow("brackets") << u"a < b | c > d [x] </b>"_s;
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
        QCOMPARE(ControlTokens({u"a"_s, QString()}).broken(u"banana"_s), u"banana"_s);
    }
};

QTEST_GUILESS_MAIN(ControlTokensTest)
#include "ControlTokensTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Typing/TypedText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TypedTextTest : public QObject
{
    Q_OBJECT

private:
    static KeyStroke typing(const QString &text) { return {0, {}, text}; }

    static QStringList texts(const QList<KeyStroke> &strokes)
    {
        QStringList result;
        for (const KeyStroke &stroke : strokes)
            result.append(stroke.text);
        return result;
    }

private Q_SLOTS:
    void keysAndShortTextsStayAsTheyAre()
    {
        const QList<KeyStroke> strokes{{17, EventFlag::Command, {}}, typing(u"twenty units are one"_s)};
        QCOMPARE(strokes[1].text.size(), 20);
        QCOMPARE(TypedText::fitted(strokes), strokes);
        QCOMPARE(TypedText::fitted({}), QList<KeyStroke>());
    }

    void aLongTextIsDividedBetweenCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<qsizetype>>("sizes");
        QTest::newRow("letters") << u"a"_s.repeated(45) << QList<qsizetype>{20, 20, 5};
        QTest::newRow("twenty emoji") << u"🙂"_s.repeated(20) << QList<qsizetype>{20, 20};
        QTest::newRow("a pair at the limit") << u"a"_s + u"🙂"_s.repeated(19) << QList<qsizetype>{19, 20};
        QTest::newRow("skin tones") << u"👍🏽"_s.repeated(20) << QList<qsizetype>{20, 20, 20, 20};
        QTest::newRow("accents of their own")
            << u"e\u0301"_s.repeated(9) + u"abe\u0301"_s << QList<qsizetype>{20, 2};
        QTest::newRow("an accent at the limit")
            << u"e\u0301"_s.repeated(9) + u"ae\u0301"_s << QList<qsizetype>{19, 2};
    }
    void aLongTextIsDividedBetweenCharacters()
    {
        QFETCH(QString, text);
        QFETCH(QList<qsizetype>, sizes);
        const QStringList pieces = texts(TypedText::fitted({typing(text)}));
        QCOMPARE(pieces.join(QString()), text);
        QList<qsizetype> found;
        for (const QString &piece : pieces)
            found.append(piece.size());
        QCOMPARE(found, sizes);
    }

    void aCharacterThatIsTooLongIsDividedBetweenCodePoints()
    {
        const QString accents = u"e"_s + u"\u0301"_s.repeated(30);
        QCOMPARE(texts(TypedText::fitted({typing(accents)})),
                 (QStringList{accents.first(20), accents.sliced(20)}));
        // Combining marks that are surrogate pairs, starting at an odd index.
        const QString pairs = u"e"_s + u"\U0001D165"_s.repeated(12);
        const QStringList pieces = texts(TypedText::fitted({typing(pairs)}));
        QCOMPARE(pieces.join(QString()), pairs);
        for (const QString &piece : pieces) {
            QVERIFY(piece.size() <= 20);
            QVERIFY(piece.isValidUtf16());
        }
    }

    void thePiecesKeepTheirOrderAmongTheStrokes()
    {
        const QString text = u"The quick brown fox jumps over the lazy dog"_s;
        const QList<KeyStroke> fitted = TypedText::fitted({typing(text), {36, {}, {}}, typing(u"x"_s)});
        QCOMPARE(texts(fitted), (QStringList{u"The quick brown fox "_s, u"jumps over the lazy "_s, u"dog"_s,
                                             QString(), u"x"_s}));
        QCOMPARE(fitted[3].virtualKey, 36);
    }
};

QTEST_GUILESS_MAIN(TypedTextTest)
#include "TypedTextTest.moc"

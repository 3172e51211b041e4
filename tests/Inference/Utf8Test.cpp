// SPDX-License-Identifier: Apache-2.0
#include "Inference/Utf8.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Decoding of model output: repaired, rejected, or assembled.
class Utf8Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void invalidSequencesAreReplaced_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("valid") << QByteArray("a “b” 😀") << u"a “b” 😀"_s;
        QTest::newRow("lone byte") << QByteArray("a\xFFz") << u"a\uFFFDz"_s;
        QTest::newRow("cut at the end") << QByteArray("a\xC3") << u"a\uFFFD"_s;
        QTest::newRow("byte order mark stays") << QByteArray("\xEF\xBB\xBFx") << u"\uFEFFx"_s;
        QTest::newRow("empty") << QByteArray() << QString();
    }

    void invalidSequencesAreReplaced()
    {
        QFETCH(QByteArray, bytes);
        QTEST(Utf8::repaired(bytes), "text");
    }

    void onlyValidBytesAreWhole_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("valid");
        QTest::newRow("text") << QByteArray("plain é 😀") << true;
        QTest::newRow("empty") << QByteArray() << true;
        QTest::newRow("noncharacter") << QByteArray("\xEF\xBF\xBF") << true;
        QTest::newRow("cut") << QByteArray("\xF0\x9F\x98") << false;
        QTest::newRow("overlong slash") << QByteArray("\xC0\xAF") << false;
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80") << false;
        QTest::newRow("beyond Unicode") << QByteArray("\xF4\x90\x80\x80") << false;
        QTest::newRow("continuation alone") << QByteArray("a\x80") << false;
    }

    void onlyValidBytesAreWhole()
    {
        QFETCH(QByteArray, bytes);
        QTEST(Utf8::whole(bytes).has_value(), "valid");
    }

    void aCharacterCutByPiecesComesOutOnceWhole()
    {
        Utf8::Assembler assembler;
        QCOMPARE(assembler.append("a\xF0\x9F"), QString());
        QCOMPARE(assembler.append("\x98"), QString());
        QCOMPARE(assembler.append("\x80z"), u"a😀z"_s);
        QCOMPARE(assembler.append("next"), u"next"_s);
    }

    void bytesThatNeverBecomeTextStayPending()
    {
        Utf8::Assembler assembler;
        QCOMPARE(assembler.append("\xFF"), QString());
        QCOMPARE(assembler.append("text"), QString());
    }
};

QTEST_GUILESS_MAIN(Utf8Test)
#include "Utf8Test.moc"

// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/ShownText.h"

#include <QTest>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString shalom = u"\u05E9\u05DC\u05D5\u05DD"_s; // right-to-left
const QString olam = u"\u05E2\u05D5\u05DC\u05DD"_s;

QString withoutIsolates(QString text)
{
    return text.remove(QChar(0x2068)).remove(QChar(0x2069));
}

// The horizontal positions of the parts after their first characters; each part occurs once.
QList<qreal> places(const QString &text, const QStringList &parts)
{
    QTextLayout layout(text);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    QList<qreal> result;
    for (const QString &part : parts)
        result.append(line.cursorToX(static_cast<int>(text.indexOf(part)) + 1));
    return result;
}

} // namespace

class ShownTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void invisibleCharactersAreMarked_data();
    void invisibleCharactersAreMarked();
    void quotationsStayWhereTheyAreQuoted_data();
    void quotationsStayWhereTheyAreQuoted();
    void otherTextsStayAsTheyAre_data();
    void otherTextsStayAsTheyAre();
};

void ShownTextTest::invisibleCharactersAreMarked_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("lines");
    QTest::newRow("override") << u"Quit a\u202Eb"_s << u"Quit a⟨U+202E⟩b"_s << u"Quit a⟨U+202E⟩b"_s;
    QTest::newRow("zero width") << u"Quit a\u200Bb"_s << u"Quit a⟨U+200B⟩b"_s << u"Quit a⟨U+200B⟩b"_s;
    QTest::newRow("isolates") << u"\u2067a\u2069"_s << u"⟨U+2067⟩a⟨U+2069⟩"_s << u"⟨U+2067⟩a⟨U+2069⟩"_s;
    QTest::newRow("escape") << u"a\u001B[2J"_s << u"a⟨U+001B⟩[2J"_s << u"a⟨U+001B⟩[2J"_s;
    QTest::newRow("line break") << u"a\nb"_s << u"a⟨U+000A⟩b"_s << u"a\nb"_s;
    QTest::newRow("paragraph") << u"a\u2029b"_s << u"a⟨U+2029⟩b"_s << u"a⟨U+2029⟩b"_s;
}

void ShownTextTest::invisibleCharactersAreMarked()
{
    QFETCH(QString, text);
    QTEST(ShownText::line(text), "line");
    QTEST(ShownText::lines(text), "lines");
}

void ShownTextTest::quotationsStayWhereTheyAreQuoted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("two, in quotation marks")
        << u"Click “%1” (“%2”) in Mail"_s.arg(shalom, olam) << QStringList{u"Click"_s, shalom, olam, u"in"_s};
    QTest::newRow("two, the second in brackets")
        << u"Quit %1 (%2) — unsaved"_s.arg(shalom, olam) << QStringList{u"Quit"_s, shalom, olam, u"—"_s};
    QTest::newRow("a number after a dash")
        << u"Opening %1 — 404"_s.arg(shalom) << QStringList{u"Opening"_s, shalom, u"—"_s, u"404"_s};
    QTest::newRow("several words") << u"Move “%1 %2” to the Trash"_s.arg(shalom, olam)
                                   << QStringList{u"Move"_s, olam, shalom, u"to"_s};
}

void ShownTextTest::quotationsStayWhereTheyAreQuoted()
{
    QFETCH(QString, text);
    QFETCH(QStringList, parts);
    const QString shown = ShownText::line(text);
    QCOMPARE(withoutIsolates(shown), text);
    const QList<qreal> found = places(shown, parts);
    QVERIFY2(std::is_sorted(found.begin(), found.end()), qPrintable(shown));
}

void ShownTextTest::otherTextsStayAsTheyAre_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("from left to right") << u"Quit Mail — unsaved work could be lost"_s;
    QTest::newRow("from right to left") << u"%1 (Mail) “%2”"_s.arg(shalom, olam);
    QTest::newRow("emoji") << u"Typing “👩‍💻”"_s;
}

void ShownTextTest::otherTextsStayAsTheyAre()
{
    QFETCH(QString, text);
    QCOMPARE(ShownText::line(text), text);
}

QTEST_MAIN(ShownTextTest)
#include "ShownTextTest.moc"

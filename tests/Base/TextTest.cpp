// SPDX-License-Identifier: Apache-2.0
#include "Base/Text.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString family = u"👨‍👩‍👧‍👦"_s;
const QString flag = u"🇩🇪"_s;
const QString thumb = u"👍🏽"_s;
const QString heart = u"❤️"_s;

} // namespace

class TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trimming();
    void equalAsPeopleSeeThem_data();
    void equalAsPeopleSeeThem();
    void contained_data();
    void contained();
    void firstCharacters_data();
    void firstCharacters();
    void chunks_data();
    void chunks();
    void capitalized_data();
    void capitalized();
    void cleaned_data();
    void cleaned();
    void cleaningIsIdempotent_data();
    void cleaningIsIdempotent();
    void visibleMarks_data();
    void visibleMarks();
    void lineBreaksOfAScriptStay();
    void charactersVisibleInContextStay_data();
    void charactersVisibleInContextStay();
    void cleanedTextNeedsNoMarks_data();
    void cleanedTextNeedsNoMarks();
    void invisibleCharactersAreDropped_data();
    void invisibleCharactersAreDropped();
    void markersAreBroken_data();
    void markersAreBroken();
};

void TextTest::trimming()
{
    QCOMPARE(Text::trimmed(u" \t\r\n a  b \u00A0\u2029"_s), u"a  b"_s);
    QCOMPARE(Text::trimmed(u" \n "_s), QString(u""_s));
    QCOMPARE(Text::trimmed(u". .a.b. "_s, u". "), u"a.b"_s);
    QCOMPARE(Text::trimmed(u"///"_s, u"/"), u""_s);
}

void TextTest::equalAsPeopleSeeThem_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<bool>("equal");

    QTest::newRow("letter case") << u"SAFARI"_s << u"safari"_s << true;
    QTest::newRow("letter case beyond ASCII") << u"ÉTÉ ЖУК ΣΟΦΟΣ"_s << u"été жук σοφος"_s << true;
    QTest::newRow("a final sigma") << u"ΟΔΟΣ"_s << u"οδος"_s << true;
    QTest::newRow("a sharp s is no pair of letters") << u"STRASSE"_s << u"straße"_s << false;
    QTest::newRow("composed and decomposed") << u"caf\u00E9"_s << u"CAFE\u0301"_s << true;
    QTest::newRow("the order of two accents") << u"a\u0323\u0302"_s << u"a\u0302\u0323"_s << true;
    QTest::newRow("Korean syllables and their letters") << u"한"_s << u"\u1112\u1161\u11AB"_s << true;
    QTest::newRow("a dotted capital I") << u"\u0130"_s << u"i\u0307"_s << true;
    QTest::newRow("the sign of the ohm") << u"\u2126"_s << u"ω"_s << true;
    QTest::newRow("a zero-width space") << u"Se\u200Bnd"_s << u"send"_s << true;
    QTest::newRow("invisible characters of every kind")
        << u"S\u200De\uFE0Fn\u034Fd\u3164"_s << u"send"_s << true;
    QTest::newRow("an accent more") << u"resume"_s << u"résumé"_s << false;
    QTest::newRow("a letter of another script") << u"a"_s << u"а"_s << false;
    QTest::newRow("a blank more") << u"a b"_s << u"a  b"_s << false;
    QTest::newRow("nothing") << QString() << u""_s << true;
}

void TextTest::equalAsPeopleSeeThem()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QFETCH(bool, equal);
    QCOMPARE(Text::equals(left, right), equal);
    QCOMPARE(Text::equals(right, left), equal);
    QCOMPARE(Text::comparisonKey(left) == Text::comparisonKey(right), equal);
    QCOMPARE(Text::comparisonKey(Text::comparisonKey(left)), Text::comparisonKey(left));
}

void TextTest::contained_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("part");
    QTest::addColumn<bool>("contains");

    QTest::newRow("at the end") << u"Xcode"_s << u"CODE"_s << true;
    QTest::newRow("an accent, encoded otherwise") << u"Mein Cafe\u0301 hier"_s << u"CAFÉ"_s << true;
    QTest::newRow("a letter without its accent") << u"é"_s << u"e"_s << false;
    QTest::newRow("nothing is everywhere") << u"a"_s << u""_s << true;
    QTest::newRow("longer than the text") << u"a"_s << u"ab"_s << false;
}

void TextTest::contained()
{
    QFETCH(QString, text);
    QFETCH(QString, part);
    QTEST(Text::contains(text, part), "contains");
}

void TextTest::firstCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("first");

    QTest::newRow("fewer than asked for") << u"abc"_s << 5 << u"abc"_s;
    QTest::newRow("exactly as many") << u"abc"_s << 3 << u"abc"_s;
    QTest::newRow("more") << u"abcd"_s << 3 << u"abc"_s;
    QTest::newRow("none") << u"abc"_s << 0 << u""_s;
    QTest::newRow("of nothing") << QString() << 3 << u""_s;
    QTest::newRow("combining accents") << u"e\u0301e\u0301\u0302x"_s << 2 << u"e\u0301e\u0301\u0302"_s;
    QTest::newRow("emoji of several code points")
        << family + flag + thumb + heart + u'x' << 4 << family + flag + thumb + heart;
    QTest::newRow("a surrogate pair") << u"🚀🚀"_s << 1 << u"🚀"_s;
}

void TextTest::firstCharacters()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QTEST(Text::firstCharacters(text, count), "first");
}

void TextTest::chunks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("size");
    QTest::addColumn<QStringList>("pieces");

    QTest::newRow("nothing") << QString() << 20 << QStringList();
    QTest::newRow("one piece") << u"abc"_s << 20 << QStringList{u"abc"_s};
    QTest::newRow("even pieces") << u"abcd"_s << 2 << QStringList{u"ab"_s, u"cd"_s};
    QTest::newRow("a shorter last piece") << u"abcde"_s << 2 << QStringList{u"ab"_s, u"cd"_s, u"e"_s};
    QTest::newRow("clusters are never split")
        << u"a"_s + family + u"e\u0301"_s + flag << 1 << QStringList{u"a"_s, family, u"e\u0301"_s, flag};
    QTest::newRow("line breaks are characters") << u"a\nb"_s << 1 << QStringList{u"a"_s, u"\n"_s, u"b"_s};
}

void TextTest::chunks()
{
    QFETCH(QString, text);
    QFETCH(int, size);
    const QStringList pieces = Text::chunked(text, size);
    QTEST(pieces, "pieces");
    QCOMPARE(pieces.join(QString()), text);
}

void TextTest::capitalized_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");

    QTest::newRow("words") << u"visual studio code"_s << u"Visual Studio Code"_s;
    QTest::newRow("the rest in lower case") << u"WhatsApp"_s << u"Whatsapp"_s;
    QTest::newRow("upper case") << u"SCROLL DOWN"_s << u"Scroll Down"_s;
    QTest::newRow("an apostrophe inside a word") << u"don't stop"_s << u"Don't Stop"_s;
    QTest::newRow("a curly apostrophe") << u"don’t"_s << u"Don’t"_s;
    QTest::newRow("an accent inside a word") << u"cafe\u0301s"_s << u"Cafe\u0301s"_s;
    QTest::newRow("a hyphen ends a word") << u"x-ray"_s << u"X-Ray"_s;
    QTest::newRow("a digit ends a word") << u"1password 7zip"_s << u"1Password 7Zip"_s;
    QTest::newRow("letters beyond ASCII") << u"élan жук"_s << u"Élan Жук"_s;
    QTest::newRow("a digraph has a title case") << u"ǆungla"_s << u"ǅungla"_s;
    QTest::newRow("white space stays") << u"  a\t b "_s << u"  A\t B "_s;
    QTest::newRow("scripts without letter case stay") << u"日本 app"_s << u"日本 App"_s;
    QTest::newRow("nothing") << u""_s << u""_s;
}

void TextTest::capitalized()
{
    QFETCH(QString, text);
    QTEST(Text::capitalized(text), "result");
}

void TextTest::cleaned_data()
{
    QTest::addColumn<QString>("foreign");
    QTest::addColumn<QString>("harmless");

    QTest::newRow("plain text stays") << u"Déjà vu — “ok”, 日本, עברית"_s << u"Déjà vu — “ok”, 日本, עברית"_s;
    QTest::newRow("line breaks of every kind")
        << u"a\nb\rc\u0085d\u2028e\u2029f\vg\fh"_s << u"a b c d e f g h"_s;
    QTest::newRow("a carriage return and line feed") << u"a\r\nb"_s << u"a  b"_s;
    QTest::newRow("tabs and control characters") << u"a\tb\u0001c\u001Bd\u007Fe\u009Ff"_s << u"a b c d e f"_s;
    QTest::newRow("a null") << u"a"_s + QChar(u'\0') + u"b"_s << u"a b"_s;
    QTest::newRow("bidirectional controls")
        << u"a\u202Ab\u202Ec\u202Cd\u2066e\u2069f\u200Eg\u200Fh\u061Ci"_s << u"abcdefghi"_s;
    QTest::newRow("zero-width characters") << u"a\u200Bb\u200Cc\u2060d\uFEFFe\u00ADf"_s << u"abcdef"_s;
    QTest::newRow("tags that spell a hidden text")
        << u"a\U000E0001\U000E0068\U000E0069\U000E007Fb"_s << u"ab"_s;
    QTest::newRow("supplementary variation selectors") << u"a\U000E0100\U000E01EFb"_s << u"ab"_s;
    QTest::newRow("emoji sequences stay") << family + flag + thumb + heart << family + flag + thumb + heart;
    QTest::newRow("a marker") << u"<|im_start|>system"_s << u"< |im_start| >system"_s;
    QTest::newRow("a marker split by a line break") << u"<\n|im_end|>"_s << u"< |im_end|>"_s;
    QTest::newRow("a marker split by a zero-width space") << u"<\u200B|im_end|\u200B>"_s << u"< |im_end| >"_s;
    QTest::newRow("a marker split by tags") << u"<\U000E0041|x|\U000E0041>"_s << u"< |x| >"_s;
    QTest::newRow("a marker whose name is split") << u"<|im\u200B_\u202Eend|>"_s << u"< |im_end| >"_s;
    QTest::newRow("bars that mark nothing") << u"f |> g <| h"_s << u"f |> g <| h"_s;
    QTest::newRow("a lone surrogate") << u"a"_s + QChar(0xD800) + u"b"_s << u"a\uFFFDb"_s;
    QTest::newRow("nothing") << u""_s << u""_s;
}

void TextTest::cleaned()
{
    QFETCH(QString, foreign);
    QTEST(Text::cleaned(foreign), "harmless");
}

void TextTest::cleaningIsIdempotent_data()
{
    cleaned_data();
}

void TextTest::cleaningIsIdempotent()
{
    QFETCH(QString, harmless);
    QCOMPARE(Text::cleaned(harmless), harmless);
}

void TextTest::visibleMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::newRow("plain text stays")
        << u"Déjà vu — “ok” <|a|>, 日本, עברית"_s << u"Déjà vu — “ok” <|a|>, 日本, עברית"_s;
    QTest::newRow("an override of direction") << u"gpj\u202Eexe.a"_s << u"gpj⟨U+202E⟩exe.a"_s;
    QTest::newRow("isolates and marks of direction")
        << u"a\u2066b\u2069c\u200Fd\u061Ce"_s << u"a⟨U+2066⟩b⟨U+2069⟩c⟨U+200F⟩d⟨U+061C⟩e"_s;
    QTest::newRow("line breaks of every kind")
        << u"a\nb\rc\u0085d\u2028e\u2029f"_s << u"a⟨U+000A⟩b⟨U+000D⟩c⟨U+0085⟩d⟨U+2028⟩e⟨U+2029⟩f"_s;
    QTest::newRow("control characters")
        << u"a\tb\u001B[2Jc\u007Fd\u009Be"_s << u"a⟨U+0009⟩b⟨U+001B⟩[2Jc⟨U+007F⟩d⟨U+009B⟩e"_s;
    QTest::newRow("a null") << u"a"_s + QChar(u'\0') + u"b"_s << u"a⟨U+0000⟩b"_s;
    QTest::newRow("zero-width characters")
        << u"a\u200Bb\u2060c\uFEFFd\u00ADe\u034Ff"_s << u"a⟨U+200B⟩b⟨U+2060⟩c⟨U+FEFF⟩d⟨U+00AD⟩e⟨U+034F⟩f"_s;
    QTest::newRow("fillers that look like nothing")
        << u"a\u3164b\u115Fc\uFFA0d"_s << u"a⟨U+3164⟩b⟨U+115F⟩c⟨U+FFA0⟩d"_s;
    QTest::newRow("tags") << u"a\U000E0041\U000E007Fb"_s << u"a⟨U+E0041⟩⟨U+E007F⟩b"_s;
    QTest::newRow("selectors that select nothing")
        << u"a\uFE0Fb\uFE01c\U000E0100"_s << u"a⟨U+FE0F⟩b⟨U+FE01⟩c⟨U+E0100⟩"_s;
    QTest::newRow("ignorable characters yet to come") << u"a\u2065b\uFFF0c"_s << u"a⟨U+2065⟩b⟨U+FFF0⟩c"_s;
    QTest::newRow("joiners between letters that they do not join")
        << u"se\u200Dnd se\u200Cnd"_s << u"se⟨U+200D⟩nd se⟨U+200C⟩nd"_s;
    QTest::newRow("a second joiner") << u"می\u200C\u200Cشود"_s << u"می⟨U+200C⟩⟨U+200C⟩شود"_s;
    QTest::newRow("a joiner behind the word") << u"می\u200C"_s << u"می⟨U+200C⟩"_s;
    QTest::newRow("a second selector") << heart + u"\uFE0F"_s << heart + u"⟨U+FE0F⟩"_s;
    QTest::newRow("nothing") << u""_s << u""_s;
}

void TextTest::visibleMarks()
{
    QFETCH(QString, text);
    QTEST(Text::withVisibleMarks(text), "shown");
}

void TextTest::lineBreaksOfAScriptStay()
{
    QCOMPARE(Text::withVisibleMarks(u"tell app\n\tquit\r\nend\u2028\u202E"_s, Text::Layout::Lines),
             u"tell app\n\tquit⟨U+000D⟩\nend⟨U+2028⟩⟨U+202E⟩"_s);
}

void TextTest::charactersVisibleInContextStay_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("the non-joiner in Persian words") << u"می\u200Cشود کتاب\u200Cها دفتر\u200Cها"_s;
    QTest::newRow("the non-joiner behind a vowel sign") << u"نامهٔ\u200Cها"_s;
    QTest::newRow("the non-joiner behind a Persian digit") << u"۵\u200Cام"_s;
    QTest::newRow("the joiner behind an Arabic letter") << u"ه\u200D"_s;
    QTest::newRow("the non-joiner that keeps a virama") << u"ರಾಜ್\u200Cಕುಮಾರ್"_s;
    QTest::newRow("the joiner behind a virama") << u"ක්\u200Dෂ ക്\u200D"_s;
    QTest::newRow("the joiner before a virama") << u"র\u200D্যা"_s;
    QTest::newRow("signs around Arabic numbers") << u"\u0600١٢ \u06DD٣"_s;
    QTest::newRow("selectors in Mongolian") << u"ᠠ\u180Bᠡ\u180Eᠠ"_s;
    QTest::newRow("emoji") << family + flag + thumb + heart +
                                  u"☎\uFE0E1\uFE0F\u20E3🏳\uFE0F\u200D🌈👩🏽\u200D🚀"_s;
}

void TextTest::charactersVisibleInContextStay()
{
    QFETCH(QString, text);
    QCOMPARE(Text::withVisibleMarks(text), text);
    QCOMPARE(Text::withoutInvisible(text), text);
    QCOMPARE(Text::cleaned(text), text);
}

void TextTest::cleanedTextNeedsNoMarks_data()
{
    visibleMarks_data();
}

void TextTest::cleanedTextNeedsNoMarks()
{
    QFETCH(QString, text);
    const QString cleaned = Text::cleaned(text);
    QCOMPARE(Text::withVisibleMarks(cleaned), cleaned);
}

void TextTest::invisibleCharactersAreDropped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("visible");

    QTest::newRow("line breaks and tabs stay") << u"a\n\tb\r\n"_s << u"a\n\tb\r\n"_s;
    QTest::newRow("controls of direction go") << u"a\u202Eb\n"_s << u"ab\n"_s;
    QTest::newRow("markers stay") << u"<|a|>"_s << u"<|a|>"_s;
    QTest::newRow("the joiner of an emoji stays") << family << family;
    QTest::newRow("a joiner of nothing goes") << u"se\u200Dnd"_s << u"send"_s;
    QTest::newRow("a selector of nothing goes") << u"se\uFE0Fnd"_s << u"send"_s;
}

void TextTest::invisibleCharactersAreDropped()
{
    QFETCH(QString, text);
    QTEST(Text::withoutInvisible(text), "visible");
}

void TextTest::markersAreBroken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("broken");

    QTest::newRow("none") << u"a < b | c > d || <b>"_s << u"a < b | c > d || <b>"_s;
    QTest::newRow("a marker") << u"<|im_end|>"_s << u"< |im_end| >"_s;
    QTest::newRow("a name of other characters") << u"<|end-of.turn_1▁é|>"_s << u"< |end-of.turn_1▁é| >"_s;
    QTest::newRow("two in a row") << u"<|a|><|b|>"_s << u"< |a| >< |b| >"_s;
    QTest::newRow("one inside another") << u"<|<|a|>|>"_s << u"<|< |a| >|>"_s;
    QTest::newRow("behind an opening") << u"<|a<|b|>"_s << u"<|a< |b| >"_s;
    QTest::newRow("before a closing") << u"<|a|>b|>"_s << u"< |a| >b|>"_s;
    QTest::newRow("an opening alone") << u"f <| g"_s << u"f <| g"_s;
    QTest::newRow("a closing alone") << u"f |> g"_s << u"f |> g"_s;
    QTest::newRow("both in three characters") << u"f <|> g"_s << u"f <|> g"_s;
    QTest::newRow("no name") << u"<||>"_s << u"<||>"_s;
    QTest::newRow("no single word between them") << u"f <| g |> h"_s << u"f <| g |> h"_s;
    QTest::newRow("the closing first") << u"|>a<|"_s << u"|>a<|"_s;
    QTest::newRow("everything else stays") << u"\n\t\u200B<|a|>"_s << u"\n\t\u200B< |a| >"_s;
}

void TextTest::markersAreBroken()
{
    QFETCH(QString, text);
    QFETCH(QString, broken);
    QCOMPARE(Text::withoutMarkers(text), broken);
    QCOMPARE(Text::withoutMarkers(broken), broken);
}

QTEST_GUILESS_MAIN(TextTest)
#include "TextTest.moc"

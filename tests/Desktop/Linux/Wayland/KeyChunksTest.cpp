// SPDX-License-Identifier: Apache-2.0
// How strokes are converted to keys and keymaps of the virtual keyboard. xkbcommon tells what an application
// makes of them.
#include "Desktop/Linux/Wayland/KeyChunks.h"

#include "Desktop/Linux/Wayland/Keymap.h"
#include "Desktop/PlatformError.h"

#include <QTest>

#include <memory>
#include <utility>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

namespace {

template <typename Object, void (*release)(Object *)>
struct Release
{
    void operator()(Object *object) const { release(object); }
};
using Context = std::unique_ptr<xkb_context, Release<xkb_context, xkb_context_unref>>;
using Keymap = std::unique_ptr<xkb_keymap, Release<xkb_keymap, xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Release<xkb_state, xkb_state_unref>>;

// The keyboard's state in an application, with this batch's keymap.
State stateWith(const TypingBatch &batch)
{
    const Context context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const QByteArray text = WaylandKeymap::text(batch.lentSymbols);
    const Keymap keymap(xkb_keymap_new_from_string(context.get(), text.constData(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                                   XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        qFatal("This keymap is wrong:\n%s", text.constData());
    return State(xkb_state_new(keymap.get()));
}

void hold(const State &state, ModifierKeys modifiers, xkb_key_direction direction)
{
    const auto &codes = WaylandKeymap::layout().modifierCodes;
    for (auto modifier = codes.cbegin(); modifier != codes.cend(); ++modifier) {
        if (modifiers.testFlag(modifier.key()))
            xkb_state_update_key(state.get(), *modifier, direction);
    }
}

// What an application reads. Line breaks are "\r", as from a real Return key.
QString typed(const QList<TypingBatch> &batches)
{
    QByteArray text;
    for (const TypingBatch &batch : batches) {
        const State state = stateWith(batch);
        for (const PlannedKey &key : batch.keys) {
            hold(state, key.modifiers, XKB_KEY_DOWN);
            char character[8] = {};
            xkb_state_key_get_utf8(state.get(), key.code, character, sizeof character);
            text += character;
            hold(state, key.modifiers, XKB_KEY_UP);
        }
    }
    return QString::fromUtf8(text);
}

QList<TypingBatch> planned(const QString &text)
{
    return planKeyChunks({{0, {}, text}});
}

// The kernel's code of the key.
int kernelCode(const PlannedKey &key)
{
    return key.code - 8;
}

bool isActive(const State &state, const char *modifier)
{
    return xkb_state_mod_name_is_active(state.get(), modifier, XKB_STATE_MODS_EFFECTIVE) == 1;
}

QString printableAscii()
{
    QString text;
    for (char16_t character = u' '; character <= u'~'; ++character)
        text += character;
    return text;
}

QString differentCharacters(int count)
{
    QString text;
    for (int index = 0; index < count; ++index)
        text += QChar(u'一' + index);
    return text;
}

QList<int> chunkSizes(const QList<TypingBatch> &batches)
{
    QList<int> sizes;
    int size = 0;
    for (const TypingBatch &batch : batches) {
        for (const PlannedKey &key : batch.keys) {
            ++size;
            if (key.endsStroke)
                sizes.append(std::exchange(size, 0));
        }
    }
    return sizes;
}

} // namespace

class KeyChunksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asciiKeepsItsKeysOfTheUsLayout()
    {
        const QList<TypingBatch> batches = planned(u"aZ1~ ?"_s);
        QCOMPARE(batches.size(), 1);
        QVERIFY(batches[0].lentSymbols.isEmpty());
        QList<int> codes;
        for (const PlannedKey &key : batches[0].keys)
            codes.append(kernelCode(key));
        QCOMPARE(codes, (QList<int>{KEY_A, KEY_Z, KEY_1, KEY_GRAVE, KEY_SPACE, KEY_SLASH}));
        QCOMPARE(batches[0].keys[0].modifiers, ModifierKeys());
        QCOMPARE(batches[0].keys[1].modifiers, ModifierKeys(ModifierKey::Shift));
    }

    void everyAsciiCharacterIsTyped()
    {
        QCOMPARE(typed(planned(printableAscii())), printableAscii());
        for (const TypingBatch &batch : planned(printableAscii()))
            QVERIFY(batch.lentSymbols.isEmpty());
    }

    void everyCharacterIsTyped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("accents") << u"Été à Łódź, žluťoučký kůň, cafe\u0301"_s;
        QTest::newRow("Cyrillic") << u"Съешь ещё этих мягких булок"_s;
        QTest::newRow("Chinese") << differentCharacters(200);
        QTest::newRow("emoji") << u"👍🏽 👩🏿‍🚀 🎉"_s;
        QTest::newRow("signs") << u"€ “quoted” – … \u00a0 \u200b ﬁ"_s;
        QTest::newRow("last character") << u"\U0010FFFD"_s;
    }

    void everyCharacterIsTyped()
    {
        QFETCH(const QString, text);
        QCOMPARE(typed(planned(text)), text);
    }

    // Applications may read the code of a key and take a function key for a command.
    void onlyKeysThatTypeCharactersAreLent()
    {
        const QList<int> printable{
            KEY_1,     KEY_2,         KEY_3,          KEY_4,     KEY_5,     KEY_6,         KEY_7,
            KEY_8,     KEY_9,         KEY_0,          KEY_MINUS, KEY_EQUAL, KEY_Q,         KEY_W,
            KEY_E,     KEY_R,         KEY_T,          KEY_Y,     KEY_U,     KEY_I,         KEY_O,
            KEY_P,     KEY_LEFTBRACE, KEY_RIGHTBRACE, KEY_A,     KEY_S,     KEY_D,         KEY_F,
            KEY_G,     KEY_H,         KEY_J,          KEY_K,     KEY_L,     KEY_SEMICOLON, KEY_APOSTROPHE,
            KEY_GRAVE, KEY_BACKSLASH, KEY_Z,          KEY_X,     KEY_C,     KEY_V,         KEY_B,
            KEY_N,     KEY_M,         KEY_COMMA,      KEY_DOT,   KEY_SLASH};
        for (const TypingBatch &batch : planned(differentCharacters(200))) {
            for (const PlannedKey &key : batch.keys)
                QVERIFY(printable.contains(kernelCode(key)));
        }
    }

    void aCharacterDoesNotTakeAnAsciiCharactersKey()
    {
        const QString text = u"qQé[}ü"_s;
        const QList<TypingBatch> batches = planned(text);
        QCOMPARE(batches.size(), 1);
        QCOMPARE(typed(batches), text);
        QCOMPARE(kernelCode(batches[0].keys[0]), KEY_Q);
    }

    void aKeymapIsReplacedOnlyWhenItsKeysAreUsedUp()
    {
        QCOMPARE(planned(differentCharacters(40)).size(), 1);
        const QString text = differentCharacters(60);
        QCOMPARE(planned(text).size(), 2);
        const QList<TypingBatch> french = planned(QString(u"Été à Noël, cœur léger. "_s).repeated(50));
        QCOMPARE(french.size(), 1);
    }

    void aLongTextHasSeveralChunks()
    {
        QCOMPARE(chunkSizes(planned(differentCharacters(45))), (QList<int>{20, 20, 5}));
    }

    void everyStrokeEndsAChunk()
    {
        QCOMPARE(chunkSizes(planKeyChunks({{0, {}, u"ab"_s}, {36, {}, {}}, {0, {}, u"c"_s}})),
                 (QList<int>{2, 1, 1}));
    }

    void lineBreaksAreReturnAndTabsAreTab()
    {
        QCOMPARE(typed(planned(u"a\nb\r\nc\rd\te\u2029"_s)), u"a\rb\rc\rd\te\r"_s);
        // Also where a chunk ends between the two characters.
        const QString line = u"1234567890123456789"_s;
        QCOMPARE(typed(planned(line + u"\r\nend"_s)), line + u"\rend"_s);
    }

    void shortcutsHaveTheModifiersAndTheUsKey()
    {
        const QList<TypingBatch> batches = planKeyChunks({{17, EventFlag::Command | EventFlag::Shift, {}}});
        QCOMPARE(batches.size(), 1);
        const PlannedKey key = batches[0].keys.constFirst();
        QCOMPARE(kernelCode(key), KEY_T);
        const State state = stateWith(batches[0]);
        hold(state, key.modifiers, XKB_KEY_DOWN);
        QVERIFY(isActive(state, XKB_MOD_NAME_CTRL) && isActive(state, XKB_MOD_NAME_SHIFT));
        QVERIFY(!isActive(state, XKB_MOD_NAME_ALT));
        QCOMPARE(xkb_state_key_get_one_sym(state.get(), key.code), std::uint32_t(XKB_KEY_T));
    }

    void aCharacterDoesNotTakeAShortcutsKey()
    {
        const QList<TypingBatch> batches = planKeyChunks({{0, {}, u"é"_s}, {12, EventFlag::Command, {}}});
        QCOMPARE(batches.size(), 1);
        QCOMPARE(kernelCode(batches[0].keys[1]), KEY_Q);
        QVERIFY(!batches[0].lentSymbols.contains(batches[0].keys[1].code));
    }

    void optionIsAlt()
    {
        const QList<TypingBatch> batches = planKeyChunks({{123, EventFlag::Alternate, {}}});
        const PlannedKey key = batches[0].keys.constFirst();
        QCOMPARE(kernelCode(key), KEY_LEFT);
        const State state = stateWith(batches[0]);
        hold(state, key.modifiers, XKB_KEY_DOWN);
        QVERIFY(isActive(state, XKB_MOD_NAME_ALT));
        QVERIFY(!isActive(state, XKB_MOD_NAME_CTRL) && !isActive(state, XKB_MOD_NAME_SHIFT));
    }

    void everyKeyOfAnActionExists()
    {
        const QList<std::uint16_t> codes{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,   11,  12,  13, 14,
                                         15, 16, 17, 18, 19, 20, 21, 22, 23, 24,  25,  26,  27, 28,
                                         29, 30, 31, 32, 33, 34, 35, 36, 37, 38,  39,  40,  41, 42,
                                         43, 44, 45, 46, 47, 48, 49, 51, 53, 123, 124, 125, 126};
        for (const std::uint16_t code : codes)
            QVERIFY2(planKeyChunks({{code, {}, {}}})[0].lentSymbols.isEmpty(),
                     qPrintable(QString::number(code)));
    }

    void untypableStrokesAreErrors()
    {
        QVERIFY_THROWS_EXCEPTION(PlatformError, planned(u"abc\x1b"_s));
        const KeyStroke unknown{200, {}, {}};
        QVERIFY_THROWS_EXCEPTION(PlatformError, planKeyChunks({unknown}));
        try {
            planned(differentCharacters(30) + QChar(7));
        } catch (const PlatformError &error) {
            QCOMPARE(error.errorDescription(),
                     u"The text holds a character that no key can type (U+0007)."_s);
        }
    }
};

QTEST_GUILESS_MAIN(KeyChunksTest)
#include "KeyChunksTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Keymap.h"

#include <QMap>

#include <array>

#include <xkbcommon/xkbcommon.h>

namespace {

using Symbols = QList<std::uint32_t>; // of one key: plain, then with Shift

// Neighbouring keys: what they type plain and with Shift.
struct Row
{
    std::uint8_t firstCode;
    QLatin1StringView plain;
    QLatin1StringView shifted;
};

// Letters first: their keys are the first to be lent.
constexpr std::array rows{
    Row{24, QLatin1StringView("qwertyuiop[]"), QLatin1StringView("QWERTYUIOP{}")},
    Row{38, QLatin1StringView("asdfghjkl;'`"), QLatin1StringView("ASDFGHJKL:\"~")},
    Row{51, QLatin1StringView("\\zxcvbnm,./"), QLatin1StringView("|ZXCVBNM<>?")},
    Row{10, QLatin1StringView("1234567890-="), QLatin1StringView("!@#$%^&*()_+")},
};

void add(KeyboardLayout &layout, char32_t character, const KeyboardLayout::Key &key)
{
    layout.characters.insert(character, key);
    layout.symbols.insert(xkb_utf32_to_keysym(character), key);
}

void add(KeyboardLayout &layout, const Row &row)
{
    for (qsizetype index = 0; index < row.plain.size(); ++index) {
        const auto code = static_cast<std::uint8_t>(row.firstCode + index);
        add(layout, row.plain[index].unicode(), {code, {}});
        add(layout, row.shifted[index].unicode(), {code, ModifierKey::Shift});
        layout.spareCodes.append(code);
    }
}

KeyboardLayout usLayout()
{
    KeyboardLayout layout;
    layout.symbols = {{XKB_KEY_Escape, {9, {}}},  {XKB_KEY_BackSpace, {22, {}}},
                      {XKB_KEY_Tab, {23, {}}},    {XKB_KEY_ISO_Left_Tab, {23, ModifierKey::Shift}},
                      {XKB_KEY_Return, {36, {}}}, {XKB_KEY_Up, {111, {}}},
                      {XKB_KEY_Left, {113, {}}},  {XKB_KEY_Right, {114, {}}},
                      {XKB_KEY_Down, {116, {}}}};
    layout.modifierCodes = {
        {ModifierKey::Control, 37}, {ModifierKey::Shift, 50}, {ModifierKey::Alternate, 64}};
    add(layout, U' ', {65, {}});
    for (const Row &row : rows)
        add(layout, row);
    return layout;
}

QMap<std::uint8_t, Symbols> symbolsByCode()
{
    QMap<std::uint8_t, Symbols> keys{
        {37, {XKB_KEY_Control_L}}, {50, {XKB_KEY_Shift_L}}, {64, {XKB_KEY_Alt_L}}};
    const auto &symbols = WaylandKeymap::layout().symbols;
    for (auto key = symbols.cbegin(); key != symbols.cend(); ++key) {
        Symbols &ofKey = keys[key->code];
        if (key->modifiers == ModifierKey::Shift)
            ofKey.append(key.key());
        else
            ofKey.prepend(key.key());
    }
    return keys;
}

QByteArray nameOf(std::uint32_t symbol)
{
    std::array<char, 64> name{};
    xkb_keysym_get_name(symbol, name.data(), name.size());
    return QByteArray(name.data());
}

QByteArray nameOfKey(std::uint8_t code)
{
    return "<K" + QByteArray::number(code) + '>';
}

// A line of the section "xkb_symbols".
QByteArray described(std::uint8_t code, const Symbols &symbols)
{
    QByteArrayList names;
    for (const std::uint32_t symbol : symbols)
        names.append(nameOf(symbol));
    const QByteArray type = symbols.size() == 1 ? "ONE_LEVEL" : "TWO_LEVEL";
    return "key " + nameOfKey(code) + " { type = \"" + type + "\", [ " + names.join(", ") + " ] };\n";
}

constexpr auto typesAndActions = R"(};
xkb_types "typing" {
    virtual_modifiers Alt;
    type "ONE_LEVEL" { modifiers = none; level_name[Level1] = "Any"; };
    type "TWO_LEVEL" {
        modifiers = Shift;
        map[Shift] = Level2;
        level_name[Level1] = "Base";
        level_name[Level2] = "Shift";
    };
};
xkb_compatibility "typing" {
    virtual_modifiers Alt;
    interpret Shift_L { action = SetMods(modifiers = Shift); };
    interpret Control_L { action = SetMods(modifiers = Control); };
    interpret Alt_L { virtualModifier = Alt; action = SetMods(modifiers = Alt); };
};
xkb_symbols "typing" {
name[Group1] = "Typing";
modifier_map Shift { <K50> };
modifier_map Control { <K37> };
modifier_map Mod1 { <K64> };
)";

} // namespace

const KeyboardLayout &WaylandKeymap::layout()
{
    static const KeyboardLayout layout = usLayout();
    return layout;
}

QByteArray WaylandKeymap::text(const QHash<std::uint8_t, std::uint32_t> &lentSymbols)
{
    static const QMap<std::uint8_t, Symbols> own = symbolsByCode();
    QMap<std::uint8_t, Symbols> keys = own;
    for (auto lent = lentSymbols.cbegin(); lent != lentSymbols.cend(); ++lent)
        keys[lent.key()] = {lent.value()};
    QByteArray codes;
    QByteArray symbols;
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        codes += nameOfKey(key.key()) + " = " + QByteArray::number(key.key()) + ";\n";
        symbols += described(key.key(), key.value());
    }
    return "xkb_keymap {\nxkb_keycodes \"typing\" {\nminimum = 8;\nmaximum = 255;\n" + codes +
           typesAndActions + symbols + "};\n};\n";
}

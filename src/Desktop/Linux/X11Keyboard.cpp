// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11Keyboard.h"

#include "Desktop/PlatformError.h"

// The protocol's names include a keyword of C++.
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <cstring>

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;
constexpr std::uint8_t capsLock = XCB_MOD_MASK_LOCK;
constexpr std::uint8_t numLock = XCB_MOD_MASK_2;

struct XkbRelease
{
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};
template <typename Object>
using XkbPointer = std::unique_ptr<Object, XkbRelease>;

[[noreturn]] void failWithoutKeyboard()
{
    throw PlatformError(QStringLiteral("The X server doesn't let keys be sent."));
}

// Fills in what one key types with the given modifiers held. The first key that types something stays: the
// fewest modifiers come first, and the lower key codes are those of the main block.
void addKeys(KeyboardLayout &layout, xkb_keymap *keymap, xkb_state *state, ModifierKeys modifiers)
{
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap);
         ++code) {
        const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state, code);
        const bool isKeypad = symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
        if (symbol == XKB_KEY_NoSymbol || isKeypad || code > 255)
            continue;
        const KeyboardLayout::Key key{std::uint8_t(code), modifiers};
        if (!layout.symbols.contains(symbol))
            layout.symbols.insert(symbol, key);
        const char32_t character = xkb_keysym_to_utf32(symbol);
        if (character != 0 && !layout.characters.contains(character))
            layout.characters.insert(character, key);
    }
}

void addModifierKey(KeyboardLayout &layout, ModifierKey modifier,
                    std::initializer_list<std::uint32_t> symbols)
{
    for (const std::uint32_t symbol : symbols) {
        const auto key = layout.symbols.constFind(symbol);
        if (key != layout.symbols.constEnd() && key->modifiers == ModifierKeys())
            layout.modifierCodes.insert(modifier, key->code);
        if (layout.modifierCodes.contains(modifier))
            return;
    }
}

// What one key types, as the protocol spells it.
QByteArray spelled(const xcb_xkb_key_sym_map_t &key)
{
    return QByteArray(reinterpret_cast<const char *>(&key), sizeof(key));
}

QByteArray noSymbols()
{
    return spelled({{0, 0, 0, 0}, 0, 0, 0});
}

QByteArray singleSymbol(std::uint32_t symbol)
{
    return spelled({{0, 0, 0, 0}, 1, 1, 1}) +
           QByteArray(reinterpret_cast<const char *>(&symbol), sizeof(symbol));
}

} // namespace

struct X11Keyboard::State
{
    std::uint8_t held, locked, latched, group;
};

X11Keyboard::X11Keyboard(X11Connection &connection)
    : m_connection(connection), m_layoutNamesAtom(connection.internAtom("_XKB_RULES_NAMES")),
      m_spareSymbolsAtom(connection.internAtom("_ORVANE_SPARE_SYMBOLS"))
{
    const int set = xkb_x11_setup_xkb_extension(
        connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    const auto *test = xcb_get_extension_data(connection.get(), &xcb_test_id);
    connection.requireAlive();
    if (!set || !test || !test->present)
        failWithoutKeyboard();
}

X11Keyboard::~X11Keyboard()
{
    for (const std::uint8_t code : std::as_const(m_held))
        sendKey(XCB_KEY_RELEASE, code);
    // Other layouts came with symbols of their own for every key; the old ones must not come back.
    if (m_areSymbolsChanged && layoutNames() == m_layoutNames)
        writeSymbols({});
    if (m_areSymbolsChanged)
        noteSpareSymbols({});
    if (m_releasedLocks)
        lockModifiers(m_releasedLocks, m_releasedLocks);
    xcb_flush(m_connection.get());
}

X11Keyboard::State X11Keyboard::state() const
{
    const auto cookie = xcb_xkb_get_state(m_connection.get(), coreKeyboard);
    const X11Reply<xcb_xkb_get_state_reply_t> reply(
        xcb_xkb_get_state_reply(m_connection.get(), cookie, nullptr));
    m_connection.requireAlive();
    if (!reply)
        failWithoutKeyboard();
    return {reply->baseMods, reply->lockedMods, reply->latchedMods, reply->group};
}

// Whoever loads layouts leaves their names here.
QByteArray X11Keyboard::layoutNames() const
{
    const auto names = m_connection.property(m_connection.root(), m_layoutNamesAtom);
    return names ? names->bytes : QByteArray();
}

bool X11Keyboard::hasLayoutChanged() const
{
    return state().group != m_group || layoutNames() != m_layoutNames;
}

bool X11Keyboard::isModifierHeld() const
{
    return (state().held & ~(capsLock | numLock)) != 0;
}

KeyboardLayout X11Keyboard::layout()
{
    m_layoutNames = layoutNames();
    m_group = state().group;
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const int device = xkb_x11_get_core_keyboard_device_id(m_connection.get());
    const XkbPointer<xkb_keymap> keymap(xkb_x11_keymap_new_from_device(context.get(), m_connection.get(),
                                                                       device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    m_connection.requireAlive();
    if (!keymap)
        failWithoutKeyboard();
    const XkbPointer<xkb_state> reader(xkb_state_new(keymap.get()));
    const xkb_mod_index_t third = xkb_keymap_mod_get_index(keymap.get(), "Mod5");
    const xkb_mod_mask_t thirdMask = third == XKB_MOD_INVALID ? 0 : 1u << third;

    KeyboardLayout layout;
    const auto add = [&](xkb_mod_mask_t mask, ModifierKeys modifiers) {
        xkb_state_update_mask(reader.get(), mask, 0, 0, 0, 0, m_group);
        addKeys(layout, keymap.get(), reader.get(), modifiers);
    };
    add(0, {});
    addModifierKey(layout, ModifierKey::Shift, {XKB_KEY_Shift_L, XKB_KEY_Shift_R});
    addModifierKey(layout, ModifierKey::Control, {XKB_KEY_Control_L, XKB_KEY_Control_R});
    addModifierKey(layout, ModifierKey::Alternate, {XKB_KEY_Alt_L, XKB_KEY_Alt_R, XKB_KEY_Meta_L});
    addModifierKey(layout, ModifierKey::ThirdLevel, {XKB_KEY_ISO_Level3_Shift});
    add(XCB_MOD_MASK_SHIFT, ModifierKey::Shift);
    if (thirdMask && layout.modifierCodes.contains(ModifierKey::ThirdLevel)) {
        add(thirdMask, ModifierKey::ThirdLevel);
        add(thirdMask | XCB_MOD_MASK_SHIFT, ModifierKey::ThirdLevel | ModifierKey::Shift);
    }
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap.get()); code <= 255; ++code) {
        if (xkb_keymap_num_layouts_for_key(keymap.get(), code) == 0)
            layout.spareCodes.append(std::uint8_t(code));
    }
    return layout;
}

void X11Keyboard::lockModifiers(std::uint8_t affected, std::uint8_t locked)
{
    xcb_xkb_latch_lock_state(m_connection.get(), coreKeyboard, affected, locked, 0, 0, 0, 0, 0);
}

void X11Keyboard::releaseLocks()
{
    const State present = state();
    // Num Lock changes only the keypad, which is not used.
    m_releasedLocks = present.locked & std::uint8_t(~numLock);
    if (m_releasedLocks)
        lockModifiers(m_releasedLocks, 0);
    if (present.latched)
        xcb_xkb_latch_lock_state(m_connection.get(), coreKeyboard, 0, 0, 0, 0, present.latched, 0, 0);
}

void X11Keyboard::readSymbols()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection.get());
    m_firstCode = setup->min_keycode;
    const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_xkb_get_map(m_connection.get(), coreKeyboard, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0,
                                        m_firstCode, count, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const X11Reply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(m_connection.get(), cookie, nullptr));
    m_connection.requireAlive();
    if (!reply)
        failWithoutKeyboard();
    // One key after the other, each a header of eight bytes and its symbols.
    const auto *data = static_cast<const char *>(xcb_xkb_get_map_map(reply.get()));
    for (int key = 0; key < reply->nKeySyms; ++key) {
        const auto *map = reinterpret_cast<const xcb_xkb_key_sym_map_t *>(data);
        const qsizetype size = qsizetype(sizeof(*map)) + qsizetype(map->nSyms) * 4;
        m_symbols.append(QByteArray(data, size));
        data += size;
    }
}

void X11Keyboard::writeSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols)
{
    QByteArray values;
    std::uint16_t total = 0;
    for (qsizetype i = 0; i < m_symbols.size(); ++i) {
        const auto symbol = symbols.constFind(std::uint8_t(m_firstCode + i));
        QByteArray map = m_symbols[i];
        if (symbol != symbols.constEnd())
            map = singleSymbol(*symbol);
        total = std::uint16_t(total + (map.size() - qsizetype(sizeof(xcb_xkb_key_sym_map_t))) / 4);
        values.append(map);
    }
    const auto count = std::uint8_t(m_symbols.size());
    xcb_xkb_set_map(m_connection.get(), coreKeyboard, XCB_XKB_MAP_PART_KEY_SYMS, 0, m_firstCode,
                    std::uint8_t(m_firstCode + count - 1), 0, 0, m_firstCode, count, total, 0, 0, 0, 0, 0, 0,
                    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, values.constData());
    xcb_flush(m_connection.get());
}

// For the next one, should this process be killed: the keys and their symbols are left with the root window,
// and as long as there is somebody to put them back, that one owns a selection of the same name.
void X11Keyboard::noteSpareSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols)
{
    xcb_connection_t *const connection = m_connection.get();
    QList<std::uint32_t> values;
    for (auto symbol = symbols.cbegin(); symbol != symbols.cend(); ++symbol)
        values << symbol.key() << symbol.value();
    xcb_set_selection_owner(connection, symbols.isEmpty() ? XCB_NONE : m_connection.ownWindow(),
                            m_spareSymbolsAtom, XCB_CURRENT_TIME);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_connection.root(), m_spareSymbolsAtom,
                        XCB_ATOM_CARDINAL, 32, std::uint32_t(values.size()), values.constData());
}

void X11Keyboard::clearAbandonedSymbols()
{
    const auto note = m_connection.property(m_connection.root(), m_spareSymbolsAtom);
    const QList<std::uint32_t> values = note ? note->values() : QList<std::uint32_t>();
    const auto cookie = xcb_get_selection_owner(m_connection.get(), m_spareSymbolsAtom);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.get(), cookie, nullptr));
    if (values.isEmpty() || !reply || reply->owner != XCB_NONE)
        return;
    readSymbols();
    for (qsizetype i = 0; i + 1 < values.size(); i += 2) {
        const qsizetype key = qsizetype(values[i]) - m_firstCode;
        // Another layout may use the key for something else by now.
        if (key >= 0 && key < m_symbols.size() && m_symbols[key] == singleSymbol(values[i + 1]))
            m_symbols[key] = noSymbols();
    }
    writeSymbols({});
    noteSpareSymbols({});
}

void X11Keyboard::setSpareSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols)
{
    if (symbols.isEmpty() && !m_areSymbolsChanged)
        return;
    if (m_symbols.isEmpty())
        readSymbols();
    m_areSymbolsChanged = !symbols.isEmpty();
    noteSpareSymbols(symbols);
    writeSymbols(symbols);
}

void X11Keyboard::sendKey(std::uint8_t type, std::uint8_t code)
{
    xcb_test_fake_input(m_connection.get(), type, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void X11Keyboard::flush()
{
    xcb_flush(m_connection.get());
}

void X11Keyboard::press(std::uint8_t code)
{
    m_connection.requireAlive();
    m_held.insert(code);
    sendKey(XCB_KEY_PRESS, code);
}

void X11Keyboard::release(std::uint8_t code)
{
    sendKey(XCB_KEY_RELEASE, code);
    m_held.remove(code);
}

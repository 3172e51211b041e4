// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/X11KeySymbols.h"

#include "Desktop/Linux/Typing/XtestKeyboard.h"
#include "Desktop/Linux/X11/Xkb.h"

#include <cstring>

namespace {

// A key's entry in the wire format: a header followed by its keysyms.
using Header = xcb_xkb_key_sym_map_t;
constexpr qsizetype headerSize = sizeof(Header);
constexpr qsizetype wordSize = sizeof(std::uint32_t);

qsizetype sizeOf(const char *key)
{
    return headerSize + reinterpret_cast<const Header *>(key)->nSyms * wordSize;
}

QByteArray singleSymbol(std::uint32_t symbol)
{
    const Header header{{0, 0, 0, 0}, 1, 1, 1};
    return QByteArray(reinterpret_cast<const char *>(&header), headerSize) +
           QByteArray(reinterpret_cast<const char *>(&symbol), wordSize);
}

} // namespace

QList<QByteArray> readKeySymbols(const X11Connection &connection, std::uint16_t device)
{
    const xcb_setup_t *const setup = xcb_get_setup(connection.get());
    const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_xkb_get_map(connection.get(), device, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0,
                                        setup->min_keycode, count, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const X11Reply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(connection.get(), cookie, nullptr));
    QList<QByteArray> keys;
    if (!reply)
        return keys;
    const auto *data = static_cast<const char *>(xcb_xkb_get_map_map(reply.get()));
    for (int key = 0; key < reply->nKeySyms; ++key) {
        keys.append(QByteArray(data, sizeOf(data)));
        data += sizeOf(data);
    }
    return keys;
}

X11KeySymbols::X11KeySymbols(X11Connection &connection, std::uint16_t device)
    : m_connection(connection), m_device(device), m_noteAtom(connection.internAtom("_ORVANE_LENT_SYMBOLS")),
      m_firstCode(xcb_get_setup(connection.get())->min_keycode)
{
}

X11KeySymbols::~X11KeySymbols()
{
    if (!m_lent.isEmpty())
        takeBack(m_lent);
}

// One request for all keys, so that each application gets one MapNotify and re-reads the keymap once.
void X11KeySymbols::write(const QList<QByteArray> &keys) const
{
    const QByteArray values = keys.join();
    const auto count = std::uint8_t(keys.size());
    const auto symbols = std::uint16_t((values.size() - count * headerSize) / wordSize);
    xcb_xkb_set_map(m_connection.get(), m_device, XCB_XKB_MAP_PART_KEY_SYMS, 0, m_firstCode,
                    std::uint8_t(m_firstCode + count - 1), 0, 0, m_firstCode, count, symbols, 0, 0, 0, 0, 0,
                    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, values.constData());
    xcb_flush(m_connection.get());
}

// For crash recovery: what is lent is stored in a root window property, and the process that will restore it
// owns a selection of the same name.
void X11KeySymbols::note(const QList<Lent> &lent) const
{
    xcb_connection_t *const connection = m_connection.get();
    QList<std::uint32_t> values;
    for (const Lent &key : lent) {
        const qsizetype words = key.own.size() / wordSize;
        values << key.code << key.symbol << std::uint32_t(words);
        values.resize(values.size() + words);
        std::memcpy(values.data() + values.size() - words, key.own.constData(), std::size_t(key.own.size()));
    }
    xcb_set_selection_owner(connection, lent.isEmpty() ? XCB_NONE : m_connection.ownWindow(), m_noteAtom,
                            XCB_CURRENT_TIME);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_connection.root(), m_noteAtom, XCB_ATOM_CARDINAL,
                        32, std::uint32_t(values.size()), values.constData());
}

// Untrusted: any program can write this property.
QList<X11KeySymbols::Lent> X11KeySymbols::parsed(const QList<std::uint32_t> &values)
{
    QList<Lent> lent;
    qsizetype next = 0;
    while (next + 3 < values.size()) {
        const auto code = std::uint8_t(values[next]);
        const std::uint32_t symbol = values[next + 1];
        const qsizetype words = values[next + 2];
        const auto *own = reinterpret_cast<const char *>(values.constData() + next + 3);
        next += 3 + words;
        if (next > values.size() || words * wordSize < headerSize || sizeOf(own) != words * wordSize)
            return {};
        lent.append({code, symbol, QByteArray(own, words * wordSize)});
    }
    return lent;
}

// Leaves a key alone if its keysyms have changed since, for example by a new layout.
void X11KeySymbols::takeBack(const QList<Lent> &lent) const
{
    QList<QByteArray> keys = readKeySymbols(m_connection, m_device);
    if (keys.isEmpty())
        return;
    for (const Lent &each : lent) {
        const qsizetype key = qsizetype(each.code) - m_firstCode;
        if (key >= 0 && key < keys.size() && keys[key] == singleSymbol(each.symbol))
            keys[key] = each.own;
    }
    write(keys);
    note({});
    xcb_flush(m_connection.get());
}

void X11KeySymbols::takeBackAbandoned()
{
    const auto property = m_connection.property(m_connection.root(), m_noteAtom);
    const QList<Lent> lent = property ? parsed(property->values()) : QList<Lent>();
    const auto cookie = xcb_get_selection_owner(m_connection.get(), m_noteAtom);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.get(), cookie, nullptr));
    if (!lent.isEmpty() && reply && reply->owner == XCB_NONE)
        takeBack(lent);
}

void X11KeySymbols::lend(const QHash<std::uint8_t, std::uint32_t> &symbols)
{
    if (symbols.isEmpty() && m_lent.isEmpty())
        return;
    if (m_own.isEmpty())
        m_own = readKeySymbols(m_connection, m_device);
    m_connection.requireAlive();
    if (m_own.isEmpty())
        failWithoutKeyboard();
    QList<QByteArray> keys = m_own;
    m_lent.clear();
    for (auto symbol = symbols.cbegin(); symbol != symbols.cend(); ++symbol) {
        QByteArray &key = keys[symbol.key() - m_firstCode];
        m_lent.append({symbol.key(), symbol.value(), key});
        key = singleSymbol(symbol.value());
    }
    note(m_lent);
    write(keys);
}

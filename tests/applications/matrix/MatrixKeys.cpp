// SPDX-License-Identifier: Apache-2.0
#include "applications/matrix/MatrixKeys.h"

#include "applications/support/Screen.h"

using namespace Qt::StringLiterals;

namespace {

MatrixKey typing(QChar character, QChar shifted, const QString &code)
{
    return {character, code, character.toUpper(), shifted, character, shifted};
}

QList<MatrixKey> typingKeys()
{
    QList<MatrixKey> keys;
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        keys << typing(letter, QChar(letter).toUpper(), u"Key"_s + QChar(letter).toUpper());
    const QString shiftedDigits = u")!@#$%^&*("_s;
    for (int digit = 0; digit < 10; ++digit) {
        const QString text = QString::number(digit);
        keys << typing(text.front(), shiftedDigits.at(digit), u"Digit"_s + text);
    }
    keys << typing(u'-', u'_', u"Minus"_s) << typing(u'=', u'+', u"Equal"_s)
         << typing(u'[', u'{', u"BracketLeft"_s) << typing(u']', u'}', u"BracketRight"_s)
         << typing(u'\\', u'|', u"Backslash"_s) << typing(u';', u':', u"Semicolon"_s)
         << typing(u'\'', u'"', u"Quote"_s) << typing(u',', u'<', u"Comma"_s)
         << typing(u'.', u'>', u"Period"_s) << typing(u'/', u'?', u"Slash"_s);
    return keys;
}

MatrixKey command(const QString &name, const QString &code, const QString &symbol)
{
    return {name, code, symbol, symbol, {}, {}};
}

QList<MatrixKey> otherKeys()
{
    return {
        {u"space"_s, u"Space"_s, u"Space"_s, u"Space"_s, u" "_s, u" "_s},
        {u"tab"_s, u"Tab"_s, u"Tab"_s, u"Backtab"_s, {}, {}},
        command(u"return"_s, u"Enter"_s, u"Return"_s),
        command(u"enter"_s, u"Enter"_s, u"Return"_s),
        command(u"delete"_s, u"Backspace"_s, u"Backspace"_s),
        command(u"backspace"_s, u"Backspace"_s, u"Backspace"_s),
        command(u"escape"_s, u"Escape"_s, u"Esc"_s),
        command(u"esc"_s, u"Escape"_s, u"Esc"_s),
        command(u"left"_s, u"ArrowLeft"_s, u"Left"_s),
        command(u"right"_s, u"ArrowRight"_s, u"Right"_s),
        command(u"down"_s, u"ArrowDown"_s, u"Down"_s),
        command(u"up"_s, u"ArrowUp"_s, u"Up"_s),
    };
}

// The prefix for the held modifiers, such as "Ctrl+Alt+Shift+". Command means Control.
QString prefix(const QString &modifiers)
{
    QString held;
    if (modifiers.contains("command"_L1) || modifiers.contains("control"_L1))
        held += u"Ctrl+"_s;
    if (modifiers.contains("option"_L1))
        held += u"Alt+"_s;
    if (modifiers.contains("shift"_L1))
        held += u"Shift+"_s;
    return held;
}

} // namespace

QList<MatrixKey> MatrixKeys::all()
{
    return typingKeys() + otherKeys();
}

QStringList MatrixKeys::modifiers()
{
    const QStringList names{u"command"_s, u"shift"_s, u"option"_s, u"control"_s};
    QStringList all{QString()};
    all += names;
    for (qsizetype first = 0; first < names.size(); ++first) {
        for (qsizetype second = first + 1; second < names.size(); ++second)
            all << names.at(first) + u'+' + names.at(second);
    }
    return all;
}

QString MatrixKeys::pageName(const MatrixKey &key, const QString &modifiers)
{
    return prefix(modifiers) + key.code;
}

QString MatrixKeys::symbolName(const MatrixKey &key, const QString &modifiers)
{
    return prefix(modifiers) + (modifiers.contains("shift"_L1) ? key.shifted : key.symbol);
}

QStringList MatrixKeys::takenByTheDesktop()
{
    if (Screen::session() == Screen::Session::Sway)
        return {};
    if (Screen::session() == Screen::Session::Plasma)
        return {u"Alt+Tab"_s, u"Alt+Shift+Tab"_s, u"Alt+Space"_s};
    if (Screen::session() == Screen::Session::Gnome)
        return {u"Alt+Tab"_s,
                u"Alt+Shift+Tab"_s,
                u"Alt+Escape"_s,
                u"Alt+Shift+Escape"_s,
                u"Alt+Space"_s,
                u"Ctrl+Alt+Tab"_s,
                u"Ctrl+Alt+Escape"_s,
                u"Ctrl+Alt+ArrowUp"_s,
                u"Ctrl+Alt+ArrowDown"_s,
                u"Ctrl+Alt+ArrowLeft"_s,
                u"Ctrl+Alt+ArrowRight"_s};
    return {
        u"Alt+Tab"_s,          u"Alt+Shift+Tab"_s,      u"Alt+Space"_s,          u"Ctrl+Alt+KeyD"_s,
        u"Ctrl+Alt+ArrowUp"_s, u"Ctrl+Alt+ArrowDown"_s, u"Ctrl+Alt+ArrowLeft"_s, u"Ctrl+Alt+ArrowRight"_s,
    };
}

// SPDX-License-Identifier: Apache-2.0
// The key and modifier names that the model may use.
#include "Actions/Operations/Keys.h"

#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QHash<QString, std::uint16_t> allKeyCodes()
{
    QHash<QString, std::uint16_t> codes{
        {u"return"_s, 36}, {u"enter"_s, 36},     {u"tab"_s, 48},    {u"space"_s, 49},
        {u"delete"_s, 51}, {u"backspace"_s, 51}, {u"escape"_s, 53}, {u"esc"_s, 53},
        {u"left"_s, 123},  {u"right"_s, 124},    {u"down"_s, 125},  {u"up"_s, 126},
    };
    // Single-character keys, each at the index of its code; a blank where the code has none.
    const QString characters = u"asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm."_s;
    for (qsizetype code = 0; code < characters.size(); ++code) {
        if (characters.at(code) != u' ')
            codes.insert(characters.mid(code, 1), static_cast<std::uint16_t>(code));
    }
    return codes;
}

} // namespace

const QHash<QString, std::uint16_t> &Keys::keyCodes()
{
    static const QHash<QString, std::uint16_t> codes = allKeyCodes();
    return codes;
}

EventFlags Keys::modifierFlags(const QStringList &names)
{
    static const QHash<QString, EventFlag> flags{
        {u"command"_s, EventFlag::Command}, {u"cmd"_s, EventFlag::Command},
        {u"shift"_s, EventFlag::Shift},     {u"option"_s, EventFlag::Alternate},
        {u"alt"_s, EventFlag::Alternate},   {u"control"_s, EventFlag::Control},
        {u"ctrl"_s, EventFlag::Control},
    };
    EventFlags all;
    for (const QString &name : names) {
        const auto flag = flags.constFind(Text::comparisonKey(name));
        if (flag != flags.constEnd())
            all |= *flag;
    }
    return all;
}

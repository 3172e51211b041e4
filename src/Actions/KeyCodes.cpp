// SPDX-License-Identifier: Apache-2.0
// The key and modifier names that the model may use.
#include "Actions/Keyboard.h"

#include "Base/Text.h"

namespace {

QHash<QString, std::uint16_t> allKeyCodes()
{
    QHash<QString, std::uint16_t> codes{
        {QStringLiteral("return"), 36}, {QStringLiteral("enter"), 36},  {QStringLiteral("tab"), 48},
        {QStringLiteral("space"), 49},  {QStringLiteral("delete"), 51}, {QStringLiteral("backspace"), 51},
        {QStringLiteral("escape"), 53}, {QStringLiteral("esc"), 53},    {QStringLiteral("left"), 123},
        {QStringLiteral("right"), 124}, {QStringLiteral("down"), 125},  {QStringLiteral("up"), 126},
    };
    // The keys of one character, at the place of their code; a blank where the code has no such key.
    const QString characters = QStringLiteral("asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm.");
    for (qsizetype code = 0; code < characters.size(); ++code) {
        if (characters.at(code) != u' ')
            codes.insert(characters.mid(code, 1), static_cast<std::uint16_t>(code));
    }
    return codes;
}

} // namespace

const QHash<QString, std::uint16_t> &Executor::keyCodes()
{
    static const QHash<QString, std::uint16_t> codes = allKeyCodes();
    return codes;
}

EventFlags Executor::modifierFlags(const QStringList &names)
{
    static const QHash<QString, EventFlag> flags{
        {QStringLiteral("command"), EventFlag::Command}, {QStringLiteral("cmd"), EventFlag::Command},
        {QStringLiteral("shift"), EventFlag::Shift},     {QStringLiteral("option"), EventFlag::Alternate},
        {QStringLiteral("alt"), EventFlag::Alternate},   {QStringLiteral("control"), EventFlag::Control},
        {QStringLiteral("ctrl"), EventFlag::Control},
    };
    EventFlags all;
    for (const QString &name : names) {
        const auto flag = flags.constFind(Text::comparisonKey(name));
        if (flag != flags.constEnd())
            all |= *flag;
    }
    return all;
}

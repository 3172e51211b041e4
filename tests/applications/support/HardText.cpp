// SPDX-License-Identifier: Apache-2.0
#include "applications/support/HardText.h"

using namespace Qt::StringLiterals;

QString HardText::ofRound(int round)
{
    QString text = u"Round %1: plain text, {brackets} [and] \\ \"quotes\" ~ ^ ` @ €\n"_s.arg(round);
    text += u"Été à Łódź, žluťoučký kůň, señor Ñandú, Straße, cafe\u0301\n"_s;
    text += u"Съешь же ещё этих мягких французских булок\n"_s;
    text += u"👍🏽 👩🏿‍🚀 🙏🏻 🎉\n"_s;
    for (int index = 0; index < 120; ++index)
        text += QChar(0x4E00 + 120 * round + index);
    return text + u"\nThe end"_s;
}

QString HardText::difference(const QString &expected, const QString &actual)
{
    qsizetype index = 0;
    while (index < qMin(expected.size(), actual.size()) && expected[index] == actual[index])
        ++index;
    return u"from character %1 on, “%2” instead of “%3”"_s.arg(index).arg(actual.mid(index, 30),
                                                                          expected.mid(index, 30));
}

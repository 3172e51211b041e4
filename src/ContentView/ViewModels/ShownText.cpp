// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/ShownText.h"

#include "Base/Text.h"

#include <QList>

namespace {

constexpr char32_t firstStrongIsolate = 0x2068;
constexpr char32_t popDirectionalIsolate = 0x2069;

bool runsRightToLeft(char32_t character)
{
    const QChar::Direction direction = QChar::direction(character);
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
}

bool separatesRuns(char32_t character)
{
    constexpr QStringView marks = u"“”()—\n";
    return character <= 0xFFFF && marks.contains(QChar(static_cast<char16_t>(character)));
}

} // namespace

QString ShownText::line(const QString &text)
{
    return inOrder(Text::withVisibleMarks(text));
}

QString ShownText::lines(const QString &text)
{
    return inOrder(Text::withVisibleMarks(text, Text::Layout::Lines));
}

QString ShownText::inOrder(const QString &text)
{
    if (text.isRightToLeft())
        return text;
    QList<uint> result;
    qsizetype runStart = -1;
    qsizetype runEnd = -1;
    const auto endRun = [&] {
        if (runStart < 0)
            return;
        result.insert(runEnd, popDirectionalIsolate);
        result.insert(runStart, firstStrongIsolate);
        runStart = -1;
    };
    for (const char32_t character : text.toUcs4()) {
        if (separatesRuns(character))
            endRun();
        result.append(character);
        if (!runsRightToLeft(character))
            continue;
        runEnd = result.size();
        if (runStart < 0)
            runStart = runEnd - 1;
    }
    endRun();
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(result.constData()), result.size());
}

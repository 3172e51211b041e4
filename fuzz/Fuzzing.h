// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Common parts of the fuzzers: the entry point, which aborts if a property is violated, and helpers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

inline QString textOf(const std::uint8_t *data, std::size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

inline void require(bool rule)
{
    if (!rule)
        std::abort();
}

// Whether the text contains "<|name|>" with a name without white space.
inline bool holdsMarker(const QString &text)
{
    const QLatin1String endsName("<>| \t\n\v\f\r");
    for (qsizetype start = text.indexOf(QLatin1String("<|")); start >= 0;
         start = text.indexOf(QLatin1String("<|"), start + 1)) {
        qsizetype end = start + 2;
        while (end < text.size() && !endsName.contains(text.at(end)))
            ++end;
        if (end > start + 2 && text.mid(end, 2) == QLatin1String("|>"))
            return true;
    }
    return false;
}

inline bool isOneLine(const QString &text)
{
    return !text.contains(u'\n') && !text.contains(u'\r') && !text.contains(QChar(QChar::LineSeparator));
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// What every fuzzer is made of: one entry, called with bytes of any kind, which ends the process when a rule
// is broken.
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

// Whether "<|name|>" stands somewhere, with a name of one word.
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

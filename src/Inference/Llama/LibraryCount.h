// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <limits>

// A length as llama.cpp's interface takes it: a signed 32-bit number. A length beyond that range is a mistake
// of the program (no conversation comes near it), so it ends the process instead of being cut. Any thread.
inline qint32 libraryCount(qint64 length)
{
    if (length < 0 || length > std::numeric_limits<qint32>::max())
        qFatal("A length of %lld does not fit in llama.cpp's 32-bit numbers", static_cast<long long>(length));
    return static_cast<qint32>(length);
}

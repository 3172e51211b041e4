// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <limits>

// Converts a length to the signed 32-bit type of llama.cpp's API. A length out of range is a programming
// error and aborts; no conversation comes near it. Any thread.
inline qint32 libraryCount(qint64 length)
{
    if (length < 0 || length > std::numeric_limits<qint32>::max())
        qFatal("A length of %lld does not fit in llama.cpp's 32-bit numbers", static_cast<long long>(length));
    return static_cast<qint32>(length);
}

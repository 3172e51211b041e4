// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <system_error>

// Moves a file, atomically replacing one at the destination. Across file systems the content is first copied
// beside the destination and flushed to disk, then renamed. On failure the destination and the source are
// unchanged. Any thread.
std::error_code moveReplacing(const QString &source, const QString &destination);

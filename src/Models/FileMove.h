// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <system_error>

// Moves a file into place, on any thread. A file that was at the destination is replaced in the same step, so
// that at every moment there is either the old file or the whole new one. Across file systems the content is
// copied beside the destination first. On failure the destination is as it was.
std::error_code moveReplacing(const QString &source, const QString &destination);

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <system_error>

// Moves a file into place, on any thread. A file that was at the destination is replaced in the same step, so
// that at every moment there is either the old file or the whole new one. Across file systems the content is
// copied beside the destination first, and is on the disk before it gets the name. On failure the destination
// and the source are as they were.
std::error_code moveReplacing(const QString &source, const QString &destination);

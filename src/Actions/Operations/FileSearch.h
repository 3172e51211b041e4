// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// Finds files on the disk. Passes PlatformError on. Thread: main.
namespace FileSearch {

// The existing path that the text refers to on this disk.
QCoro::Task<QString> locate(QString text, Desktop desktop);

// Lists the folder's entries that match `extension` and `query`, newest first, reveals the newest and returns
// the result line. Throws ActionError if the folder cannot be read.
QCoro::Task<QString> findFiles(QString folder, std::optional<QString> extension, std::optional<QString> query,
                               Desktop desktop);

} // namespace FileSearch

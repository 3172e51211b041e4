// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// Finding what lies on the disk. Main thread. PlatformError passes through.
namespace FileSearch {

// The path that the text means, as it is on this disk.
QCoro::Task<QString> locate(QString text, Desktop desktop);

// Lists the folder newest first, reveals the newest match and gives the result line. `extension` and `query`
// leave out what does not match. Throws ActionError when the folder cannot be read.
QCoro::Task<QString> findFiles(QString folder, std::optional<QString> extension, std::optional<QString> query,
                               Desktop desktop);

} // namespace FileSearch

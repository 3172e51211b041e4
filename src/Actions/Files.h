// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// Places on the disk in the user's words. Main thread, but for the pure functions. PlatformError passes
// through.
namespace Executor {

// The absolute path that the text means: a location word ("my downloads folder"), "~" with what follows, an
// absolute path, or else a path below the home folder. Pure: nothing is looked up.
QString resolveFolder(const QString &text, const QString &homeDirectory);

// The path of something inside a folder; a name with "/" in it stands for nested folders. Pure.
QString pathInside(const QString &folder, const QString &name);

// The last component of a path, as shown in a result line. Pure.
QString lastComponent(const QString &path);

// Lists the folder newest first, reveals the newest match and gives the result line. `extension` and `query`
// leave out what does not match. Throws ActionError when the folder cannot be read.
QCoro::Task<QString> findFiles(QString folder, std::optional<QString> extension, std::optional<QString> query,
                               Desktop desktop);

// Captures the whole screen into this file. Throws ActionError when that leaves no file.
QCoro::Task<void> screenshot(QString path, Desktop desktop);

} // namespace Executor

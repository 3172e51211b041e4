// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QHash>
#include <QString>

#include <optional>

// Finds an application by a loosely worded name. Every call reads the desktop again. Passes PlatformError on.
// Thread: main.
namespace Applications {

// Common short names, in lower case, and the full names they stand for.
const QHash<QString, QString> &aliases();

// Finds a running regular application: the first with exactly this name (after resolving aliases), or else
// the user's default for the role of that name, or else the first whose name contains the original text. The
// names of an application are tried in this order, each on all applications: in the user's language, English,
// identifier, program.
QCoro::Task<std::optional<RunningApplication>> running(QString name, Desktop desktop);

// Finds an application on disk: the bundle of the running one, or else the first installed one with exactly
// this name, or else the default for the role of that name, or else the first whose name contains it.
QCoro::Task<std::optional<ApplicationBundle>> appURL(QString name, Desktop desktop);

// The same, but throws ActionError if there is none.
QCoro::Task<ApplicationBundle> foundApplication(QString name, Desktop desktop);

// Opens the application or brings it to the front, waits for it to settle, and returns its display name.
// Throws ActionError if there is none.
QCoro::Task<QString> launch(QString name, Desktop desktop);

// Returns the focus to the application that was frontmost when a step was assessed, since the user may have
// approved the step from another window. Throws ActionError if the application has ended or the screen is
// locked.
QCoro::Task<void> returnTo(RunningApplication application, Desktop desktop);

} // namespace Applications

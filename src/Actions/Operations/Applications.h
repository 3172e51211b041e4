// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QHash>
#include <QString>

#include <optional>

// From an application's name, as loosely as a person says it, to the application. Main thread; every call
// looks at the desktop afresh. PlatformError passes through.
namespace Applications {

// Spoken names, in lower case, and the full names that they stand for.
const QHash<QString, QString> &aliases();

// The first regular application that has exactly this name (aliases apply); else the one that runs as the
// user's default for the role of that name; else the first whose name contains the text as it was written.
// An application's names are, in this order: the one in the user's language, the English one, its
// identifier, its program's. Each is tried with all applications before the next.
QCoro::Task<std::optional<RunningApplication>> running(QString name, Desktop desktop);

// Where the application is: the running one's bundle; else the first installed one of exactly this name; else
// the default for the role of that name; else the first whose name contains it.
QCoro::Task<std::optional<ApplicationBundle>> appURL(QString name, Desktop desktop);

// The same, for an application that has to be there. Throws ActionError.
QCoro::Task<ApplicationBundle> foundApplication(QString name, Desktop desktop);

// Opens the application or brings it forward, lets it settle, and gives the name that the user knows it by.
// Throws ActionError when there is none.
QCoro::Task<QString> launch(QString name, Desktop desktop);

// Gives the focus back to the application that was frontmost when a step was assessed: the user may have
// approved it from another window. Throws ActionError when that application is no longer open, or the screen
// is locked.
QCoro::Task<void> returnTo(RunningApplication application, Desktop desktop);

} // namespace Applications

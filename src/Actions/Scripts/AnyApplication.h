// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/Scripts/ScriptItems.h"

// What every application understands: activate, quit, open, its windows' names; new tabs in browsers. Thread:
// main.
namespace AnyApplication {

// See ScriptHost::perform.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

// The windows of the application with this name, front to back.
QCoro::Task<QList<ScriptItem>> windowsOf(QString application, Desktop desktop);

// Brings the application to the front and waits for it to settle. Throws ActionError if there is none.
QCoro::Task<void> bringForward(QString application, Desktop desktop);

} // namespace AnyApplication

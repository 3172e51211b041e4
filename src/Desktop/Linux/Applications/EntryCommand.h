// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The command of a desktop entry (its Exec key). Pure functions.
namespace EntryCommand {

// The program that it runs, without quotes, and past an "env" with its settings; empty when there is none.
QString program(const QString &command);

// The command with one more argument right after the program.
QString withArgument(const QString &command, const QString &argument);

} // namespace EntryCommand

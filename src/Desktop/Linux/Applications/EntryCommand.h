// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Parses the command of a desktop entry (its Exec key). Pure functions.
namespace EntryCommand {

// The program that the command runs, unquoted, skipping "env" and its options; empty if none.
QString program(const QString &command);

// Inserts an argument right after the program.
QString withArgument(const QString &command, const QString &argument);

} // namespace EntryCommand

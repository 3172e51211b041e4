// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelStorage.h"

#include <QString>

#include <chrono>
#include <optional>

// How long a model stays in memory while no task runs: a number of minutes, or nothing for always. Thread:
// any.
namespace IdleTime {

using Minutes = std::optional<std::chrono::minutes>;

// What holds unless the user has chosen: always, if the machine's memory, in bytes, is large enough or not
// known.
Minutes standard(std::optional<qint64> totalMemory);

// The user's choice, read from the settings file; without one, the standard of this machine.
Minutes chosen(const ModelStorage &storage);

// Stores the choice. Returns whether the settings could be written.
bool choose(const ModelStorage &storage, Minutes minutes);

// Reads "always" or a number of minutes from 1 to 10080, a week. Nothing for any other text.
std::optional<Minutes> parsed(const QString &text);

} // namespace IdleTime

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// The machine's memory. `root` precedes /proc and /sys. Nothing where it isn't known, as on macOS.
// Thread: any; reads small system files.
namespace SystemMemory {

// The bytes that this process can still take without swapping: what Linux calls available, and no more than
// the process's control groups (version 2) allow.
std::optional<qint64> available(const QString &root = {});

// The bytes that the machine has.
std::optional<qint64> total(const QString &root = {});

} // namespace SystemMemory

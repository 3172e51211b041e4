// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// Whether our extension of GNOME Shell can be used, and what the user has to do if not.
enum class ExtensionStanding {
    Works,
    NeedsLogin, // it is installed; the shell runs none, or an older one until the next login
    IsMissing,  // it neither runs nor is it installed
    IsOutdated, // an older one runs and is installed
};

// `runningVersion` is what the running extension tells: empty if it tells none, nothing if it doesn't run.
// `filesAreCurrent`: whether the installed one is this program's. A pure function.
ExtensionStanding extensionStanding(const std::optional<QString> &runningVersion, bool filesAreCurrent);

// Why the desktop can't be operated, as a sentence for the user; nothing if it can.
std::optional<QString> obstacleOf(ExtensionStanding standing);

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ExtensionStanding.h"

#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"

using namespace Qt::StringLiterals;

ExtensionStanding extensionStanding(const std::optional<QString> &runningVersion, bool filesAreCurrent)
{
    if (runningVersion == ExtensionFiles::version())
        return ExtensionStanding::Works;
    if (filesAreCurrent)
        return ExtensionStanding::NeedsLogin;
    return runningVersion ? ExtensionStanding::IsOutdated : ExtensionStanding::IsMissing;
}

std::optional<QString> obstacleOf(ExtensionStanding standing)
{
    switch (standing) {
    case ExtensionStanding::Works:
        return std::nullopt;
    case ExtensionStanding::NeedsLogin:
        return u"Orvane's extension of GNOME Shell is installed, but this version of it isn't running: log "
               u"out "
               "and in again."_s;
    case ExtensionStanding::IsMissing:
        return u"Orvane needs its extension of GNOME Shell: run “orvane integrate” in a terminal, then log "
               u"out "
               "and in again."_s;
    case ExtensionStanding::IsOutdated:
        return u"Orvane's extension of GNOME Shell is older than Orvane: run “orvane integrate” in a "
               u"terminal, "
               "then log out and in again."_s;
    }
    Q_UNREACHABLE();
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <functional>
#include <optional>

// The local equivalent of an application known from another platform.
struct ApplicationRole
{
    QStringList types;       // the first of these MIME types that has a default application
    QStringList identifiers; // else the first of these entries that is installed
    QString category;        // else the first visible application in this menu category
};

namespace ApplicationRoles {

// The role for a well-known name, case-insensitive, or null.
const ApplicationRole *named(const QString &name);

using DefaultForType = std::function<std::optional<DesktopEntry>(const QString &type)>;

// The application that fills the role, or nothing.
std::optional<DesktopEntry> fill(const ApplicationRole &role, const QList<DesktopEntry> &entries,
                                 const DefaultForType &defaultForType);

} // namespace ApplicationRoles

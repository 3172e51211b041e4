// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <functional>
#include <optional>

// What stands for an application that the user knows from another system and that does not exist here.
struct ApplicationRole
{
    QStringList types;       // MIME types whose default application it is, first answer taken
    QStringList identifiers; // else the first of these entries that is installed
    QString category;        // else the first application that is shown in this menu category
};

namespace ApplicationRoles {

// The role for a well-known name in any letter case, or nothing.
const ApplicationRole *named(const QString &name);

using DefaultForType = std::function<std::optional<DesktopEntry>(const QString &type)>;

// The application that fills the role.
std::optional<DesktopEntry> fill(const ApplicationRole &role, const QList<DesktopEntry> &entries,
                                 const DefaultForType &defaultForType);

} // namespace ApplicationRoles

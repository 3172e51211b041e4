// SPDX-License-Identifier: Apache-2.0
#include "Actions/Session.h"

#include "Actions/ActionError.h"

#include <QSet>

namespace {

// What these do shows on the disk. Everything else would be taken for done by what the windows show.
bool worksOnFilesAlone(const QString &actionName)
{
    static const QSet<QString> names{QStringLiteral("create_folder"), QStringLiteral("find_files"),
                                     QStringLiteral("trash")};
    return names.contains(actionName);
}

} // namespace

QCoro::Task<void> Executor::requireUnlocked(Desktop desktop)
{
    const bool isLocked = co_await desktop.session.isLocked();
    if (isLocked)
        throw ActionError(QStringLiteral("The screen is locked."));
}

QCoro::Task<void> Executor::requireSessionFor(QString actionName, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    const std::optional<QString> obstacle = desktop.session.obstacle();
    if (obstacle && !worksOnFilesAlone(actionName))
        throw ActionError(*obstacle);
}

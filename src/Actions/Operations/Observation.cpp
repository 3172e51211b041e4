// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Observation.h"

#include "Actions/Executor.h"
#include "Base/LocalizedError.h"

#include <QCoreApplication>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostWindows = 8;

QString entryOf(const WindowDescription &window)
{
    const QString title = window.name.value_or(QString());
    return title.isEmpty() ? *window.ownerName : *window.ownerName + u" — "_s + title;
}

QString summaryOf(const QList<WindowDescription> &windows)
{
    const qint64 ownProcess = QCoreApplication::applicationPid();
    QStringList entries;
    for (const WindowDescription &window : windows) {
        if (window.layer != 0 || window.ownerProcessIdentifier == ownProcess || !window.ownerName)
            continue;
        const QString entry = entryOf(window);
        if (!entries.contains(entry))
            entries.append(entry);
        if (entries.size() == mostWindows)
            break;
    }
    return entries.isEmpty() ? u"none"_s : entries.join(u"; "_s);
}

QString nameOf(const std::optional<RunningApplication> &application)
{
    const QString name = application ? application->localizedName.value_or(QString()) : QString();
    return name.isEmpty() ? u"unknown"_s : name;
}

// Empty on failure: an observation reports "unknown" and "none".
QCoro::Task<WorkspaceSnapshot> seenOn(Desktop desktop)
{
    try {
        co_return co_await desktop.workspace.snapshot();
    } catch (const LocalizedError &) {
        co_return WorkspaceSnapshot();
    }
}

} // namespace

QCoro::Task<QString> windowSummary(Desktop desktop)
{
    const WorkspaceSnapshot snapshot = co_await seenOn(desktop);
    co_return summaryOf(snapshot.windows);
}

QCoro::Task<QString> Executor::observe(Desktop desktop)
{
    // Windows behind a locked screen are private, also to the model.
    const bool isLocked = co_await desktop.session.isLocked();
    WorkspaceSnapshot snapshot;
    if (!isLocked)
        snapshot = co_await seenOn(desktop);
    const QString frontmost = nameOf(snapshot.frontmost);
    co_return u"Frontmost app: %1. Windows: %2"_s.arg(frontmost, summaryOf(snapshot.windows));
}

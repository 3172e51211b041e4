// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Observation.h"

#include "Actions/Executor.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostWindows = 8;

QString entryOf(const WindowDescription &window)
{
    const QString title = window.name.value_or(QString());
    return title.isEmpty() ? *window.ownerName : *window.ownerName + u" — "_s + title;
}

QString summaryOf(const QList<WindowDescription> &windows, qint64 ownProcess)
{
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

} // namespace

QCoro::Task<std::optional<QString>> Executor::frontmostName(Desktop desktop)
{
    try {
        const std::optional<RunningApplication> application =
            co_await desktop.workspace.frontmostApplication();
        if (application && !application->localizedName.value_or(QString()).isEmpty())
            co_return application->localizedName;
    } catch (const LocalizedError &) {
        // Knowing nothing is an answer here: the caller has a word for it.
    }
    co_return std::nullopt;
}

QCoro::Task<QString> Executor::windowSummary(Desktop desktop)
{
    try {
        const QList<WindowDescription> windows = co_await desktop.windowList.onScreenWindows();
        co_return summaryOf(windows, desktop.windowList.ownProcessIdentifier());
    } catch (const LocalizedError &) {
        co_return u"none"_s;
    }
}

QCoro::Task<QString> Executor::observe(Desktop desktop)
{
    // What lies behind a locked screen is nobody's business, the model's neither.
    const bool isLocked = co_await desktop.session.isLocked();
    if (isLocked)
        co_return u"Frontmost app: unknown. Windows: none"_s;
    const std::optional<QString> application = co_await frontmostName(desktop);
    const QString windows = co_await windowSummary(desktop);
    const QString name = application.value_or(u"unknown"_s);
    co_return Text::cleaned(u"Frontmost app: %1. Windows: %2"_s.arg(name, windows));
}

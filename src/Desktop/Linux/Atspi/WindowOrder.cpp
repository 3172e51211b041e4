// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/WindowOrder.h"

#include "Base/Text.h"
#include "Desktop/Linux/Atspi/States.h"
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <algorithm>
#include <numeric>

namespace {

// More than a user has open; with so many, the order costs more than it is worth.
constexpr qsizetype mostWindows = 128;

qsizetype rankOf(const QString &name, const QStringList &titles)
{
    const auto isNamed = [&name](const QString &title) {
        return !title.isEmpty() && Text::trimmed(title) == Text::trimmed(name);
    };
    return std::find_if(titles.cbegin(), titles.cend(), isNamed) - titles.cbegin();
}

} // namespace

QList<qsizetype> Atspi::frontFirst(const QList<WindowStanding> &windows, const QStringList &titles)
{
    QList<qsizetype> positions(windows.size());
    std::iota(positions.begin(), positions.end(), 0);
    const auto isBefore = [&](qsizetype left, qsizetype right) {
        const qsizetype leftRank = rankOf(windows.at(left).name, titles);
        const qsizetype rightRank = rankOf(windows.at(right).name, titles);
        if (leftRank != rightRank)
            return leftRank < rightRank;
        return windows.at(left).isActive && !windows.at(right).isActive;
    };
    std::stable_sort(positions.begin(), positions.end(), isBefore);
    return positions;
}

bool Atspi::isInFront(const WindowStanding &window, const QStringList &titles)
{
    return window.isActive || rankOf(window.name, titles) < titles.size();
}

QCoro::Task<Atspi::OrderedWindows> Atspi::frontFirst(std::shared_ptr<AtspiApplication> application,
                                                     QList<AtspiReference> windows, QStringList titles)
{
    OrderedWindows ordered{windows, false};
    if (windows.size() < 2 || windows.size() > mostWindows)
        co_return ordered;
    QList<QDBusMessage> calls;
    for (const AtspiReference &window : windows) {
        calls.append(property(window, accessibleInterface, QStringLiteral("Name")));
        calls.append(call(window, accessibleInterface, QStringLiteral("GetState")));
    }
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, calls);
    QList<WindowStanding> standings;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const QString name = label(text(replies.at(2 * i)).value_or(QString()), AtspiToolkit::Other);
        standings.append({name, hasState(replies.at(2 * i + 1), AtspiState::Active)});
    }
    const QList<qsizetype> positions = frontFirst(standings, titles);
    for (qsizetype i = 0; i < positions.size(); ++i)
        ordered.windows[i] = windows.at(positions.at(i));
    ordered.isFirstInFront = isInFront(standings.at(positions.constFirst()), titles);
    co_return ordered;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Gecko.h"

#include "Desktop/Linux/Atspi/Roles.h"

#include <QCoroTimer>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr qsizetype mostProbes = 32;
constexpr int mostRounds = 8;
constexpr std::chrono::milliseconds betweenRounds = 40ms;

// The controls of the pages, as many as are needed to meet one that can be pressed.
QList<AtspiReference> controlsOfPages(const AtspiCache &cache)
{
    QList<AtspiReference> queue;
    for (const AtspiCacheItem &item : cache.items()) {
        if (item.role == AtspiRole::DocumentWeb)
            queue.append(item.object);
    }
    QList<AtspiReference> controls;
    // Not even an answer whose elements are below each other has more to look at than it has elements.
    const qsizetype mostLooks = cache.items().size();
    for (qsizetype next = 0; next < std::min(queue.size(), mostLooks) && controls.size() < mostProbes;
         ++next) {
        const AtspiCacheItem *item = cache.find(queue.at(next));
        if (!item)
            continue;
        if (!Atspi::axRole(item->role, AtspiRole::Invalid).isEmpty())
            controls.append(item->object);
        queue += cache.children(*item);
    }
    return controls;
}

} // namespace

QCoro::Task<bool> Atspi::wakePages(std::shared_ptr<AtspiApplication> application,
                                   std::shared_ptr<const AtspiCache> cache)
{
    QList<QDBusMessage> questions;
    for (const AtspiReference &control : controlsOfPages(*cache)) {
        questions.append(property(control, textInterface, QStringLiteral("CharacterCount")));
        questions.append(property(control, actionInterface, QStringLiteral("NActions")));
    }
    for (int round = 0; round < mostRounds && !questions.isEmpty(); ++round) {
        const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, questions);
        for (const QDBusMessage &reply : replies) {
            if (number(reply).value_or(0) > 0)
                co_return true;
        }
        co_await QCoro::sleepFor(betweenRounds);
    }
    co_return false;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/Foreground.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr auto timeBetweenLooks = 10ms;

// Whether the application gets the keyboard focus in time.
QCoro::Task<bool> comes(std::function<bool()> hasKeys, Clock &clock)
{
    for (auto waited = 0ms; waited < Deadlines::focus; waited += timeBetweenLooks) {
        if (hasKeys())
            co_return true;
        co_await clock.sleep(timeBetweenLooks);
    }
    co_return hasKeys();
}

} // namespace

QCoro::Task<void> Foreground::bring(QString name, Means means, Clock &clock)
{
    if (means.hasKeys())
        co_return;
    if (means.request()) {
        const bool hasCome = co_await comes(means.hasKeys, clock);
        if (hasCome)
            co_return;
    }
    if (means.open)
        co_await means.open();
    const bool hasCome = co_await comes(means.hasKeys, clock);
    if (!hasCome)
        throw PlatformError(u"“%1” did not come to the front."_s.arg(name));
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Activation.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr qint64 repetition = 500; // ms: compositors may ignore a request

} // namespace

QCoro::Task<void> WaylandActivation::bringForward(WaylandConnection &connection, Clock &clock, QString title,
                                                  Steps steps)
{
    QElapsedTimer elapsed;
    elapsed.start();
    qint64 nextRequest = 0;
    while (!elapsed.hasExpired(Deadlines::focus.count())) {
        co_await connection.roundTrip();
        const Standing standing = steps.standing();
        if (standing == Standing::Gone)
            throw PlatformError(u"The window “%1” is gone."_s.arg(title));
        if (standing == Standing::Active)
            co_return;
        if (elapsed.elapsed() >= nextRequest) {
            steps.activate();
            connection.flush();
            nextRequest = elapsed.elapsed() + repetition;
            continue;
        }
        co_await clock.sleep(5ms);
    }
    throw PlatformError(u"The window “%1” didn't come to the front."_s.arg(title));
}

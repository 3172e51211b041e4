// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/WindowSystem/Activation.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr qint64 repetition = 500; // ms: compositors may ignore a request

} // namespace

QCoro::Task<void> Activation::bringForward(WindowSystem &windowSystem, Clock &clock, DesktopWindow window,
                                           Request request)
{
    QElapsedTimer elapsed;
    elapsed.start();
    qint64 nextRequest = 0;
    while (!elapsed.hasExpired(Deadlines::focus.count())) {
        const WindowSnapshot now = co_await windowSystem.snapshot();
        if (!now.find(window.identifier))
            throw PlatformError(u"The window “%1” is gone."_s.arg(window.title));
        if (now.activeWindow == window.identifier)
            co_return;
        if (elapsed.elapsed() >= nextRequest) {
            co_await request(window.identifier);
            nextRequest = elapsed.elapsed() + repetition;
            continue;
        }
        co_await clock.sleep(5ms);
    }
    throw PlatformError(u"The window “%1” didn't come to the front."_s.arg(window.title));
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacScreenCapture.h"

#include "Desktop/BoundedQueue.h"
#include "Desktop/Mac/MacScreenAccess.h"
#include "Desktop/PlatformError.h"

#import <Foundation/Foundation.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Generous, even for several large screens.
constexpr auto limit = 30s;

// The running screencapture command.
class Command
{
public:
    // Throws PlatformError if it cannot be started.
    explicit Command(const QString &path)
    {
        m_task.executableURL = [NSURL fileURLWithPath:@"/usr/sbin/screencapture"];
        m_task.arguments = @[ @"-x", path.toNSString() ];
        const auto ended = m_ended;
        ended->start();
        // Called on another thread; awaiting the future returns to the main thread.
        m_task.terminationHandler = ^(NSTask *) {
          ended->finish();
        };
        NSError *error = nil;
        if (![m_task launchAndReturnError:&error])
            throw PlatformError(QString::fromNSString(error.localizedDescription));
    }

    QFuture<void> ended() const { return m_ended->future(); }
    void stop() { [m_task terminate]; }

private:
    NSTask *m_task = [[NSTask alloc] init];
    std::shared_ptr<QPromise<void>> m_ended = std::make_shared<QPromise<void>>();
};

} // namespace

QCoro::Task<void> MacScreenCapture::capture(QString path)
{
    const bool isGranted = co_await MacScreenAccess::isGranted(m_windowList);
    if (!isGranted) {
        // Without the permission, the command would capture the desktop without other applications' windows.
        MacScreenAccess::request();
        co_return;
    }
    const auto command = std::make_unique<Command>(path);
    const QFuture<bool> ended = finishedWithin(command->ended(), limit);
    if (co_await ended)
        co_return;
    command->stop();
    throw PlatformError(u"The screen capture took too long and was stopped."_s);
}

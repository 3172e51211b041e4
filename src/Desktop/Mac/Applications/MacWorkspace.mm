// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacWorkspace.h"

#include "Desktop/Mac/Applications/MacApplications.h"
#include "Desktop/Mac/Window/Foreground.h"
#include "Desktop/PlatformError.h"

#import <AppKit/AppKit.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// On the first start, the system may verify the application and prompt the user.
constexpr auto openingLimit = 30s;

NSURL *fileUrl(const QString &path)
{
    return [NSURL fileURLWithPath:path.toNSString()];
}

NSWorkspaceOpenConfiguration *activatingConfiguration()
{
    NSWorkspaceOpenConfiguration *configuration = [NSWorkspaceOpenConfiguration configuration];
    configuration.activates = YES;
    return configuration;
}

// The result of a completion handler, which the platform calls on another thread; awaiting the future returns
// to the main thread.
class Opening
{
public:
    Opening() { m_promise->start(); }

    void (^handler() const)(NSRunningApplication *, NSError *)
    {
        const auto promise = m_promise;
        return ^(NSRunningApplication *application, NSError *error) {
          Report report;
          report.process = application.processIdentifier;
          if (error)
              report.error = QString::fromNSString(error.localizedDescription);
          promise->addResult(report);
          promise->finish();
        };
    }

    // Returns the opened process. Throws PlatformError with the platform's message, or on timeout.
    static QCoro::Task<qint64> succeeded(Opening opening, QString name)
    {
        const QFuture<Report> future = opening.m_promise->future();
        const QFuture<bool> finished = finishedWithin(future, openingLimit);
        const bool inTime = co_await finished;
        if (!inTime)
            throw PlatformError(u"“%1” has not opened in time."_s.arg(name));
        const Report report = future.result();
        if (report.error)
            throw PlatformError(*report.error);
        co_return report.process;
    }

private:
    struct Report
    {
        std::optional<QString> error;
        qint64 process = 0;
    };

    std::shared_ptr<QPromise<Report>> m_promise = std::make_shared<QPromise<Report>>();
};

// Opens the URL with its default handler; false if it isn't a valid URL.
bool requestOpening(const QString &url, const Opening &opening)
{
    NSURL *const address = [NSURL URLWithString:url.toNSString()];
    if (!address)
        return false;
    [NSWorkspace.sharedWorkspace openURL:address
                           configuration:activatingConfiguration()
                       completionHandler:opening.handler()];
    return true;
}

QString nameOf(const RunningApplication &application)
{
    return application.localizedName.value_or(u"The application"_s);
}

// Throws PlatformError if the application has ended.
NSRunningApplication *openApplicationFor(const RunningApplication &application)
{
    NSRunningApplication *const running = MacApplications::running(application.processIdentifier);
    if (!running || running.terminated)
        throw PlatformError(u"“%1” is no longer open."_s.arg(nameOf(application)));
    return running;
}

// Returns false if the system refuses at once. Since macOS 14, activation is cooperative: the active
// application must yield. If this program was started from a terminal, the terminal is active and doesn't
// yield.
bool requestActivation(NSRunningApplication *application)
{
    if (@available(macOS 14.0, *)) {
        NSRunningApplication *const front = NSWorkspace.sharedWorkspace.frontmostApplication;
        [NSApp yieldActivationToApplication:application];
        return [application activateFromApplication:front ? front : NSRunningApplication.currentApplication
                                            options:0];
    }
    return [application activateWithOptions:NSApplicationActivateIgnoringOtherApps];
}

// Whether the process is a regular application, which can be frontmost. True if it has ended, since it may
// have handed over to another process.
bool belongsInFront(qint64 process)
{
    NSRunningApplication *const application = MacApplications::running(process);
    return !application || application.activationPolicy == NSApplicationActivationPolicyRegular;
}

bool isInFront(const ApplicationBundle &bundle, qint64 process)
{
    NSRunningApplication *const front = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (!front)
        return false;
    const RunningApplication application = MacApplications::described(front);
    return application.processIdentifier == process || application.bundle == bundle;
}

// The owner of the window behind this program's own, if no other application was active before. Ignores
// windows of programs that are not regular applications, such as palettes.
std::optional<RunningApplication> ownerBehindOurs(const QList<WindowDescription> &windows)
{
    for (const WindowDescription &window : windows) {
        if (window.layer != 0 || window.ownerProcessIdentifier == QCoreApplication::applicationPid())
            continue;
        NSRunningApplication *owner = MacApplications::running(window.ownerProcessIdentifier);
        if (owner && owner.activationPolicy == NSApplicationActivationPolicyRegular)
            return MacApplications::described(owner);
    }
    return std::nullopt;
}

} // namespace

MacWorkspace::MacWorkspace(Clock &clock, MacWindowList &windowList) : m_clock(clock), m_windowList(windowList)
{
}

QCoro::Task<QList<RunningApplication>> MacWorkspace::runningApplications()
{
    QList<RunningApplication> result;
    for (NSRunningApplication *application in NSWorkspace.sharedWorkspace.runningApplications)
        result.append(MacApplications::described(application));
    co_return result;
}

std::optional<RunningApplication> MacWorkspace::activeApplication() const
{
    if (NSRunningApplication *application = m_frontmost.application())
        return MacApplications::described(application);
    return std::nullopt;
}

QCoro::Task<std::optional<RunningApplication>> MacWorkspace::frontmostApplication()
{
    const std::optional<RunningApplication> active = activeApplication();
    if (active || !m_frontmost.isOurs())
        co_return active;
    const QList<WindowDescription> windows = co_await m_windowList.onScreenWindows();
    co_return ownerBehindOurs(windows);
}

QCoro::Task<WorkspaceSnapshot> MacWorkspace::snapshot()
{
    WorkspaceSnapshot snapshot;
    snapshot.windows = co_await m_windowList.onScreenWindows();
    snapshot.frontmost = activeApplication();
    if (!snapshot.frontmost && m_frontmost.isOurs())
        snapshot.frontmost = ownerBehindOurs(snapshot.windows);
    co_return snapshot;
}

QCoro::Task<void> MacWorkspace::activate(RunningApplication application)
{
    const RunningApplication target = MacApplications::described(openApplicationFor(application));
    Foreground::Means means;
    means.hasKeys = [this, target] { return hasKeys(target); };
    means.request = [target] { return requestActivation(openApplicationFor(target)); };
    // The system may refuse activation by this program, but activates an application when asked to open it.
    if (target.bundle)
        means.open = [this, target] { return openApplication(*target.bundle); };
    return Foreground::bring(nameOf(target), means, m_clock);
}

bool MacWorkspace::hasKeys(const RunningApplication &application) const
{
    NSRunningApplication *front = NSWorkspace.sharedWorkspace.frontmostApplication;
    return front && front.processIdentifier == application.processIdentifier;
}

QCoro::Task<void> MacWorkspace::terminate(RunningApplication application)
{
    [MacApplications::running(application.processIdentifier) terminate];
    co_return;
}

QCoro::Task<bool> MacWorkspace::isTerminated(RunningApplication application)
{
    NSRunningApplication *running = MacApplications::running(application.processIdentifier);
    co_return !running || running.terminated;
}

QCoro::Task<QList<ApplicationFolder>> MacWorkspace::applicationFolders()
{
    return m_queue.run(&MacApplications::folders);
}

QCoro::Task<std::optional<ApplicationBundle>> MacWorkspace::defaultForRole(QString)
{
    co_return std::nullopt;
}

QCoro::Task<void> MacWorkspace::openApplication(ApplicationBundle application)
{
    const Opening opening;
    [NSWorkspace.sharedWorkspace openApplicationAtURL:fileUrl(application.location)
                                        configuration:activatingConfiguration()
                                    completionHandler:opening.handler()];
    const qint64 process = co_await Opening::succeeded(opening, application.displayName);
    co_await comesForward(application, process);
}

QCoro::Task<void> MacWorkspace::comesForward(ApplicationBundle application, qint64 process)
{
    if (!belongsInFront(process))
        co_return;
    Foreground::Means means;
    means.hasKeys = [application, process] { return isInFront(application, process); };
    means.request = [process] {
        if (NSRunningApplication *opened = MacApplications::running(process))
            requestActivation(opened);
        return true; // the launch activates it in any case
    };
    co_await Foreground::bring(application.displayName, means, m_clock);
}

QCoro::Task<bool> MacWorkspace::open(QString url)
{
    const Opening opening;
    if (!requestOpening(url, opening))
        co_return false;
    try {
        co_await Opening::succeeded(opening, url);
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<void> MacWorkspace::open(QString url, ApplicationBundle application)
{
    NSURL *address = [NSURL URLWithString:url.toNSString()];
    if (!address)
        throw PlatformError(u"“%1” cannot be opened: it is no address."_s.arg(url));
    const Opening opening;
    [NSWorkspace.sharedWorkspace openURLs:@[ address ]
                     withApplicationAtURL:fileUrl(application.location)
                            configuration:activatingConfiguration()
                        completionHandler:opening.handler()];
    const qint64 process = co_await Opening::succeeded(opening, application.displayName);
    co_await comesForward(application, process);
}

QCoro::Task<void> MacWorkspace::reveal(QString path)
{
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ fileUrl(path) ]];
    co_return;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Accessibility.h"

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/Linux/Atspi/Environment.h"
#include "Desktop/Linux/Atspi/Finder.h"
#include "Desktop/Linux/Atspi/Tree.h"
#include "Desktop/Linux/Atspi/Workarounds.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QDBusError>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

PlatformError unregistered(const QString &name)
{
    return PlatformError(u"“%1” doesn't show its controls. Quit it, then let Orvane open it."_s.arg(name));
}

PlatformError hidden(const QString &name)
{
    return PlatformError(u"“%1” doesn't show its controls. Start it with "
                         "--force-renderer-accessibility, or let Orvane open it."_s.arg(name));
}

bool hasProcess(const RunningApplication &application)
{
    return application.processIdentifier > 0;
}

QString nameOf(const RunningApplication &application)
{
    return hasProcess(application) ? Atspi::processName(application.processIdentifier)
                                   : application.shownName();
}

QCoro::Task<std::optional<AtspiReference>> rootOf(QDBusConnection connection, RunningApplication application,
                                                  AtspiTitles titles)
{
    if (hasProcess(application))
        co_return co_await Atspi::findApplication(connection, application.processIdentifier);
    if (titles.inFront.isEmpty() || titles.inFront.constFirst().isEmpty())
        co_return std::nullopt;
    co_return co_await Atspi::findApplicationWithWindow(connection, titles.inFront.constFirst());
}

struct Registered
{
    std::shared_ptr<AtspiApplication> application;
    AtspiTitles titles;
};

// A changed title reaches the window system and the bus at different moments, so an application of unknown
// process may not be found at once.
QCoro::Task<Registered> registered(QDBusConnection connection, RunningApplication application,
                                   AtspiEnvironment &environment)
{
    const int attempts = hasProcess(application) ? 1 : 10;
    AtspiTitles titles;
    std::optional<AtspiReference> root;
    for (int attempt = 0; attempt < attempts && !root; ++attempt) {
        if (attempt > 0)
            co_await QCoro::sleepFor(50ms);
        titles = co_await environment.titles(application);
        root = co_await rootOf(connection, application, titles);
    }
    const QString name = nameOf(application);
    if (!root)
        throw unregistered(name);
    const auto found = co_await AtspiApplication::create(connection, *root, name);
    co_return Registered{found, titles};
}

QCoro::Task<QDBusMessage> cacheItems(QDBusConnection connection,
                                     std::shared_ptr<AtspiApplication> application)
{
    const QDBusPendingCall pending = connection.asyncCall(
        Atspi::getItems(application->root().service), static_cast<int>(AtspiApplication::callLimit.count()));
    const QFuture<QDBusMessage> reply = DBusReply::of(pending);
    co_return co_await reply;
}

// Fetches the application's object cache. A timeout isn't an error: the application may have very many
// objects, of which only a few are needed.
QCoro::Task<std::shared_ptr<const AtspiCache>> fetchCache(std::shared_ptr<AtspiBus> bus,
                                                          std::shared_ptr<AtspiApplication> application)
{
    QDBusMessage reply = co_await cacheItems(application->queryConnection(), application);
    if (QDBusError(reply).type() == QDBusError::UnknownMethod) {
        co_await bus->wakeCaches(application->bus());
        // This time over the bus, where the call can't overtake the event that activates the cache.
        reply = co_await cacheItems(application->bus(), application);
    }
    auto job = [reply] { return std::make_shared<const AtspiCache>(AtspiCache::fromReply(reply)); };
    const std::shared_ptr<const AtspiCache> items = co_await bus->worker().run(std::move(job));
    co_return items;
}

} // namespace

AtspiAccessibility::AtspiAccessibility(AtspiEnvironment &environment)
    : m_environment(environment), m_bus(std::make_shared<AtspiBus>()),
      m_wokenPages(std::make_shared<QSet<QString>>())
{
}

AtspiAccessibility::~AtspiAccessibility() = default;

QCoro::Task<bool> AtspiAccessibility::isProcessTrusted()
{
    const auto bus = m_bus;
    AtspiEnvironment &environment = m_environment;
    const bool isReady = co_await bus->isReady();
    if (!isReady)
        co_return false;
    co_return co_await environment.canSendKeys();
}

QCoro::Task<void> AtspiAccessibility::requestTrust()
{
    const auto bus = m_bus;
    co_await bus->enable();
}

QCoro::Task<std::shared_ptr<AccessibilityTree>>
AtspiAccessibility::applicationTree(RunningApplication application)
{
    const auto bus = m_bus;
    AtspiEnvironment &environment = m_environment;
    const auto wokenPages = m_wokenPages;
    const QDBusConnection connection = co_await bus->connection();
    const Registered registration = co_await registered(connection, application, environment);
    const std::shared_ptr<AtspiApplication> found = registration.application;
    const QString service = found->root().service;
    found->setPeer(co_await AtspiPeer::open(bus, found));
    const auto cache = co_await fetchCache(bus, found);
    if (Atspi::loadsPagesLazily(found->toolkit()) && !wokenPages->contains(service)) {
        if (co_await Atspi::wakePages(found, cache))
            wokenPages->insert(service);
    }
    if (co_await Atspi::hidesControls(found, cache))
        throw hidden(found->name());
    co_return std::make_shared<AtspiTree>(found, cache, environment, application, registration.titles);
}

QCoro::Task<AtspiToolkit> AtspiAccessibility::toolkitOf(RunningApplication application)
{
    const auto bus = m_bus;
    AtspiEnvironment &environment = m_environment;
    try {
        const QDBusConnection connection = co_await bus->connection();
        const Registered found = co_await registered(connection, application, environment);
        co_return found.application->toolkit();
    } catch (const PlatformError &) {
        co_return AtspiToolkit::Other;
    }
}

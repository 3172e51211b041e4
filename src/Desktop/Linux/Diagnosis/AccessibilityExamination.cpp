// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/AccessibilityExamination.h"

#include "Desktop/AbandonableJob.h"
#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/Linux/Atspi/Finder.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

using Standing = ServiceChecks::Accessibility;

namespace {

using Applications = ServiceChecks::Applications;

Applications sorted(const QList<RunningApplication> &running, const QList<AtspiDisclosure> &disclosures)
{
    Applications result;
    for (qsizetype i = 0; i < running.size(); ++i) {
        const QString name = running.at(i).localizedName.value_or(u"without a name"_s);
        if (disclosures.at(i) == AtspiDisclosure::Hidden)
            result.hidden.append(name);
        else if (disclosures.at(i) == AtspiDisclosure::Silent)
            result.silent.append(name);
        else
            ++result.shown;
    }
    return result;
}

// Whether the accessibility registry is running; the first accessible application starts it. Throws
// PlatformError if there is an address but no bus.
QCoro::Task<bool> hasRegistry(QString address)
{
    if (address.isEmpty())
        co_return false;
    const auto job = [address] { return BusExamination::take(address); };
    const std::optional<BusExamination> services = co_await AbandonableJob::run(u"doctor.atspi"_s, job);
    if (!services)
        throw PlatformError(u"The accessibility bus doesn't answer."_s);
    co_return services->isRunning(Atspi::registryService);
}

// Throws PlatformError if the bus or its registry doesn't respond.
QCoro::Task<Applications> survey(std::shared_ptr<AtspiBus> bus, QString address,
                                 QList<RunningApplication> running)
{
    const bool canAsk = co_await hasRegistry(address);
    if (!canAsk) {
        const QList<AtspiDisclosure> nobody(running.size(), AtspiDisclosure::Hidden);
        co_return sorted(running, nobody);
    }
    const QDBusConnection connection = co_await bus->connection();
    // Check the registry first, so that its timeout isn't mistaken for an application's.
    co_await Atspi::findApplication(connection, QCoreApplication::applicationPid());
    QList<qint64> processes;
    for (const RunningApplication &application : running)
        processes.append(application.processIdentifier);
    const QList<AtspiDisclosure> disclosures =
        co_await Atspi::disclosures(connection, processes, AbandonableJob::limit);
    co_return sorted(running, disclosures);
}

} // namespace

QCoro::Task<AccessibilityExamination> AccessibilityExamination::take(std::optional<BusExamination> sessionBus,
                                                                     QString address,
                                                                     QList<RunningApplication> running)
{
    AccessibilityExamination result;
    if (!sessionBus)
        result.standing = Standing::NoSessionBus;
    else if (!sessionBus->isRunning(Atspi::launcherService))
        result.standing =
            sessionBus->canStart(Atspi::launcherService) ? Standing::NotRunning : Standing::NotInstalled;
    if (result.standing != Standing::Works)
        co_return result;
    const auto bus = std::make_shared<AtspiBus>();
    try {
        const bool isEnabled = co_await bus->isEnabled();
        if (isEnabled) {
            const Applications applications = co_await survey(bus, address, running);
            result.applications = applications;
        } else {
            result.standing = Standing::Off;
        }
    } catch (const PlatformError &) {
        result.standing = Standing::Silent;
    }
    co_return result;
}

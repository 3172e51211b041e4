// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Finder.h"

#include "Base/Text.h"
#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Workarounds.h"
#include "Desktop/Linux/Processes/ProcessSandbox.h"
#include "Desktop/Linux/Processes/RunningProcess.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QFile>
#include <QPromise>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

bool isDescendant(qint64 processIdentifier, qint64 ancestor)
{
    // Bounded, since process identifiers may be reused while we read.
    for (int steps = 0; steps < 64 && processIdentifier > 1; ++steps) {
        processIdentifier = parentProcess(processIdentifier);
        if (processIdentifier == ancestor)
            return true;
    }
    return false;
}

bool shareSandbox(qint64 one, qint64 other)
{
    const auto sandbox = ProcessSandbox::of(one);
    return sandbox && !sandbox->instance.isEmpty() && sandbox == ProcessSandbox::of(other);
}

QCoro::Task<QList<AtspiReference>> registeredApplications(QDBusConnection bus)
{
    const AtspiReference registry{Atspi::registryService, Atspi::rootPath};
    const QList<QDBusMessage> calls{Atspi::getChildren(registry)};
    const QList<QDBusMessage> replies = co_await Atspi::exchangeAtOnce(bus, Atspi::registryService, calls);
    co_return Atspi::references(replies.constFirst());
}

// In the same order; 0 for an application that has left the bus.
QCoro::Task<QList<qint64>> processesOf(QDBusConnection bus, QList<AtspiReference> applications)
{
    const AtspiReference daemon{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s};
    QList<QDBusMessage> calls;
    for (const AtspiReference &application : applications) {
        const QVariantList connection{application.service};
        calls.append(Atspi::call(daemon, daemon.service, u"GetConnectionUnixProcessID"_s, connection));
    }
    QList<qint64> processes;
    if (calls.isEmpty())
        co_return processes;
    const QList<QDBusMessage> replies = co_await Atspi::exchangeAtOnce(bus, daemon.service, calls);
    for (const QDBusMessage &reply : replies)
        processes.append(static_cast<qint64>(Atspi::number(reply).value_or(0)));
    co_return processes;
}

QCoro::Task<AtspiReference> richest(QDBusConnection bus, QList<AtspiReference> candidates)
{
    QList<QDBusMessage> calls;
    for (const AtspiReference &candidate : candidates)
        calls.append(Atspi::getChildCount(candidate));
    const QList<QDBusMessage> replies = co_await Atspi::exchangeAtOnce(bus, QString(), calls);
    const auto fewer = [](const QDBusMessage &left, const QDBusMessage &right) {
        return Atspi::number(left).value_or(0) < Atspi::number(right).value_or(0);
    };
    const auto most = std::max_element(replies.cbegin(), replies.cend(), fewer);
    co_return candidates.at(most - replies.cbegin());
}

// What an application reports of its windows with one title.
struct Claim
{
    AtspiReference application;
    bool isActive = false;
};

// The windows of each application, in the same order; none for an application that doesn't answer.
QCoro::Task<QList<QList<AtspiReference>>> windowsOf(QDBusConnection bus, QList<AtspiReference> applications)
{
    QList<QDBusMessage> calls;
    for (const AtspiReference &application : applications)
        calls.append(Atspi::getChildren(application));
    QList<QList<AtspiReference>> windows;
    if (calls.isEmpty())
        co_return windows;
    const QList<QDBusMessage> replies = co_await Atspi::exchangeAtOnce(bus, QString(), calls);
    for (const QDBusMessage &reply : replies)
        windows.append(Atspi::references(reply));
    co_return windows;
}

// Whether one of the application's windows has the title, and whether it is active.
QCoro::Task<std::optional<Claim>> claimOf(QDBusConnection bus, AtspiReference application,
                                          QList<AtspiReference> windows, QString title)
{
    QList<QDBusMessage> calls;
    for (const AtspiReference &window : windows) {
        calls.append(Atspi::getName(window));
        calls.append(Atspi::getState(window));
    }
    if (calls.isEmpty())
        co_return std::nullopt;
    const QList<QDBusMessage> replies = co_await Atspi::exchangeAtOnce(bus, QString(), calls);
    std::optional<Claim> claim;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const QString name =
            Atspi::label(Atspi::text(replies.at(2 * i)).value_or(QString()), AtspiToolkit::Other);
        if (Text::trimmed(name) != title)
            continue;
        const bool isActive = Atspi::hasState(replies.at(2 * i + 1), AtspiState::Active);
        claim = Claim{application, isActive || (claim && claim->isActive)};
    }
    co_return claim;
}

// The results of concurrent queries; Silent until answered.
struct Survey
{
    explicit Survey(qsizetype count) : answers(count, AtspiDisclosure::Silent), open(count) { ended.start(); }

    QList<AtspiDisclosure> answers;
    qsizetype open;
    QPromise<void> ended;
};

QCoro::Task<AtspiDisclosure> disclosure(QDBusConnection bus, qint64 process)
{
    const std::optional<AtspiReference> root = co_await Atspi::findApplication(bus, process);
    if (!root)
        co_return AtspiDisclosure::Hidden;
    const QString name = Atspi::processName(process);
    const auto application = co_await AtspiApplication::create(bus, *root, name);
    const auto nothingKnown = std::make_shared<const AtspiCache>();
    const bool isHidden = co_await Atspi::hidesControls(application, nothingKnown);
    co_return isHidden ? AtspiDisclosure::Hidden : AtspiDisclosure::Shown;
}

QCoro::Task<void> ask(QDBusConnection bus, qint64 process, std::shared_ptr<Survey> survey, qsizetype place)
{
    try {
        const AtspiDisclosure answer = co_await disclosure(bus, process);
        survey->answers[place] = answer;
    } catch (const PlatformError &) {
        survey->answers[place] = AtspiDisclosure::Silent;
    }
    if (--survey->open == 0)
        survey->ended.finish();
}

} // namespace

QCoro::Task<std::optional<AtspiReference>> Atspi::findApplication(QDBusConnection bus,
                                                                  qint64 processIdentifier)
{
    const QList<AtspiReference> applications = co_await registeredApplications(bus);
    const QList<qint64> processes = co_await processesOf(bus, applications);
    QList<AtspiReference> own;
    QList<AtspiReference> descendants;
    for (qsizetype i = 0; i < applications.size(); ++i) {
        if (processes.at(i) == processIdentifier)
            own.append(applications.at(i));
        else if (isDescendant(processes.at(i), processIdentifier))
            descendants.append(applications.at(i));
    }
    QList<AtspiReference> candidates = own.isEmpty() ? descendants : own;
    for (qsizetype i = 0; i < applications.size() && own.isEmpty() && descendants.isEmpty(); ++i) {
        if (shareSandbox(processes.at(i), processIdentifier))
            candidates.append(applications.at(i));
    }
    if (candidates.isEmpty())
        co_return std::nullopt;
    if (candidates.size() == 1)
        co_return candidates.constFirst();
    co_return co_await richest(bus, candidates);
}

QCoro::Task<std::optional<AtspiReference>> Atspi::findApplicationWithWindow(QDBusConnection bus,
                                                                            QString title)
{
    const QList<AtspiReference> applications = co_await registeredApplications(bus);
    const QList<QList<AtspiReference>> windows = co_await windowsOf(bus, applications);
    QList<AtspiReference> all;
    QList<AtspiReference> active;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const std::optional<Claim> claim =
            co_await claimOf(bus, applications.at(i), windows.at(i), Text::trimmed(title));
        if (!claim)
            continue;
        all.append(claim->application);
        if (claim->isActive)
            active.append(claim->application);
    }
    for (const QList<AtspiReference> &candidates : {all, active}) {
        if (candidates.size() == 1)
            co_return candidates.constFirst();
    }
    co_return std::nullopt;
}

QString Atspi::processName(qint64 processIdentifier)
{
    QFile file(u"/proc/%1/comm"_s.arg(processIdentifier));
    const QByteArray name = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QString cleaned = Text::trimmed(Text::cleaned(QString::fromUtf8(name)));
    return cleaned.isEmpty() ? u"The application"_s : cleaned;
}

QCoro::Task<QList<AtspiDisclosure>> Atspi::disclosures(QDBusConnection bus, QList<qint64> processes,
                                                       std::chrono::milliseconds limit)
{
    const auto survey = std::make_shared<Survey>(processes.size());
    if (processes.isEmpty())
        co_return survey->answers;
    std::vector<QCoro::Task<void>> questions;
    for (qsizetype place = 0; place < processes.size(); ++place)
        questions.push_back(ask(bus, processes.at(place), survey, place));
    const QFuture<bool> ended = finishedWithin(survey->ended.future(), limit);
    co_await ended;
    co_return survey->answers;
}

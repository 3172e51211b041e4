// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/LinuxDiagnosis.h"

#include "Desktop/AbandonableJob.h"
#include "Desktop/Linux/DesktopEntries.h"
#include "Desktop/Linux/Diagnosis/AccessibilityExamination.h"
#include "Desktop/Linux/Diagnosis/DisplayChecks.h"
#include "Desktop/Linux/LinuxApplications.h"
#include "Desktop/Linux/LinuxProgramInstance.h"

namespace {

struct DisplayAnswer
{
    DisplayChecks::Server server = DisplayChecks::Server::Silent;
    std::optional<X11Examination> examination;
};

QCoro::Task<DisplayAnswer> examineDisplay()
{
    DisplayAnswer answer;
    try {
        answer.examination =
            co_await AbandonableJob::run(QStringLiteral("doctor.x11"), &X11Examination::take);
        if (answer.examination)
            answer.server = DisplayChecks::Server::Answers;
    } catch (const PlatformError &) {
        answer.server = DisplayChecks::Server::Unreachable;
    }
    co_return answer;
}

// Nothing where no session bus answers.
QCoro::Task<std::optional<BusExamination>> examineSessionBus()
{
    const auto job = [] { return BusExamination::take(BusExamination::sessionBusAddress()); };
    std::optional<BusExamination> answer;
    try {
        answer = co_await AbandonableJob::run(QStringLiteral("doctor.bus"), job);
    } catch (const PlatformError &) {
        answer = std::nullopt;
    }
    co_return answer;
}

struct Registry
{
    QList<DesktopEntry> installed;
    ServiceChecks::DefaultApplication browser;
    ServiceChecks::DefaultApplication fileManager;
};

Registry readRegistry()
{
    return {DesktopEntries::all(),
            {true, DesktopEntries::defaultForType(QStringLiteral("x-scheme-handler/https"))},
            {true, DesktopEntries::defaultForType(QStringLiteral("inode/directory"))}};
}

QList<RunningApplication> openApplications(const X11Snapshot &windows, const QList<DesktopEntry> &installed)
{
    QList<RunningApplication> result = LinuxApplications::running(windows, installed);
    result.removeIf([](const RunningApplication &application) { return !application.isRegular; });
    return result;
}

DisplayChecks::Orvane runningOrvane(const std::optional<BusExamination> &sessionBus)
{
    const bool runs = sessionBus && sessionBus->isRunning(LinuxProgramInstance::busName);
    return runs ? DisplayChecks::Orvane::Runs : DisplayChecks::Orvane::DoesNotRun;
}

} // namespace

QCoro::Task<QList<DiagnosticCheck>> LinuxDiagnosis::examine()
{
    const DisplayChecks::Session session = DisplayChecks::Session::ofEnvironment();
    // All three begin now.
    const auto askingDisplay = examineDisplay();
    const auto askingBus = examineSessionBus();
    const auto reading = AbandonableJob::run(QStringLiteral("doctor.gio"), &readRegistry);

    const DisplayAnswer display = co_await askingDisplay;
    const DiagnosticCheck sessionCheck = DisplayChecks::session(session, display.server);
    if (!display.examination) {
        const QList<DiagnosticCheck> nothingElse{sessionCheck};
        co_return nothingElse;
    }
    const X11Examination screen = *display.examination;
    const std::optional<BusExamination> sessionBus = co_await askingBus;
    const std::optional<Registry> answer = co_await reading;
    const Registry registry = answer.value_or(Registry());
    const QList<RunningApplication> running = openApplications(screen.windows, registry.installed);
    const AccessibilityExamination accessibility =
        co_await AccessibilityExamination::take(sessionBus, screen.accessibilityBus, running);
    const QList<DiagnosticCheck> checks{
        sessionCheck,
        DisplayChecks::windowManager(screen),
        ServiceChecks::accessibility(accessibility.standing),
        DisplayChecks::keyboard(screen),
        DisplayChecks::spareKeys(screen),
        DisplayChecks::hotKey(screen, session, runningOrvane(sessionBus)),
        ServiceChecks::browser(registry.browser),
        ServiceChecks::fileManager(registry.fileManager),
        ServiceChecks::showFiles(sessionBus),
        DisplayChecks::screenshot(screen, session),
        ServiceChecks::applications(accessibility.applications),
    };
    co_return checks;
}

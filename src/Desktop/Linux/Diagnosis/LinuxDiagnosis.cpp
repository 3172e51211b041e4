// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/LinuxDiagnosis.h"

#include "Desktop/AbandonableJob.h"
#include "Desktop/Linux/Applications/DesktopEntries.h"
#include "Desktop/Linux/Applications/LinuxApplications.h"
#include "Desktop/Linux/Diagnosis/AccessibilityExamination.h"
#include "Desktop/Linux/Diagnosis/DisplayChecks.h"
#include "Desktop/Linux/Diagnosis/WaylandChecks.h"
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"

using namespace Qt::StringLiterals;

namespace {

struct DisplayAnswer
{
    DisplayChecks::Server server = DisplayChecks::Server::Silent;
    std::optional<X11Examination> examination;

    SessionType sessionType() const
    {
        if (!examination)
            return Sessions::typeWith(DisplayServer::None);
        return Sessions::typeWith(examination->isXwayland ? DisplayServer::Xwayland : DisplayServer::Xorg);
    }
};

QCoro::Task<DisplayAnswer> examineDisplay()
{
    DisplayAnswer answer;
    try {
        answer.examination = co_await AbandonableJob::run(u"doctor.x11"_s, &X11Examination::take);
        if (answer.examination)
            answer.server = DisplayChecks::Server::Answers;
    } catch (const PlatformError &) {
        answer.server = DisplayChecks::Server::Unreachable;
    }
    co_return answer;
}

// Nothing if no session bus responds.
QCoro::Task<std::optional<BusExamination>> examineSessionBus()
{
    const auto job = [] { return BusExamination::take(BusExamination::sessionBusAddress()); };
    std::optional<BusExamination> answer;
    try {
        answer = co_await AbandonableJob::run(u"doctor.bus"_s, job);
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
            {true, DesktopEntries::defaultForType(u"x-scheme-handler/https"_s)},
            {true, DesktopEntries::defaultForType(u"inode/directory"_s)}};
}

QList<RunningApplication> openApplications(const WindowSnapshot &windows,
                                           const QList<DesktopEntry> &installed)
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

// All results, on a desktop with an X server.
struct Answers
{
    DisplayChecks::Session session;
    X11Examination screen;
    std::optional<BusExamination> sessionBus;
    Registry registry;
    AccessibilityExamination accessibility;
};

QList<DiagnosticCheck> checksOf(const Answers &answers)
{
    return {
        DisplayChecks::session(answers.session, DisplayChecks::Server::Answers),
        DisplayChecks::windowManager(answers.screen),
        ServiceChecks::accessibility(answers.accessibility.standing),
        DisplayChecks::keyboard(answers.screen),
        DisplayChecks::spareKeys(answers.screen),
        DisplayChecks::hotKey(answers.screen, runningOrvane(answers.sessionBus)),
        ServiceChecks::browser(answers.registry.browser),
        ServiceChecks::fileManager(answers.registry.fileManager),
        ServiceChecks::showFiles(answers.sessionBus),
        DisplayChecks::screenshot(answers.screen),
        ServiceChecks::applications(answers.accessibility.applications),
    };
}

QList<DiagnosticCheck> waylandChecks(const DisplayChecks::Session &session,
                                     const QList<DiagnosticCheck> &ways,
                                     const AccessibilityExamination &accessibility,
                                     const std::optional<BusExamination> &sessionBus,
                                     const Registry &registry)
{
    QList<DiagnosticCheck> checks{DisplayChecks::session(session, DisplayChecks::Server::Unreachable)};
    checks += ways;
    checks += {ServiceChecks::accessibility(accessibility.standing), ServiceChecks::browser(registry.browser),
               ServiceChecks::fileManager(registry.fileManager), ServiceChecks::showFiles(sessionBus)};
    return checks;
}

bool hasPortal(const BusExamination &sessionBus)
{
    const QString portal = u"org.freedesktop.portal.Desktop"_s;
    return sessionBus.isRunning(portal) || sessionBus.canStart(portal);
}

// Nothing if the bus doesn't answer: Qt's connection would then block the program's exit.
QCoro::Task<KGlobalAccelHotKeys::Standing> examineHotKey(BusExamination sessionBus)
{
    KGlobalAccelHotKeys::Standing standing;
    if (sessionBus.isRunning(KGlobalAccelHotKeys::serviceName)) {
        KGlobalAccelHotKeys hotKeys;
        standing = co_await hotKeys.standing(ProgramHotKey::virtualKey, ProgramHotKey::modifiers,
                                             ProgramHotKey::identifier);
    }
    co_return standing;
}

// The access to the Wayland desktop, and the ways to operate it; none without full access.
struct WaylandAnswer
{
    DisplayChecks::Session::Access access = DisplayChecks::Session::Access::None;
    ExtensionStanding extension = ExtensionStanding::IsMissing;
    QList<DiagnosticCheck> ways = {};
};

QCoro::Task<WaylandAnswer> examineWayland(BusExamination sessionBus)
{
    using Access = DisplayChecks::Session::Access;
    WaylandAnswer answer;
    const WaylandOffer offer = WaylandOffer::ofEnvironment();
    if (offer.isComplete()) {
        const KGlobalAccelHotKeys::Standing hotKey = co_await examineHotKey(sessionBus);
        answer.ways = WaylandChecks::ways(offer, hasPortal(sessionBus), hotKey);
    } else if (offer.isWithheld) {
        answer.access = Access::NeedsEntry;
    } else if (sessionBus.isRunning(u"org.gnome.Shell"_s)) {
        answer.extension = extensionStanding(sessionBus.extensionVersion, ExtensionFiles::areCurrent());
        answer.access = Access::NeedsExtension;
        if (answer.extension == ExtensionStanding::Works)
            answer.ways = WaylandChecks::extensionWays(hasPortal(sessionBus));
    }
    if (!answer.ways.isEmpty())
        answer.access = Access::Full;
    co_return answer;
}

} // namespace

QCoro::Task<QList<DiagnosticCheck>> LinuxDiagnosis::examine()
{
    // Start all three before waiting.
    const auto askingDisplay = examineDisplay();
    const auto askingBus = examineSessionBus();
    const auto reading = AbandonableJob::run(u"doctor.gio"_s, &readRegistry);

    const DisplayAnswer display = co_await askingDisplay;
    DisplayChecks::Session session{qEnvironmentVariable("DISPLAY"), display.sessionType()};
    const std::optional<BusExamination> sessionBus = co_await askingBus;
    WaylandAnswer wayland;
    if (session.type == SessionType::Wayland)
        wayland = co_await examineWayland(sessionBus.value_or(BusExamination()));
    session.access = wayland.access;
    session.extension = wayland.extension;
    if (!wayland.ways.isEmpty()) {
        const std::optional<Registry> registry = co_await reading;
        // Without processes nothing is known about single applications.
        const QString noAddress;
        const QList<RunningApplication> none;
        const AccessibilityExamination accessibility =
            co_await AccessibilityExamination::take(sessionBus, noAddress, none);
        co_return waylandChecks(session, wayland.ways, accessibility, sessionBus,
                                registry.value_or(Registry()));
    }
    if (!display.examination || session.type == SessionType::Wayland) {
        const QList<DiagnosticCheck> nothingElse{DisplayChecks::session(session, display.server)};
        co_return nothingElse;
    }
    Answers answers{session, *display.examination, {}, {}, {}};
    answers.sessionBus = sessionBus;
    const std::optional<Registry> registry = co_await reading;
    answers.registry = registry.value_or(Registry());
    const QList<RunningApplication> running =
        openApplications(answers.screen.windows, answers.registry.installed);
    answers.accessibility =
        co_await AccessibilityExamination::take(answers.sessionBus, answers.screen.accessibilityBus, running);
    co_return checksOf(answers);
}

// SPDX-License-Identifier: Apache-2.0
#include "applications/support/ActionRunner.h"

#include "Actions/Executor.h"
#include "Desktop/Linux/LinuxDesktop.h"
#include "Support/Awaited.h"
#include "Support/StandstillWatch.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// Catches the error inside the coroutine: waitFor never returns for one that throws.
QCoro::Task<Outcome> carryOut(AgentAction action, Desktop desktop)
{
    Outcome outcome;
    QElapsedTimer timer;
    timer.start();
    try {
        outcome.line = co_await Executor::run(action, desktop);
    } catch (const LocalizedError &error) {
        outcome.line = error.errorDescription();
        outcome.hasFailed = true;
    }
    outcome.duration = std::chrono::milliseconds(timer.elapsed());
    co_return outcome;
}

} // namespace

bool isOneClearLine(const QString &line)
{
    return line.size() > 10 && !line.contains(u'\n') && line.endsWith(u'.');
}

ActionRunner::ActionRunner() : m_desktop(std::make_unique<LinuxDesktop>()) {}

ActionRunner::~ActionRunner() = default;

Outcome ActionRunner::perform(const char *action, Arguments arguments)
{
    QJsonObject reply{{u"action"_s, QString::fromLatin1(action)}};
    for (const auto &[key, value] : arguments)
        reply.insert(QString::fromLatin1(key), value);
    const auto parsed = AgentAction::parse(QString::fromUtf8(QJsonDocument(reply).toJson()));
    if (!parsed)
        qFatal("“%s” is no action", action);
    const StandstillWatch watch;
    Outcome outcome = Awaited::result(carryOut(*parsed, m_desktop->desktop()));
    outcome.standstill = watch.longest();
    return outcome;
}

// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DoctorReport.h"

#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/ReadinessChecks.h"

#include <nlohmann/json.hpp>

using namespace Qt::StringLiterals;
using Json = nlohmann::ordered_json;

namespace {

struct Look
{
    QString mark;
    Terminal::Style style;
};

Look lookOf(const DiagnosticCheck &check)
{
    if (check.state == DiagnosticCheck::State::Works)
        return {u"✓"_s, Terminal::Style::Good};
    if (check.isObstacle())
        return {u"✗"_s, Terminal::Style::Bad};
    return {u"!"_s, Terminal::Style::Asking};
}

void writeText(const QList<DiagnosticCheck> &checks, Terminal &terminal)
{
    for (const DiagnosticCheck &check : checks) {
        const Look look = lookOf(check);
        terminal.line(u"%1 %2: %3"_s.arg(look.mark, check.title, check.finding), look.style);
        if (!check.advice.isEmpty())
            terminal.line(u"    "_s + check.advice);
    }
    terminal.line(QString());
    switch (DoctorReport::exitStatus(checks)) {
    case ExitStatus::done:
        terminal.line(u"All that tasks need works."_s);
        break;
    case ExitStatus::notReady:
        terminal.line(u"All that is missing is a model."_s);
        break;
    default:
        terminal.line(u"Tasks need what is marked ✗."_s);
    }
}

std::string nameOf(DiagnosticCheck::State state)
{
    switch (state) {
    case DiagnosticCheck::State::Works:
        return "works";
    case DiagnosticCheck::State::Limited:
        return "limited";
    case DiagnosticCheck::State::Broken:
        return "broken";
    case DiagnosticCheck::State::Absent:
        return "absent";
    }
    Q_UNREACHABLE();
}

Json jsonOf(const DiagnosticCheck &check)
{
    return {
        {"id", check.identifier.toStdString()},   {"title", check.title.toStdString()},
        {"state", nameOf(check.state)},           {"needed", check.need == DiagnosticCheck::Need::Actions},
        {"finding", check.finding.toStdString()}, {"advice", check.advice.toStdString()}};
}

void writeJson(const QList<DiagnosticCheck> &checks, Terminal &terminal)
{
    Json list = Json::array();
    for (const DiagnosticCheck &check : checks)
        list.push_back(jsonOf(check));
    const Json report{{"works", DoctorReport::exitStatus(checks) == ExitStatus::done}, {"checks", list}};
    terminal.block(QString::fromStdString(report.dump(2)), QString());
}

} // namespace

void DoctorReport::write(const QList<DiagnosticCheck> &checks, Format format, Terminal &terminal)
{
    if (format == Format::Json)
        writeJson(checks, terminal);
    else
        writeText(checks, terminal);
}

int DoctorReport::exitStatus(const QList<DiagnosticCheck> &checks)
{
    int status = ExitStatus::done;
    for (const DiagnosticCheck &check : checks) {
        if (!check.isObstacle())
            continue;
        if (check.identifier != ReadinessChecks::modelIdentifier)
            return ExitStatus::desktopUnfit;
        status = ExitStatus::notReady;
    }
    return status;
}

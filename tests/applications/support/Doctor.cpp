// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Doctor.h"

#include "applications/support/OrvaneProgram.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(PrivateDesktop::patience);
    return process.readAllStandardOutput();
}

QByteArray callSwitch(const QString &method, const QStringList &arguments)
{
    const QStringList call{u"--session"_s,
                           u"--print-reply"_s,
                           u"--dest=org.a11y.Bus"_s,
                           u"/org/a11y/bus"_s,
                           u"org.freedesktop.DBus.Properties."_s + method,
                           u"string:org.a11y.Status"_s,
                           u"string:IsEnabled"_s};
    return output(u"dbus-send"_s, call + arguments);
}

// Without the window manager's settings, which are saved some time after it has started.
QStringList filesAtHome()
{
    QStringList files;
    QDirIterator all(PrivateDesktop::home(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        files << all.next();
    files.removeIf([](const QString &file) { return file.contains("/.config/xfce4"_L1); });
    files.sort();
    return files;
}

} // namespace

QStringList Doctor::Report::identifiers() const
{
    QStringList result;
    for (const QJsonValue &check : object[u"checks"_s].toArray())
        result << check[u"id"_s].toString();
    return result;
}

QString Doctor::Report::entry(const QString &identifier, const QString &key) const
{
    for (const QJsonValue &check : object[u"checks"_s].toArray()) {
        if (check[u"id"_s] == identifier)
            return check[key].toString();
    }
    return {};
}

Doctor::Report Doctor::consult(const Environment &changes)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, value] : changes) {
        environment.insert(name, value);
        if (value.isEmpty())
            environment.remove(name);
    }
    const OrvaneProgram::Ending ending = OrvaneProgram::run({u"doctor"_s, u"--json"_s}, environment);
    const QJsonDocument report = QJsonDocument::fromJson(ending.output.toUtf8());
    if (!report.isObject())
        qWarning("The doctor's output is no report: %s", qPrintable(ending.output));
    return {ending.status, ending.output, report.object()};
}

bool Doctor::isAccessibilityOn()
{
    return callSwitch(u"Get"_s, {}).contains("true");
}

void Doctor::switchAccessibility(bool on)
{
    callSwitch(u"Set"_s, {u"variant:boolean:"_s + (on ? u"true"_s : u"false"_s)});
}

Doctor::DesktopState Doctor::DesktopState::now()
{
    return {Screen::described(), Screen::activeClass(),
            output(u"xmodmap"_s, {u"-pke"_s}) + output(u"xset"_s, {u"q"_s}), filesAtHome(),
            PrivateDesktop::processesWith({})};
}

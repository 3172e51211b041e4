// SPDX-License-Identifier: Apache-2.0
#include "applications/support/WaylandSession.h"

#include "applications/support/PrivateDesktop.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto socketName = "orvane-wayland";

void end(QProcess &process)
{
    process.terminate();
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(PrivateDesktop::patience)) {
        process.kill();
        process.waitForFinished();
    }
}

QByteArray xprop(const QStringList &arguments)
{
    QProcess tool;
    tool.start(u"xprop"_s, QStringList{u"-root"_s} + arguments);
    tool.waitForFinished(PrivateDesktop::patience);
    return tool.readAllStandardOutput();
}

} // namespace

WaylandSession::WaylandSession()
{
    setVariable("WAYLAND_DISPLAY", socketName);
    setVariable("XDG_SESSION_TYPE", "wayland");
    setVariable("QT_QPA_PLATFORM", std::nullopt); // let the program choose
    m_isRunning = startCompositor() && startServer() && startManager();
}

WaylandSession::~WaylandSession()
{
    for (QProcess *process : {&m_manager, &m_server, &m_compositor})
        end(*process);
    for (const auto &[name, value] : m_replaced) {
        if (value)
            qputenv(name, *value);
        else
            qunsetenv(name);
    }
}

void WaylandSession::setVariable(const char *name, const std::optional<QByteArray> &value)
{
    const bool wasSet = qEnvironmentVariableIsSet(name);
    m_replaced.prepend({name, wasSet ? std::optional(qgetenv(name)) : std::nullopt});
    if (value)
        qputenv(name, *value);
    else
        qunsetenv(name);
}

bool WaylandSession::startCompositor()
{
    m_compositor.start(u"weston"_s, {u"--backend=headless-backend.so"_s, u"--no-config"_s, u"--idle-time=0"_s,
                                     u"--socket="_s + QLatin1StringView(socketName)});
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/' + QLatin1StringView(socketName);
    return QTest::qWaitFor([&] { return QFileInfo::exists(socket); }, PrivateDesktop::patience);
}

bool WaylandSession::startServer()
{
    m_server.start(u"Xwayland"_s, {u"-displayfd"_s, u"1"_s, u"-noreset"_s});
    QByteArray number;
    const auto isUp = [this, &number] {
        number += m_server.readAllStandardOutput();
        return number.endsWith('\n');
    };
    if (!QTest::qWaitFor(isUp, PrivateDesktop::patience))
        return false;
    setVariable("DISPLAY", ":" + number.trimmed());
    return true;
}

bool WaylandSession::startManager()
{
    m_manager.start(u"xfwm4"_s, {u"--compositor=off"_s});
    const auto manages = [] { return xprop({u"_NET_ACTIVE_WINDOW"_s}).contains("window id"); };
    if (!QTest::qWaitFor(manages, PrivateDesktop::patience))
        return false;
    // The manager takes the time from events: without a later event, the first window may get no focus.
    xprop({u"-format"_s, u"ORVANE_TEST"_s, u"8s"_s, u"-set"_s, u"ORVANE_TEST"_s, u"ready"_s});
    return true;
}

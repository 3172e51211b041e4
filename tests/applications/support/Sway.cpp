// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Sway.h"

#include "applications/support/PrivateDesktop.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

QJsonObject tree()
{
    QProcess client;
    client.start(u"swaymsg"_s, {u"-t"_s, u"get_tree"_s, u"-r"_s});
    client.waitForFinished();
    return QJsonDocument::fromJson(client.readAllStandardOutput()).object();
}

// The nodes that are windows: those with a process.
QList<QJsonObject> windowNodes(const QJsonObject &node)
{
    QList<QJsonObject> found;
    if (node.contains("pid"_L1))
        found.append(node);
    for (const QLatin1StringView children : {"nodes"_L1, "floating_nodes"_L1}) {
        for (const QJsonValue &child : node.value(children).toArray())
            found += windowNodes(child.toObject());
    }
    return found;
}

} // namespace

QList<SwayWindow> Sway::windows()
{
    QList<SwayWindow> windows;
    for (const QJsonObject &node : windowNodes(tree())) {
        windows.append({node.value("id"_L1).toInt(), node.value("name"_L1).toString(),
                        node.value("app_id"_L1).toString(), node.value("focused"_L1).toBool()});
    }
    return windows;
}

QList<SwayWindow> Sway::windowsOf(const QString &applicationIdentifier)
{
    QList<SwayWindow> found = windows();
    found.removeIf([&applicationIdentifier](const SwayWindow &window) {
        return !window.applicationIdentifier.contains(applicationIdentifier, Qt::CaseInsensitive);
    });
    return found;
}

std::optional<SwayWindow> Sway::focused()
{
    for (const SwayWindow &window : windows()) {
        if (window.isFocused)
            return window;
    }
    return std::nullopt;
}

QString Sway::described()
{
    QStringList all;
    for (const SwayWindow &window : windows()) {
        all.append(u"“%1” of %2%3"_s.arg(window.title, window.applicationIdentifier,
                                         window.isFocused ? u" (focused)"_s : QString()));
    }
    return all.join(u", "_s);
}

bool Sway::clear()
{
    for (const QJsonObject &node : windowNodes(tree())) {
        const int process = node.value("pid"_L1).toInt();
        if (process != QCoreApplication::applicationPid())
            ::kill(process, SIGKILL);
    }
    return QTest::qWaitFor([] { return windows().isEmpty(); }, PrivateDesktop::patience);
}

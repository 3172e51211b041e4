// SPDX-License-Identifier: Apache-2.0
#include "applications/support/SwayScreen.h"

#include "applications/support/PrivateDesktop.h"
#include "applications/support/WaylandUserKeyboard.h"
#include "applications/support/X11Names.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QByteArray answerTo(const QStringList &arguments)
{
    QProcess client;
    client.start(u"swaymsg"_s, arguments);
    if (!client.waitForFinished(PrivateDesktop::patience))
        qFatal("sway has not answered for %d ms", PrivateDesktop::patience);
    return client.readAllStandardOutput();
}

QJsonObject tree()
{
    return QJsonDocument::fromJson(answerTo({u"-t"_s, u"get_tree"_s, u"-r"_s})).object();
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

QRect rectangle(const QJsonObject &object)
{
    return {object.value("x"_L1).toInt(), object.value("y"_L1).toInt(), object.value("width"_L1).toInt(),
            object.value("height"_L1).toInt()};
}

ScreenWindow described(const QJsonObject &node)
{
    ScreenWindow window;
    window.identifier = static_cast<quint32>(node.value("id"_L1).toInt());
    window.process = node.value("pid"_L1).toInt();
    window.title = node.value("name"_L1).toString();
    window.applicationIdentifier = node.value("app_id"_L1).toString();
    window.className = X11Names::classOf(window.applicationIdentifier);
    const QRect inContainer = rectangle(node.value("window_rect"_L1).toObject());
    window.area = inContainer.translated(rectangle(node.value("rect"_L1).toObject()).topLeft());
    return window;
}

class Observer : public ScreenObserver
{
public:
    // sway sorts floating windows by their last use; identifiers count up.
    QList<ScreenWindow> windows() override
    {
        QList<ScreenWindow> found;
        for (const QJsonObject &node : windowNodes(tree()))
            found << described(node);
        std::ranges::sort(found, {}, &ScreenWindow::identifier);
        return found;
    }

    std::optional<ScreenWindow> activeWindow() override
    {
        for (const QJsonObject &node : windowNodes(tree())) {
            if (node.value("focused"_L1).toBool())
                return described(node);
        }
        return std::nullopt;
    }

    void pressKey(const QString &combination) override { m_keyboard.press(combination); }

    void requestFocus(quint32 window) override
    {
        SwayScreen::command({u"[con_id=%1]"_s.arg(window), u"focus"_s});
    }

private:
    WaylandUserKeyboard m_keyboard;
};

} // namespace

ScreenObserver &SwayScreen::observer()
{
    static Observer observer;
    return observer;
}

void SwayScreen::command(const QStringList &words)
{
    answerTo(QStringList{u"--quiet"_s} + words);
}

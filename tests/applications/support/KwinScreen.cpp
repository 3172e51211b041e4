// SPDX-License-Identifier: Apache-2.0
#include "applications/support/KwinScreen.h"

#include "applications/support/Kwin.h"
#include "applications/support/KwinHands.h"
#include "applications/support/UsLayout.h"
#include "applications/support/X11Names.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <ranges>

using namespace Qt::StringLiterals;

namespace {

const QString listWindows = uR"(
    const all = workspace.stackingOrder.filter(window => window.normalWindow || window.dialog);
    tell(JSON.stringify(all.map(window => ({
        identifier: window.internalId.toString(), title: window.caption, app: window.desktopFileName,
        process: window.pid, isActive: window.active,
        x: window.clientGeometry.x, y: window.clientGeometry.y,
        width: window.clientGeometry.width, height: window.clientGeometry.height
    }))));
)"_s;

const QString activate = uR"(
    const window = workspace.stackingOrder.find(window => window.internalId.toString() == '%1');
    if (window)
        workspace.activeWindow = window;
    tell('done');
)"_s;

// KWin's identifiers in the order in which the windows were first seen.
QStringList &identifiers()
{
    static QStringList seen;
    return seen;
}

quint32 numberOf(const QString &identifier)
{
    if (!identifiers().contains(identifier))
        identifiers() << identifier;
    return static_cast<quint32>(identifiers().indexOf(identifier));
}

// Bottom to top.
QJsonArray stackedWindows()
{
    return QJsonDocument::fromJson(Kwin::run(listWindows).toUtf8()).array();
}

ScreenWindow described(const QJsonValue &value)
{
    ScreenWindow window;
    window.identifier = numberOf(value["identifier"_L1].toString());
    window.process = value["process"_L1].toInteger();
    window.title = value["title"_L1].toString();
    window.applicationIdentifier = value["app"_L1].toString();
    window.className = X11Names::classOf(window.applicationIdentifier);
    window.area = QRect(value["x"_L1].toInt(), value["y"_L1].toInt(), value["width"_L1].toInt(),
                        value["height"_L1].toInt());
    return window;
}

class Observer : public ScreenObserver
{
public:
    QList<ScreenWindow> windows() override
    {
        QList<ScreenWindow> found = KwinScreen::windowsFrontToBack();
        std::ranges::sort(found, {}, &ScreenWindow::identifier);
        return found;
    }

    std::optional<ScreenWindow> activeWindow() override
    {
        for (const QJsonValue &window : stackedWindows()) {
            if (window["isActive"_L1].toBool())
                return described(window);
        }
        return std::nullopt;
    }

    void pressKey(const QString &combination) override
    {
        static KwinHands hands;
        const QList<std::uint32_t> keys = UsLayout::keysOf(combination);
        for (const std::uint32_t key : keys)
            hands.press(key);
        for (const std::uint32_t key : std::views::reverse(keys))
            hands.release(key);
    }

    void requestFocus(quint32 window) override { Kwin::run(activate.arg(identifiers().value(window))); }
};

} // namespace

ScreenObserver &KwinScreen::observer()
{
    static Observer observer;
    return observer;
}

QList<ScreenWindow> KwinScreen::windowsFrontToBack()
{
    QList<ScreenWindow> windows;
    for (const QJsonValue &window : stackedWindows())
        windows.prepend(described(window));
    return windows;
}

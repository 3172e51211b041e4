// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Workarounds.h"

#include "Desktop/Linux/Atspi/Collection.h"
#include "Desktop/Linux/Atspi/Roles.h"
#include "Desktop/Linux/Atspi/States.h"
#include "Desktop/PlatformError.h"

#include <QCoroTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr std::uint16_t returnKey = 0x24;
constexpr std::uint16_t spaceKey = 0x31;

// How long a menu may take to open, and a control to have the focus.
constexpr auto pace = 10ms;
constexpr int mostRounds = 50;

// Deeper than menus are.
constexpr int mostMenus = 8;

using Application = std::shared_ptr<AtspiApplication>;

QCoro::Task<QDBusMessage> ask(Application application, QDBusMessage question)
{
    const QList<QDBusMessage> questions{question};
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, questions);
    co_return replies.constFirst();
}

QCoro::Task<AtspiRole> roleOf(Application application, AtspiReference object)
{
    const QDBusMessage question = Atspi::call(object, Atspi::accessibleInterface, QStringLiteral("GetRole"));
    const QDBusMessage reply = co_await ask(application, question);
    const double role = Atspi::number(reply).value_or(0);
    co_return static_cast<AtspiRole>(role);
}

QCoro::Task<QDBusMessage> statesOf(Application application, AtspiReference object)
{
    const QDBusMessage question = Atspi::call(object, Atspi::accessibleInterface, QStringLiteral("GetState"));
    co_return co_await ask(application, question);
}

QCoro::Task<bool> comesTo(Application application, AtspiReference object, AtspiState state)
{
    for (int round = 0; round < mostRounds; ++round) {
        const QDBusMessage states = co_await statesOf(application, object);
        if (Atspi::hasState(states, state))
            co_return true;
        co_await QCoro::sleepFor(pace);
    }
    co_return false;
}

bool isItem(AtspiRole role)
{
    return role == AtspiRole::MenuItem || role == AtspiRole::CheckMenuItem ||
           role == AtspiRole::RadioMenuItem;
}

// The menus that the item is in, innermost first.
QCoro::Task<QList<AtspiReference>> menusOf(Application application, AtspiReference item)
{
    QList<AtspiReference> menus;
    AtspiReference object = item;
    while (menus.size() < mostMenus) {
        const QDBusMessage question =
            Atspi::property(object, Atspi::accessibleInterface, QStringLiteral("Parent"));
        const QDBusMessage reply = co_await ask(application, question);
        object = Atspi::reference(reply);
        if (object.isNull())
            break;
        const AtspiRole role = co_await roleOf(application, object);
        if (role != AtspiRole::Menu)
            break;
        menus.append(object);
    }
    co_return menus;
}

// A menu's press only shows it, and so ends at once.
QCoro::Task<bool> open(Application application, AtspiReference menu, AtspiReference inside)
{
    const QDBusMessage states = co_await statesOf(application, inside);
    if (Atspi::hasState(states, AtspiState::Showing))
        co_return true;
    const QVariantList first{0};
    const QDBusMessage press = Atspi::call(menu, Atspi::actionInterface, QStringLiteral("DoAction"), first);
    co_await AtspiApplication::act(application, press);
    co_return co_await comesTo(application, inside, AtspiState::Showing);
}

// Opens the item's menus and makes it the one that Return carries out.
QCoro::Task<bool> choose(Application application, AtspiReference item)
{
    const QList<AtspiReference> menus = co_await menusOf(application, item);
    if (menus.isEmpty())
        co_return false;
    for (qsizetype i = menus.size() - 1; i >= 0; --i) {
        const AtspiReference inside = i > 0 ? menus.at(i - 1) : item;
        const bool isOpen = co_await open(application, menus.at(i), inside);
        if (!isOpen)
            co_return false;
    }
    const QDBusMessage question =
        Atspi::call(item, Atspi::accessibleInterface, QStringLiteral("GetIndexInParent"));
    const QDBusMessage position = co_await ask(application, question);
    const QVariantList index{static_cast<int>(Atspi::number(position).value_or(-1))};
    const QDBusMessage select = Atspi::call(menus.constFirst(), QStringLiteral("org.a11y.atspi.Selection"),
                                            QStringLiteral("SelectChild"), index);
    co_await AtspiApplication::act(application, select);
    co_return co_await comesTo(application, item, AtspiState::Selected);
}

QCoro::Task<std::optional<bool>> pressItem(Application application, AtspiReference item,
                                           Atspi::StrikeKey strikeKey)
{
    const bool isChosen = co_await choose(application, item);
    if (!isChosen)
        co_return std::nullopt;
    co_await strikeKey(returnKey);
    co_return true;
}

QCoro::Task<bool> takeFocus(Application application, AtspiReference object)
{
    const QDBusMessage grab =
        Atspi::call(object, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GrabFocus"));
    const QDBusMessage reply = co_await AtspiApplication::act(application, grab);
    if (!Atspi::truth(reply))
        co_return false;
    co_return co_await comesTo(application, object, AtspiState::Focused);
}

// What has the keyboard focus; nothing where the application does not tell.
QCoro::Task<AtspiReference> focused(Application application)
{
    const AtspiRule rule{{}, {AtspiState::Focused}};
    const QDBusMessage reply = co_await ask(application, Atspi::matches(application->root(), rule, 1));
    co_return Atspi::references(reply).value(0);
}

QCoro::Task<double> windowCount(Application application)
{
    const QDBusMessage question =
        Atspi::property(application->root(), Atspi::accessibleInterface, QStringLiteral("ChildCount"));
    const QDBusMessage reply = co_await ask(application, question);
    co_return Atspi::number(reply).value_or(0);
}

// Gives the focus back to what had it, unless the press has moved it or opened or closed a window.
QCoro::Task<void> returnFocus(Application application, AtspiReference before, AtspiReference button,
                              double windowsBefore)
{
    const double windows = co_await windowCount(application);
    const AtspiReference now = co_await focused(application);
    const bool hasMoved = windows != windowsBefore || (!now.isNull() && now != button);
    if (!hasMoved)
        co_await takeFocus(application, before);
}

QCoro::Task<std::optional<bool>> pressButton(Application application, AtspiReference button,
                                             Atspi::StrikeKey strikeKey)
{
    const AtspiReference before = co_await focused(application);
    const double windows = co_await windowCount(application);
    const bool hasFocus = co_await takeFocus(application, button);
    if (!hasFocus)
        co_return std::nullopt;
    const bool isHandled = co_await strikeKey(spaceKey);
    // A key that is still under way would reach whoever gets the focus back.
    if (before.isNull() || before == button || !isHandled)
        co_return true;
    try {
        co_await returnFocus(application, before, button, windows);
    } catch (const PlatformError &) {
        // It may have been the button that ends the application.
    }
    co_return true;
}

} // namespace

QCoro::Task<std::optional<bool>> Atspi::pressWithKey(std::shared_ptr<AtspiApplication> application,
                                                     AtspiReference object, StrikeKey strikeKey)
{
    if (application->toolkit() != AtspiToolkit::Gtk3)
        co_return std::nullopt;
    const AtspiRole role = co_await roleOf(application, object);
    const QDBusMessage states = co_await statesOf(application, object);
    const bool isButton = role == AtspiRole::PushButton && hasState(states, AtspiState::Showing);
    if (!isButton && !isItem(role))
        co_return std::nullopt;
    if (!hasState(states, AtspiState::Sensitive))
        co_return false;
    if (isButton)
        co_return co_await pressButton(application, object, strikeKey);
    co_return co_await pressItem(application, object, strikeKey);
}

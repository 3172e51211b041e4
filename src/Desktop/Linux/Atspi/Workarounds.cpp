// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Workarounds.h"

#include "Desktop/Linux/Atspi/Environment.h"
#include "Desktop/Linux/Atspi/Reader.h"
#include "Desktop/PlatformError.h"

#include <QCoroTimer>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr std::uint16_t returnKey = 0x24;
constexpr std::uint16_t spaceKey = 0x31;

// Polling for a menu to open or a control to get the focus.
constexpr auto pace = 10ms;
constexpr int mostRounds = 50;

// More levels than real menus have.
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
    const QDBusMessage reply = co_await ask(application, Atspi::getRole(object));
    co_return Atspi::role(reply);
}

QCoro::Task<QDBusMessage> statesOf(Application application, AtspiReference object)
{
    co_return co_await ask(application, Atspi::getState(object));
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

// The menus that contain the item, innermost first.
QCoro::Task<QList<AtspiReference>> menusOf(Application application, AtspiReference item)
{
    QList<AtspiReference> menus;
    AtspiReference object = item;
    while (menus.size() < mostMenus) {
        const QDBusMessage reply = co_await ask(application, Atspi::getParent(object));
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

// A menu's action only opens it, so the call returns at once.
QCoro::Task<bool> open(Application application, AtspiReference menu, AtspiReference inside)
{
    const QDBusMessage states = co_await statesOf(application, inside);
    if (Atspi::hasState(states, AtspiState::Showing))
        co_return true;
    co_await AtspiApplication::act(application, Atspi::doAction(menu, 0));
    co_return co_await comesTo(application, inside, AtspiState::Showing);
}

// Opens the item's menus and selects the item, so that Return activates it.
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
    const QDBusMessage position = co_await ask(application, Atspi::getIndexInParent(item));
    const int index = static_cast<int>(Atspi::number(position).value_or(-1));
    co_await AtspiApplication::act(application, Atspi::selectChild(menus.constFirst(), index));
    co_return co_await comesTo(application, item, AtspiState::Selected);
}

QCoro::Task<std::optional<bool>> pressItem(Application application, AtspiReference item,
                                           AtspiEnvironment &environment, RunningApplication receiver)
{
    const bool isChosen = co_await choose(application, item);
    if (!isChosen)
        co_return std::nullopt;
    co_await environment.strikeKey(receiver, returnKey);
    co_return true;
}

QCoro::Task<bool> takeFocus(Application application, AtspiReference object)
{
    const QDBusMessage reply = co_await AtspiApplication::act(application, Atspi::grabFocus(object));
    if (!Atspi::truth(reply))
        co_return false;
    co_return co_await comesTo(application, object, AtspiState::Focused);
}

// The focused element, or a null reference if the application doesn't report it.
QCoro::Task<AtspiReference> focused(Application application)
{
    const AtspiRule rule{{}, {AtspiState::Focused}};
    const QDBusMessage reply = co_await ask(application, Atspi::getMatches(application->root(), rule, 1));
    co_return Atspi::references(reply).value(0);
}

QCoro::Task<double> windowCount(Application application)
{
    const QDBusMessage reply = co_await ask(application, Atspi::getChildCount(application->root()));
    co_return Atspi::number(reply).value_or(0);
}

// Restores the focus unless the press moved it or opened or closed a window.
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
                                             AtspiEnvironment &environment, RunningApplication receiver)
{
    const AtspiReference before = co_await focused(application);
    const double windows = co_await windowCount(application);
    const bool hasFocus = co_await takeFocus(application, button);
    if (!hasFocus)
        co_return std::nullopt;
    const bool isHandled = co_await environment.strikeKey(receiver, spaceKey);
    // A key still in flight would reach the element that gets the focus back.
    if (before.isNull() || before == button || !isHandled)
        co_return true;
    try {
        co_await returnFocus(application, before, button, windows);
    } catch (const PlatformError &) {
        // The button may have quit the application.
    }
    co_return true;
}

// Limits for waking pages: controls to query, rounds, and the interval between rounds.
constexpr qsizetype mostProbes = 32;
constexpr int mostWakingRounds = 8;
constexpr std::chrono::milliseconds wakingPace = 40ms;

// Up to `mostProbes` controls of web pages, enough that one of them has an action or a text.
QList<AtspiReference> controlsOfPages(const AtspiCache &cache)
{
    QList<AtspiReference> queue;
    for (const AtspiCacheItem &item : cache.items()) {
        if (item.role == AtspiRole::DocumentWeb)
            queue.append(item.object);
    }
    QList<AtspiReference> controls;
    // Bounds the loop in case the cache contains a cycle.
    const qsizetype mostLooks = cache.items().size();
    for (qsizetype next = 0; next < std::min(queue.size(), mostLooks) && controls.size() < mostProbes;
         ++next) {
        const AtspiCacheItem *item = cache.find(queue.at(next));
        if (!item)
            continue;
        if (!Atspi::axRole(item->role, AtspiRole::Invalid).isEmpty())
            controls.append(item->object);
        queue += cache.children(*item);
    }
    return controls;
}

QList<AtspiReading> readingsOf(const QList<AtspiReference> &objects)
{
    QList<AtspiReading> readings;
    for (const AtspiReference &object : objects) {
        AtspiReading reading;
        reading.object = object;
        readings.append(reading);
    }
    return readings;
}

} // namespace

QCoro::Task<std::optional<bool>> Atspi::pressWithKey(std::shared_ptr<AtspiApplication> application,
                                                     AtspiReference object, AtspiEnvironment &environment,
                                                     RunningApplication receiver)
{
    if (!actsInsideMessages(application->toolkit()))
        co_return std::nullopt;
    const AtspiRole role = co_await roleOf(application, object);
    const QDBusMessage states = co_await statesOf(application, object);
    const bool isButton = role == AtspiRole::PushButton && hasState(states, AtspiState::Showing);
    if (!isButton && !isItem(role))
        co_return std::nullopt;
    if (!hasState(states, AtspiState::Sensitive))
        co_return false;
    if (isButton)
        co_return co_await pressButton(application, object, environment, receiver);
    co_return co_await pressItem(application, object, environment, receiver);
}

QCoro::Task<bool> Atspi::wakePages(std::shared_ptr<AtspiApplication> application,
                                   std::shared_ptr<const AtspiCache> cache)
{
    QList<QDBusMessage> questions;
    for (const AtspiReference &control : controlsOfPages(*cache)) {
        questions.append(getCharacterCount(control));
        questions.append(getActionCount(control));
    }
    for (int round = 0; round < mostWakingRounds && !questions.isEmpty(); ++round) {
        const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, questions);
        for (const QDBusMessage &reply : replies) {
            if (number(reply).value_or(0) > 0)
                co_return true;
        }
        co_await QCoro::sleepFor(wakingPace);
    }
    co_return false;
}

QCoro::Task<bool> Atspi::hidesControls(std::shared_ptr<AtspiApplication> application,
                                       std::shared_ptr<const AtspiCache> cache)
{
    if (!mayHideControls(application->toolkit()))
        co_return false;
    const auto nothingOutlined = std::make_shared<AtspiOutline>(0);
    AtspiReader windowsReader(application, cache, nothingOutlined, readingsOf({application->root()}));
    co_await windowsReader.read();
    const QList<AtspiReference> windows = windowsReader.readings().constFirst().children;
    AtspiReader contentsReader(application, cache, nothingOutlined, readingsOf(windows));
    co_await contentsReader.read();
    const QList<AtspiReading> contents = contentsReader.readings();
    co_return std::all_of(contents.cbegin(), contents.cend(),
                          [](const AtspiReading &window) { return window.children.isEmpty(); });
}

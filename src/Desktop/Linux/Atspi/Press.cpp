// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Press.h"

#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QDBusError>
#include <QStringList>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

// More than any real control has; bounds what an application can claim.
constexpr int mostActions = 64;

QCoro::Task<int> actionCount(std::shared_ptr<AtspiApplication> application, AtspiReference object)
{
    const QList<QDBusMessage> question{Atspi::getActionCount(object)};
    int count = 0;
    const int rounds = Atspi::loadsPagesLazily(application->toolkit()) ? 5 : 1;
    for (int round = 0; round < rounds && count == 0; ++round) {
        if (round > 0)
            co_await QCoro::sleepFor(100ms);
        const QList<QDBusMessage> reply = co_await AtspiApplication::exchange(application, question);
        const double told = Atspi::number(reply.constFirst()).value_or(0);
        count = static_cast<int>(std::clamp<double>(told, 0, mostActions));
    }
    co_return count;
}

QCoro::Task<QStringList> actionNames(std::shared_ptr<AtspiApplication> application, AtspiReference object)
{
    const int count = co_await actionCount(application, object);
    // GetActions would return all names in one call, but localized.
    QList<QDBusMessage> calls;
    for (int i = 0; i < count; ++i)
        calls.append(Atspi::getActionName(object, i));
    QStringList names;
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, calls);
    for (const QDBusMessage &reply : replies)
        names.append(Atspi::text(reply).value_or(QString()));
    co_return names;
}

struct Press
{
    AtspiReference object;
    int action = -1; // -1 if there is no press action
};

QCoro::Task<Press> pressOf(std::shared_ptr<AtspiApplication> application, AtspiReference object)
{
    const QStringList names = co_await actionNames(application, object);
    const Press own{object, Atspi::pressAction(names)};
    if (own.action >= 0 || !Atspi::wrapsMenuButtons(application->toolkit()))
        co_return own;
    const QList<QDBusMessage> question{Atspi::getChildren(object)};
    const QList<QDBusMessage> reply = co_await AtspiApplication::exchange(application, question);
    const QList<AtspiReference> children = Atspi::references(reply.constFirst());
    if (children.isEmpty())
        co_return own;
    const QStringList innerNames = co_await actionNames(application, children.constFirst());
    const Press inner{children.constFirst(), Atspi::pressAction(innerNames)};
    co_return inner;
}

} // namespace

QCoro::Task<bool> Atspi::press(std::shared_ptr<AtspiApplication> application, AtspiReference object)
{
    const Press press = co_await pressOf(application, object);
    if (press.action < 0)
        co_return false;
    const QDBusPendingCall pending = application->bus().asyncCall(
        doAction(press.object, press.action), static_cast<int>(AtspiApplication::callLimit.count()));
    const QFuture<QDBusMessage> answer = DBusReply::of(pending);
    const QDBusMessage reply = co_await answer;
    if (reply.type() == QDBusMessage::ReplyMessage)
        co_return truth(reply);
    const QDBusError::ErrorType error = QDBusError(reply).type();
    if (error != QDBusError::NoReply && error != QDBusError::Timeout)
        co_return false;
    const QList<QDBusMessage> anything{getName(application->root())};
    co_await AtspiApplication::exchange(application, anything);
    co_return true;
}

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Application.h"

#include "Base/Text.h"
#include "Desktop/Linux/Atspi/Batch.h"
#include "Desktop/Linux/Atspi/Peer.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>

#include <utility>

namespace {

PlatformError failure(AtspiBatch::End end, const QString &name)
{
    if (end == AtspiBatch::End::Gone)
        return PlatformError(QStringLiteral("“%1” has quit.").arg(name));
    if (end == AtspiBatch::End::Disconnected)
        return PlatformError(QStringLiteral("The desktop's accessibility service has stopped."));
    return PlatformError(QStringLiteral("“%1” isn't responding.").arg(name));
}

} // namespace

AtspiApplication::AtspiApplication(const QDBusConnection &bus, const AtspiReference &root,
                                   const QString &processName)
    : m_bus(bus), m_root(root), m_name(processName)
{
}

QCoro::Task<std::shared_ptr<AtspiApplication>>
AtspiApplication::introduced(QDBusConnection bus, AtspiReference root, QString processName)
{
    const auto application = std::make_shared<AtspiApplication>(bus, root, processName);
    const QList<QDBusMessage> calls{
        Atspi::property(root, Atspi::accessibleInterface, QStringLiteral("Name")),
        Atspi::property(root, Atspi::applicationInterface, QStringLiteral("ToolkitName")),
    };
    const QList<QDBusMessage> replies = co_await exchange(application, calls);
    const QString name = Atspi::label(Atspi::text(replies.at(0)).value_or(QString()), AtspiToolkit::Other);
    if (!name.isEmpty())
        application->m_name = name;
    application->m_toolkit = Atspi::toolkit(Atspi::text(replies.at(1)).value_or(QString()));
    co_return application;
}

const QDBusConnection &AtspiApplication::questions() const
{
    return m_peer ? m_peer->connection() : m_bus;
}

void AtspiApplication::askOver(std::shared_ptr<AtspiPeer> peer)
{
    m_peer = std::move(peer);
}

QCoro::Task<QList<QDBusMessage>> AtspiApplication::exchange(std::shared_ptr<AtspiApplication> application,
                                                            QList<QDBusMessage> calls)
{
    co_return co_await exchangeOver(application->questions(), application, calls);
}

QCoro::Task<QDBusMessage> AtspiApplication::act(std::shared_ptr<AtspiApplication> application,
                                                QDBusMessage call)
{
    const QList<QDBusMessage> calls{call};
    const QList<QDBusMessage> replies = co_await exchangeOver(application->bus(), application, calls);
    co_return replies.constFirst();
}

QCoro::Task<QList<QDBusMessage>> AtspiApplication::exchangeOver(QDBusConnection connection,
                                                                std::shared_ptr<AtspiApplication> application,
                                                                QList<QDBusMessage> calls)
{
    if (calls.isEmpty())
        co_return {};
    if (application->m_waited >= walkLimit)
        throw failure(AtspiBatch::End::Silent, application->m_name);
    QElapsedTimer waiting;
    waiting.start();
    const AtspiBatch::Limits limits{callLimit, walkLimit - application->m_waited};
    const auto batch = std::make_shared<AtspiBatch>(connection, application->m_root.service, calls, limits);
    const QFuture<AtspiBatch::End> future = batch->start();
    AtspiBatch::End end = co_await future;
    // A connection of the application's own ends with the application.
    if (end == AtspiBatch::End::Disconnected && connection.name() != application->m_bus.name())
        end = AtspiBatch::End::Gone;
    application->m_waited += std::chrono::milliseconds(waiting.elapsed());
    if (end != AtspiBatch::End::Answered)
        throw failure(end, application->m_name);
    co_return batch->replies();
}

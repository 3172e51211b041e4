// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/LinuxProgramInstance.h"

#include "Desktop/Deadlines.h"
#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QDBusError>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

constexpr auto busLimit = static_cast<int>(Deadlines::answer.count());
constexpr int instanceLimit = 3000; // ms
constexpr int attempts = 3;

const QString interface = u"org.freedesktop.Application"_s;

PlatformError unanswered()
{
    return PlatformError(u"Orvane is already running, but doesn't answer."_s);
}

} // namespace

LinuxProgramInstance::LinuxProgramInstance()
    : m_launchToken(qEnvironmentVariable("XDG_ACTIVATION_TOKEN")),
      m_connectionName(u"orvane-instance-"_s + QUuid::createUuid().toString()),
      m_worker(u"orvane.instance"_s, u"The session bus"_s)
{
    if (m_launchToken.isEmpty())
        m_launchToken = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    connect(&m_service, &ApplicationService::activated, this, &ProgramInstance::activated);
    connect(&m_service, &ApplicationService::toggleRequested, this, &ProgramInstance::toggleRequested);
}

LinuxProgramInstance::~LinuxProgramInstance()
{
    leaveBus();
}

void LinuxProgramInstance::leaveBus()
{
    m_worker.post([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

QCoro::Task<InstanceStanding> LinuxProgramInstance::claim(InstanceRequest request)
{
    // Shutdown may be slow while work is in progress; release the name so that a new start needn't wait.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &LinuxProgramInstance::leaveBus);
    if (!co_await connectToBus())
        co_return InstanceStanding::First;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (co_await requestName() == Name::Ours)
            co_return InstanceStanding::First;
        const Delivery delivery = co_await deliver(request);
        if (delivery == Delivery::Taken)
            co_return InstanceStanding::Later;
        // Don't retry: an instance that is merely slow would act twice.
        if (delivery == Delivery::Unanswered)
            break;
    }
    // It may have exited instead of replying.
    if (co_await requestName() == Name::Ours)
        co_return InstanceStanding::First;
    throw unanswered();
}

// The object must be registered before the name is requested: calls may arrive as soon as the name is owned.
QCoro::Task<bool> LinuxProgramInstance::connectToBus()
{
    auto job = [name = m_connectionName] {
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name).isConnected();
    };
    try {
        if (!co_await m_worker.run(std::move(job)))
            co_return false;
    } catch (const PlatformError &) {
        // A bus that doesn't respond counts as absent.
        co_return false;
    }
    co_return bus().registerObject(objectPath, &m_service, QDBusConnection::ExportAllSlots);
}

QCoro::Task<LinuxProgramInstance::Name> LinuxProgramInstance::requestName()
{
    constexpr std::uint32_t doNotQueue = 4;
    constexpr std::uint32_t ownedByAnother = 3;
    const QString daemon = u"org.freedesktop.DBus"_s;
    QDBusMessage call =
        QDBusMessage::createMethodCall(daemon, u"/org/freedesktop/DBus"_s, daemon, u"RequestName"_s);
    call.setArguments({QString(busName), doNotQueue});
    const QFuture<QDBusMessage> answer = DBusReply::of(bus().asyncCall(call, busLimit));
    const QDBusMessage reply = co_await answer;
    const bool isTaken =
        reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toUInt() == ownedByAnother;
    co_return isTaken ? Name::Taken : Name::Ours;
}

QDBusMessage LinuxProgramInstance::messageFor(InstanceRequest request) const
{
    const QVariantMap data = ApplicationService::platformData(m_launchToken);
    const bool isToggle = request == InstanceRequest::Toggle;
    QDBusMessage call = QDBusMessage::createMethodCall(busName, objectPath, interface,
                                                       isToggle ? u"ActivateAction"_s : u"Activate"_s);
    if (isToggle)
        call.setArguments({QString(ApplicationService::toggleAction), QVariantList(), data});
    else
        call.setArguments({data});
    // Don't let the bus restart an instance that has just exited.
    call.setAutoStartService(false);
    return call;
}

QCoro::Task<LinuxProgramInstance::Delivery> LinuxProgramInstance::deliver(InstanceRequest request)
{
    if (request == InstanceRequest::Nothing)
        co_return Delivery::Taken;
    const QDBusMessage message = messageFor(request);
    const QFuture<QDBusMessage> answer = DBusReply::of(bus().asyncCall(message, instanceLimit));
    const QDBusMessage reply = co_await answer;
    if (reply.type() == QDBusMessage::ReplyMessage)
        co_return Delivery::Taken;
    const bool isSilent = QDBusError(reply).type() == QDBusError::NoReply;
    co_return isSilent ? Delivery::Unanswered : Delivery::Refused;
}

// SPDX-License-Identifier: Apache-2.0
// The single running instance, on a real session bus.
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QCoroFuture>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30'000; // milliseconds

InstanceStanding claim(LinuxProgramInstance &instance, InstanceRequest request = InstanceRequest::Activate)
{
    return Awaited::result(instance.claim(request));
}

QString errorOf(LinuxProgramInstance &instance, InstanceRequest request)
{
    try {
        claim(instance, request);
    } catch (const PlatformError &error) {
        return error.errorDescription();
    }
    return QString();
}

// An instance started with these tokens in its environment.
std::unique_ptr<LinuxProgramInstance> startedWith(const QByteArray &token, const QByteArray &startup = {})
{
    qputenv("XDG_ACTIVATION_TOKEN", token);
    qputenv("DESKTOP_STARTUP_ID", startup);
    auto instance = std::make_unique<LinuxProgramInstance>();
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
    return instance;
}

QCoro::Task<QDBusMessage> reply(QFuture<QDBusMessage> pending)
{
    co_return co_await pending;
}

} // namespace

// Owns the well-known name but doesn't reply properly.
class SilentInstance : public QDBusVirtualObject
{
public:
    enum class Behaviour { Hangs, EndsWhenAsked, Refuses };

    explicit SilentInstance(Behaviour behaviour) : m_behaviour(behaviour)
    {
        if (!m_bus.registerVirtualObject(LinuxProgramInstance::objectPath, this) ||
            !m_bus.registerService(LinuxProgramInstance::busName))
            qFatal("The instance's name is taken");
    }
    ~SilentInstance() override { QDBusConnection::disconnectFromBus(u"silent"_s); }

    int calls = 0;

    QString introspect(const QString & /*path*/) const override { return QString(); }
    bool handleMessage(const QDBusMessage & /*message*/, const QDBusConnection & /*connection*/) override
    {
        ++calls;
        if (m_behaviour == Behaviour::EndsWhenAsked) {
            m_bus = QDBusConnection(QString());
            QDBusConnection::disconnectFromBus(u"silent"_s);
        }
        return m_behaviour != Behaviour::Refuses;
    }

private:
    Behaviour m_behaviour;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"silent"_s);
};

class LinuxProgramInstanceTest : public QObject
{
    Q_OBJECT

private:
    QDBusMessage ask(const QString &method, const QVariantList &arguments)
    {
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"desktop"_s);
        QDBusMessage call = QDBusMessage::createMethodCall(u"org.orvane.Orvane"_s, u"/org/orvane/Orvane"_s,
                                                           u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        return Awaited::result(reply(DBusReply::of(bus.asyncCall(call))));
    }

private Q_SLOTS:
    void aLaterStartForwardsItsRequest_data()
    {
        QTest::addColumn<InstanceRequest>("request");
        QTest::addColumn<QStringList>("activations");
        QTest::addColumn<QStringList>("toggles");
        QTest::newRow("activate") << InstanceRequest::Activate << QStringList{u"token-2"_s} << QStringList();
        QTest::newRow("toggle") << InstanceRequest::Toggle << QStringList() << QStringList{u"token-2"_s};
        QTest::newRow("nothing") << InstanceRequest::Nothing << QStringList() << QStringList();
    }

    void aLaterStartForwardsItsRequest()
    {
        QFETCH(InstanceRequest, request);
        const auto first = startedWith("token-1");
        const auto later = startedWith("token-2");
        QStringList activations;
        QStringList toggles;
        connect(first.get(), &ProgramInstance::activated, this,
                [&](const QString &token) { activations << token; });
        connect(first.get(), &ProgramInstance::toggleRequested, this,
                [&](const QString &token) { toggles << token; });
        QCOMPARE(claim(*first), InstanceStanding::First);
        QCOMPARE(claim(*later, request), InstanceStanding::Later);
        QTEST(activations, "activations");
        QTEST(toggles, "toggles");
    }

    void theLaunchTokenComesFromTheEnvironment_data()
    {
        QTest::addColumn<QByteArray>("activation");
        QTest::addColumn<QByteArray>("startup");
        QTest::addColumn<QString>("token");
        QTest::newRow("both") << QByteArray("a") << QByteArray("s") << u"a"_s;
        QTest::newRow("activation") << QByteArray("a") << QByteArray() << u"a"_s;
        QTest::newRow("startup") << QByteArray() << QByteArray("s_TIME12") << u"s_TIME12"_s;
        QTest::newRow("none") << QByteArray() << QByteArray() << QString();
    }

    void theLaunchTokenComesFromTheEnvironment()
    {
        QFETCH(QByteArray, activation);
        QFETCH(QByteArray, startup);
        QTEST(startedWith(activation, startup)->launchToken(), "token");
    }

    void ofConcurrentStartsExactlyOneIsFirst()
    {
        constexpr int count = 10;
        std::vector<std::unique_ptr<LinuxProgramInstance>> instances;
        int activations = 0;
        for (int i = 0; i < count; ++i) {
            instances.push_back(std::make_unique<LinuxProgramInstance>());
            connect(instances.back().get(), &ProgramInstance::activated, this,
                    [&activations] { ++activations; });
        }
        std::vector<QCoro::Task<InstanceStanding>> claims;
        for (const auto &instance : instances)
            claims.push_back(instance->claim(InstanceRequest::Activate));
        int firsts = 0;
        for (auto &each : claims)
            firsts += Awaited::result(std::move(each)) == InstanceStanding::First ? 1 : 0;
        QCOMPARE(firsts, 1);
        QCOMPARE(activations, count - 1);
    }

    void whenTheFirstHasEndedTheNextIsTheFirst()
    {
        auto first = std::make_unique<LinuxProgramInstance>();
        QCOMPARE(claim(*first), InstanceStanding::First);
        first.reset();
        LinuxProgramInstance next;
        QCOMPARE(claim(next), InstanceStanding::First);
    }

    void aHungInstanceIsReported()
    {
        const SilentInstance hanging(SilentInstance::Behaviour::Hangs);
        LinuxProgramInstance later;
        QElapsedTimer elapsed;
        elapsed.start();
        QCOMPARE(errorOf(later, InstanceRequest::Toggle),
                 u"Orvane is already running, but doesn't answer."_s);
        QVERIFY(elapsed.elapsed() < patience);
        // A retry would toggle twice once it wakes up.
        QCOMPARE(hanging.calls, 1);
    }

    void aRefusingInstanceIsReported()
    {
        const SilentInstance refusing(SilentInstance::Behaviour::Refuses);
        LinuxProgramInstance later;
        QCOMPARE(errorOf(later, InstanceRequest::Activate),
                 u"Orvane is already running, but doesn't answer."_s);
    }

    void anInstanceThatQuitsDuringTheCallIsReplaced()
    {
        const SilentInstance ending(SilentInstance::Behaviour::EndsWhenAsked);
        LinuxProgramInstance later;
        QCOMPARE(claim(later), InstanceStanding::First);
        QCOMPARE(ending.calls, 1);
    }

    void desktopsActivateItOverTheBus_data()
    {
        QTest::addColumn<QVariantMap>("platformData");
        QTest::addColumn<QString>("token");
        QTest::newRow("activation token") << QVariantMap{{u"activation-token"_s, u"a"_s}} << u"a"_s;
        QTest::newRow("startup identifier") << QVariantMap{{u"desktop-startup-id"_s, u"s"_s}} << u"s"_s;
        QTest::newRow("both") << QVariantMap{{u"desktop-startup-id"_s, u"s"_s},
                                             {u"activation-token"_s, u"a"_s}}
                              << u"a"_s;
        QTest::newRow("none") << QVariantMap() << QString();
        QTest::newRow("of a wrong type")
            << QVariantMap{{u"activation-token"_s, QVariantMap{{u"x"_s, 1}}}} << QString();
    }

    void desktopsActivateItOverTheBus()
    {
        QFETCH(QVariantMap, platformData);
        QFETCH(QString, token);
        LinuxProgramInstance instance;
        QStringList told;
        connect(&instance, &ProgramInstance::activated, this,
                [&](const QString &given) { told << u"activate "_s + given; });
        connect(&instance, &ProgramInstance::toggleRequested, this,
                [&](const QString &given) { told << u"toggle "_s + given; });
        QCOMPARE(claim(instance), InstanceStanding::First);
        QCOMPARE(ask(u"Activate"_s, {platformData}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(ask(u"Open"_s, {QStringList{u"file:///x"_s}, platformData}).type(),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(ask(u"ActivateAction"_s, {u"toggle"_s, QVariantList(), platformData}).type(),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(told, (QStringList{u"activate "_s + token, u"activate "_s + token, u"toggle "_s + token}));
    }

    void unknownActionsAreRefused()
    {
        LinuxProgramInstance instance;
        QSignalSpy activations(&instance, &ProgramInstance::activated);
        QSignalSpy toggles(&instance, &ProgramInstance::toggleRequested);
        QCOMPARE(claim(instance), InstanceStanding::First);
        const QDBusMessage answer = ask(u"ActivateAction"_s, {u"explode"_s, QVariantList(), QVariantMap()});
        QCOMPARE(answer.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(activations.size() + toggles.size(), 0);
    }

    void onlyTheInterfaceIsExported()
    {
        LinuxProgramInstance instance;
        QCOMPARE(claim(instance), InstanceStanding::First);
        QCOMPARE(ask(u"deleteLater"_s, {}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(ask(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
    }
};

QTEST_MAIN(LinuxProgramInstanceTest)
#include "LinuxProgramInstanceTest.moc"

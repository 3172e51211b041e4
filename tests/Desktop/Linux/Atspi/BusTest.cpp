// SPDX-License-Identifier: Apache-2.0
// The accessibility permission, and the loss of the accessibility bus.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QDBusVariant>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const AtspiReference launcher{u"org.a11y.Bus"_s, u"/org/a11y/bus"_s};

void setEnabled(bool enabled)
{
    const QVariantList arguments{u"org.a11y.Status"_s, u"IsEnabled"_s,
                                 QVariant::fromValue(QDBusVariant(enabled))};
    QDBusConnection::sessionBus().call(
        Atspi::call(launcher, u"org.freedesktop.DBus.Properties"_s, u"Set"_s, arguments));
}

pid_t processOf(const QDBusConnection &bus, const QString &service)
{
    const AtspiReference daemon{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s};
    const QDBusMessage reply =
        bus.call(Atspi::call(daemon, daemon.service, u"GetConnectionUnixProcessID"_s, {service}));
    return static_cast<pid_t>(Atspi::number(reply).value_or(0));
}

} // namespace

class AtspiBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trustRequiresTheSwitchAndTheKeys();
    void requestingTrustEnablesAccessibility();
    void aLostBusIsReported();
    void aRestartedBusIsFound();
    void theLauncherIsWaitedFor();

private:
    AtspiBench m_bench;
};

void AtspiBusTest::trustRequiresTheSwitchAndTheKeys()
{
    setEnabled(true);
    QVERIFY(Awaited::result(m_bench.accessibility.isProcessTrusted()));
    m_bench.hasKeys = false;
    QVERIFY(!Awaited::result(m_bench.accessibility.isProcessTrusted()));
    m_bench.hasKeys = true;
    setEnabled(false);
    QVERIFY(!Awaited::result(m_bench.accessibility.isProcessTrusted()));
}

void AtspiBusTest::requestingTrustEnablesAccessibility()
{
    setEnabled(false);
    Awaited::result(m_bench.accessibility.requestTrust());
    QVERIFY(Awaited::result(m_bench.accessibility.isProcessTrusted()));
}

void AtspiBusTest::theLauncherIsWaitedFor()
{
    setEnabled(false);
    const pid_t process = processOf(QDBusConnection::sessionBus(), launcher.service);
    QVERIFY(process > 0);
    ::kill(process, SIGKILL);
    QTRY_COMPARE_WITH_TIMEOUT(processOf(QDBusConnection::sessionBus(), launcher.service), 0,
                              AtspiBench::patience);
    Awaited::result(m_bench.accessibility.requestTrust());
    QVERIFY(Awaited::result(m_bench.accessibility.isProcessTrusted()));
}

void AtspiBusTest::aLostBusIsReported()
{
    const auto editor = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*editor);
    const NodeByNode other;
    const pid_t daemon = processOf(other.bus(), u"org.freedesktop.DBus"_s);
    QVERIFY(daemon > 0);
    ::kill(daemon, SIGKILL);
    QTRY_VERIFY_WITH_TIMEOUT(!other.bus().isConnected(), AtspiBench::patience);
    QTRY_COMPARE_WITH_TIMEOUT(AtspiBench::errorOf(AtspiBench::walk(tree)),
                              u"The desktop's accessibility service has stopped."_s, AtspiBench::patience);
    // The launcher may start a new bus, without the application, or exit with the old one.
    QVERIFY(!AtspiBench::errorOf(m_bench.accessibility.applicationTree({editor->processId()})).isEmpty());
}

void AtspiBusTest::aRestartedBusIsFound()
{
    // The next call restarts a killed service.
    const pid_t process = processOf(QDBusConnection::sessionBus(), launcher.service);
    if (process > 0)
        ::kill(process, SIGKILL);
    const auto trusted = [&] {
        setEnabled(true);
        return Awaited::result(m_bench.accessibility.isProcessTrusted());
    };
    QTRY_VERIFY_WITH_TIMEOUT(trusted(), AtspiBench::patience);
    const auto editor = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Undo"_s));
}

QTEST_GUILESS_MAIN(AtspiBusTest)
#include "BusTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Direct connections to applications: which are accepted, that they reply as the bus does, and that they are
// closed.
#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bench.h"
#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/Linux/Atspi/Finder.h"
#include "Support/Awaited.h"
#include "Support/Freezing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

using Application = std::shared_ptr<AtspiApplication>;

// An application that offers a given address.
class OfferingApplication : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.a11y.atspi.Application")

public:
    QString address;

public Q_SLOTS:
    QString GetApplicationBusAddress() const { return address; }
};

QCoro::Task<Application> createApplication(std::shared_ptr<AtspiBus> bus, qint64 process)
{
    const QDBusConnection connection = co_await bus->connection();
    const std::optional<AtspiReference> root = co_await Atspi::findApplication(connection, process);
    if (!root)
        co_return Application();
    co_return co_await AtspiApplication::create(connection, *root, u"The program"_s);
}

// Opens a peer of an application that offers this address.
QCoro::Task<std::shared_ptr<AtspiPeer>> peerOffered(std::shared_ptr<AtspiBus> bus, QString address)
{
    QDBusConnection connection = co_await bus->connection();
    OfferingApplication offering;
    offering.address = address;
    connection.registerObject(Atspi::rootPath, &offering, QDBusConnection::ExportAllSlots);
    const AtspiReference root{connection.baseService(), Atspi::rootPath};
    const auto application = std::make_shared<AtspiApplication>(connection, root, u"The program"_s);
    const std::shared_ptr<AtspiPeer> peer = co_await AtspiPeer::open(bus, application);
    connection.unregisterObject(Atspi::rootPath);
    co_return peer;
}

QDBusMessage anyQuestion(const Application &application)
{
    return Atspi::call(application->root(), Atspi::accessibleInterface, u"GetChildren"_s);
}

QList<AtspiReference> windowsOf(const Application &application)
{
    return Atspi::references(
        Awaited::result(AtspiApplication::exchange(application, {anyQuestion(application)})).constFirst());
}

qsizetype openDescriptors(qint64 process)
{
    return QDir(u"/proc/%1/fd"_s.arg(process)).entryList(QDir::System | QDir::Files).size();
}

} // namespace

class AtspiPeerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAddressMayOnlyNameASocket_data();
    void anAddressMayOnlyNameASocket();
    void aPeerRepliesLikeTheBus_data();
    void aPeerRepliesLikeTheBus();
    void withoutAPeerTheBusIsUsed_data();
    void withoutAPeerTheBusIsUsed();
    void anAddressThatStartsAProgramIsRejected();
    void anUnresponsiveAddressIsRejected_data();
    void anUnresponsiveAddressIsRejected();
    void anotherApplicationsAddressIsRejected();
    void callsThatChangeStateUseTheBus();
    void anApplicationKilledDuringACallHasQuit();
    void aHungApplicationIsNamed();
    void treesLeaveNoOpenConnections();

private:
    // Waits until the application exposes its tree.
    Application applicationOf(const QProcess &program);
    // The application with a peer connection, stopped by SIGSTOP.
    Application stoppedApplicationOf(const QProcess &program);

    QTemporaryDir m_folder;
    AtspiBench m_bench;
    std::shared_ptr<AtspiBus> m_bus = std::make_shared<AtspiBus>();
};

Application AtspiPeerTest::applicationOf(const QProcess &program)
{
    if (!m_bench.waitForLabel(program, u"AXButton"_s, u"Undo"_s))
        return nullptr;
    return Awaited::result(createApplication(m_bus, program.processId()));
}

Application AtspiPeerTest::stoppedApplicationOf(const QProcess &program)
{
    const Application application = applicationOf(program);
    if (!application)
        return application;
    application->setPeer(Awaited::result(AtspiPeer::open(m_bus, application)));
    return Freezing::freeze(program.processId()) ? application : nullptr;
}

void AtspiPeerTest::anAddressMayOnlyNameASocket_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isSocket");
    QTest::newRow("a socket in a folder") << u"unix:path=/run/user/1000/at-spi2-socket-7"_s << true;
    QTest::newRow("a socket of an abstract name") << u"unix:abstract=/tmp/dbus-x,guid=0a"_s << true;
    QTest::newRow("none") << QString() << false;
    QTest::newRow("a program") << u"unixexec:path=/bin/true"_s << false;
    QTest::newRow("a program after a socket") << u"unix:path=/none;unixexec:path=/bin/true"_s << false;
    QTest::newRow("another machine") << u"tcp:host=example.org,port=80"_s << false;
    QTest::newRow("a folder to make one in") << u"unix:tmpdir=/tmp"_s << false;
    QTest::newRow("a bus") << u"autolaunch:"_s << false;
}

void AtspiPeerTest::anAddressMayOnlyNameASocket()
{
    QFETCH(QString, address);
    QFETCH(bool, isSocket);
    QCOMPARE(Atspi::isSocketAddress(address), isSocket);
}

void AtspiPeerTest::aPeerRepliesLikeTheBus_data()
{
    QFile file(m_folder.filePath(u"page.html"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write("<button>Undo</button>") < 0)
        qFatal("The page cannot be written.");
    const QString page = QUrl::fromLocalFile(file.fileName()).toString();
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("GTK 3") << u"mousepad"_s << QStringList();
    QTest::newRow("Firefox") << u"firefox-esr"_s << QStringList{u"--new-instance"_s, page};
    QTest::newRow("Chromium") << u"chromium"_s
                              << QStringList{u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                                             u"--force-renderer-accessibility"_s, page};
}

void AtspiPeerTest::aPeerRepliesLikeTheBus()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    const auto process = AtspiBench::start(program, arguments);
    const Application application = applicationOf(*process);
    QVERIFY(application);
    const QList<AtspiReference> overTheBus = windowsOf(application);
    const std::shared_ptr<AtspiPeer> peer = Awaited::result(AtspiPeer::open(m_bus, application));
    QVERIFY(peer);
    application->setPeer(peer);
    QCOMPARE(application->queryConnection().name(), peer->connection().name());
    QVERIFY(!overTheBus.isEmpty());
    QCOMPARE(windowsOf(application), overTheBus);
}

void AtspiPeerTest::withoutAPeerTheBusIsUsed_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("Qt") << u"featherpad"_s;
    QTest::newRow("GTK 4") << u"gnome-calculator"_s;
}

void AtspiPeerTest::withoutAPeerTheBusIsUsed()
{
    QFETCH(QString, program);
    const auto process = AtspiBench::start(program);
    const Application application = applicationOf(*process);
    QVERIFY(application);
    QVERIFY(!Awaited::result(AtspiPeer::open(m_bus, application)));
    QVERIFY(!windowsOf(application).isEmpty());
}

void AtspiPeerTest::anAddressThatStartsAProgramIsRejected()
{
    const QTemporaryDir folder;
    const QString trace = folder.filePath(u"started"_s);
    QVERIFY(!Awaited::result(peerOffered(m_bus, u"unixexec:path=/usr/bin/touch,argv1="_s + trace)));
    QVERIFY(!QFileInfo::exists(trace));
}

void AtspiPeerTest::anUnresponsiveAddressIsRejected_data()
{
    QTest::addColumn<bool>("listens");
    QTest::newRow("nobody listens there") << false;
    QTest::newRow("who listens there says nothing") << true;
}

void AtspiPeerTest::anUnresponsiveAddressIsRejected()
{
    QFETCH(bool, listens);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"socket"_s);
    QLocalServer server;
    if (listens)
        QVERIFY(server.listen(path));
    QVERIFY(!Awaited::result(peerOffered(m_bus, u"unix:path="_s + path)));
}

void AtspiPeerTest::anotherApplicationsAddressIsRejected()
{
    const auto program = AtspiBench::start(u"mousepad"_s);
    const Application application = applicationOf(*program);
    QVERIFY(application);
    const QList<QDBusMessage> question{
        Atspi::call(application->root(), Atspi::applicationInterface, u"GetApplicationBusAddress"_s)};
    const QDBusMessage reply =
        Awaited::result(AtspiApplication::exchange(application, question)).constFirst();
    const QString address = Atspi::text(reply).value_or(QString());
    QVERIFY(Atspi::isSocketAddress(address));
    QVERIFY(!Awaited::result(peerOffered(m_bus, address)));
}

void AtspiPeerTest::callsThatChangeStateUseTheBus()
{
    const auto program = AtspiBench::start(u"mousepad"_s);
    const Application application = applicationOf(*program);
    QVERIFY(application);
    // Every call on this connection fails.
    application->setPeer(std::make_shared<AtspiPeer>(m_bus, QDBusConnection(u"never connected"_s)));
    QVERIFY(
        !AtspiBench::errorOf(AtspiApplication::exchange(application, {anyQuestion(application)})).isEmpty());
    const QDBusMessage reply = Awaited::result(AtspiApplication::act(application, anyQuestion(application)));
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
}

void AtspiPeerTest::anApplicationKilledDuringACallHasQuit()
{
    const auto program = AtspiBench::start(u"mousepad"_s);
    const Application application = stoppedApplicationOf(*program);
    QVERIFY(application);
    // Already stopped when it is killed, so the call is certainly in flight.
    auto answer = AtspiApplication::exchange(application, {anyQuestion(application)});
    ::kill(static_cast<pid_t>(program->processId()), SIGKILL);
    QVERIFY(AtspiBench::errorOf(std::move(answer)).endsWith(u"” has quit."_s));
    const QString later =
        AtspiBench::errorOf(AtspiApplication::exchange(application, {anyQuestion(application)}));
    QVERIFY2(later.endsWith(u"” has quit."_s), qPrintable(later));
    program->waitForFinished();
}

void AtspiPeerTest::aHungApplicationIsNamed()
{
    const auto program = AtspiBench::start(u"mousepad"_s);
    const Application application = stoppedApplicationOf(*program);
    QVERIFY(application);
    const QString error =
        AtspiBench::errorOf(AtspiApplication::exchange(application, {anyQuestion(application)}));
    QVERIFY2(error.endsWith(u"” isn't responding."_s), qPrintable(error));
}

void AtspiPeerTest::treesLeaveNoOpenConnections()
{
    const auto program = AtspiBench::start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*program, u"AXButton"_s, u"Undo"_s));
    const qsizetype its = openDescriptors(program->processId());
    const qsizetype ours = openDescriptors(QCoreApplication::applicationPid());
    for (int i = 0; i < 20; ++i)
        QVERIFY(m_bench.tree(*program));
    QTRY_VERIFY_WITH_TIMEOUT(openDescriptors(program->processId()) <= its, AtspiBench::patience);
    QTRY_VERIFY_WITH_TIMEOUT(openDescriptors(QCoreApplication::applicationPid()) <= ours,
                             AtspiBench::patience);
}

QTEST_GUILESS_MAIN(AtspiPeerTest)
#include "PeerTest.moc"

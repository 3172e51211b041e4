// SPDX-License-Identifier: Apache-2.0
// The shell services with a session bus that accepts connections but never replies.
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/Window/LinuxAppearance.h"
#include "Support/Awaited.h"

#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class ShellSilentBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInstanceIsTheFirst()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"bus"_s);
        auto server = std::make_unique<QLocalServer>();
        QVERIFY(server->listen(path));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.toUtf8());
        LinuxProgramInstance instance;
        const LinuxAppearance appearance(nullptr);
        QCOMPARE(Awaited::result(instance.claim(InstanceRequest::Activate)), InstanceStanding::First);
        QVERIFY(!appearance.isDark());
        // Unblock the workers, so that the test can exit.
        server.reset();
    }
};

QTEST_MAIN(ShellSilentBusTest)
#include "ShellSilentBusTest.moc"

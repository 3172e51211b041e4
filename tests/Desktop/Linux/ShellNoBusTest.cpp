// SPDX-License-Identifier: Apache-2.0
// The shell services without a session bus.
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/Window/LinuxAppearance.h"
#include "Support/Awaited.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTest>

class ShellNoBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"); }

    void everyInstanceIsTheFirst()
    {
        LinuxProgramInstance one;
        LinuxProgramInstance two;
        QCOMPARE(Awaited::result(one.claim(InstanceRequest::Activate)), InstanceStanding::First);
        QCOMPARE(Awaited::result(two.claim(InstanceRequest::Toggle)), InstanceStanding::First);
    }

    void thePaletteDeterminesTheTheme()
    {
        const LinuxAppearance appearance(nullptr);
        QVERIFY(!appearance.isDark());
        QPalette dark;
        dark.setColor(QPalette::Window, Qt::black);
        dark.setColor(QPalette::WindowText, Qt::white);
        QGuiApplication::setPalette(dark);
        QTRY_VERIFY(appearance.isDark());
    }
};

QTEST_MAIN(ShellNoBusTest)
#include "ShellNoBusTest.moc"

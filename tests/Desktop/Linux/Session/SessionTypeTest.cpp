// SPDX-License-Identifier: Apache-2.0
// The session type: the X server takes precedence over the environment.
#include "Desktop/Linux/Session/SessionType.h"

#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(DisplayServer)
Q_DECLARE_METATYPE(SessionType)

class SessionTypeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theServerTakesPrecedenceOverTheEnvironment_data()
    {
        QTest::addColumn<DisplayServer>("server");
        QTest::addColumn<QByteArray>("waylandDisplay");
        QTest::addColumn<QByteArray>("sessionType");
        QTest::addColumn<SessionType>("type");
        using Server = DisplayServer;
        const QByteArray nothing;
        const QByteArray socket("wayland-0");
        QTest::newRow("X11") << Server::Xorg << nothing << QByteArray("x11") << SessionType::X11;
        QTest::newRow("X11, unnamed") << Server::Xorg << nothing << nothing << SessionType::X11;
        QTest::newRow("X server inside Wayland")
            << Server::Xorg << socket << QByteArray("wayland") << SessionType::X11;
        QTest::newRow("Wayland") << Server::Xwayland << socket << QByteArray("wayland")
                                 << SessionType::Wayland;
        QTest::newRow("Wayland, unnamed") << Server::Xwayland << nothing << nothing << SessionType::Wayland;
        QTest::newRow("Wayland, misnamed")
            << Server::Xwayland << nothing << QByteArray("x11") << SessionType::Wayland;
        QTest::newRow("Wayland without X, by its socket")
            << Server::None << socket << nothing << SessionType::Wayland;
        QTest::newRow("Wayland without X, by its type")
            << Server::None << nothing << QByteArray("wayland") << SessionType::Wayland;
        QTest::newRow("nothing") << Server::None << nothing << nothing << SessionType::None;
        QTest::newRow("terminal") << Server::None << nothing << QByteArray("tty") << SessionType::None;
    }

    void theServerTakesPrecedenceOverTheEnvironment()
    {
        QFETCH(DisplayServer, server);
        QFETCH(QByteArray, waylandDisplay);
        QFETCH(QByteArray, sessionType);
        qputenv("WAYLAND_DISPLAY", waylandDisplay);
        qputenv("XDG_SESSION_TYPE", sessionType);
        QTEST(Sessions::typeWith(server), "type");
    }

    void onlyWaylandIsAnObstacle()
    {
        QVERIFY(!Sessions::obstacle(SessionType::X11));
        QVERIFY(!Sessions::obstacle(SessionType::None));
        QCOMPARE(Sessions::obstacle(SessionType::Wayland),
                 u"Orvane can't see or operate this Wayland desktop yet: log out, and choose an X11 (“Xorg”) "
                 "session on the login screen."_s);
    }
};

QTEST_GUILESS_MAIN(SessionTypeTest)
#include "SessionTypeTest.moc"

// SPDX-License-Identifier: Apache-2.0
// In a Wayland session the window says from the start that hardly any action works.
#include "applications/support/WaylandSession.h"
#include "ui/support/UiTest.h"

using namespace Qt::StringLiterals;

class UiWaylandTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theWindowSaysItFromTheStart();

private:
    std::optional<WaylandSession> m_session;
};

void UiWaylandTest::init()
{
    m_session.emplace();
    QVERIFY(m_session->isRunning());
    startAfresh();
}

void UiWaylandTest::theWindowSaysItFromTheStart()
{
    QVERIFY(orvane().start());
    QVERIFY(orvane().waitFor(Role::label,
                             u"Orvane can't see or operate this Wayland desktop yet: log out, and "
                             "choose an X11 (“Xorg”) session on the login screen."_s));
    QVERIFY(orvane().isRunning());
}

QTEST_GUILESS_MAIN(UiWaylandTest)
#include "WaylandTest.moc"

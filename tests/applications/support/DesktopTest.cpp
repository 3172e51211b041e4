// SPDX-License-Identifier: Apache-2.0
#include "applications/support/DesktopTest.h"

#include "Support/StandstillWatch.h"
#include "applications/support/X11Screen.h"

using namespace Qt::StringLiterals;

Outcome DesktopTest::perform(const char *action, ActionRunner::Arguments arguments)
{
    const Outcome outcome = m_runner->perform(action, arguments);
    if (outcome.standstill > StandstillWatch::limit)
        QTest::qFail(
            qPrintable(u"The event loop stood still for %1 ms during %2: %3"_s.arg(outcome.standstill.count())
                           .arg(QLatin1StringView(action), outcome.line)),
            __FILE__, __LINE__);
    return outcome;
}

void DesktopTest::initTestCase()
{
    if (!PrivateDesktop::isHere())
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop.");
    if (Screen::session() == Screen::Session::X11)
        m_keysWithSymbols = X11Screen::keysWithSymbols();
    m_runner.emplace();
}

void DesktopTest::cleanup()
{
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
    if (Screen::session() != Screen::Session::X11)
        return;
    QVERIFY(!X11Screen::isAKeyPressed());
    QCOMPARE(X11Screen::keysWithSymbols(), m_keysWithSymbols);
}

void DesktopTest::cleanupTestCase()
{
    m_runner.reset();
}

// SPDX-License-Identifier: Apache-2.0
#include "desktop/support/DesktopTest.h"

void DesktopTest::initTestCase()
{
    if (!PrivateDesktop::isHere())
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop.");
    m_runner.emplace();
}

void DesktopTest::cleanup()
{
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
}

void DesktopTest::cleanupTestCase()
{
    m_runner.reset();
}

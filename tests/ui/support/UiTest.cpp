// SPDX-License-Identifier: Apache-2.0
#include "ui/support/UiTest.h"

#include "ui/support/Pointer.h"

#include <QDir>

using namespace Qt::StringLiterals;

void UiTest::type(const QString &text)
{
    const Outcome outcome = m_hands->perform("type_text", {{"text", text}});
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
}

void UiTest::initTestCase()
{
    if (!PrivateDesktop::isHere())
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop.");
    Pointer::attach();
}

void UiTest::startAfresh()
{
    m_hands.emplace();
    m_driver.emplace();
}

void UiTest::cleanup()
{
    if (QTest::currentTestFailed()) {
        const QString picture = QDir::current().filePath(u"%1-%2.png"_s.arg(
            QLatin1StringView(metaObject()->className()), QLatin1StringView(QTest::currentTestFunction())));
        PrivateDesktop::picture().save(picture);
        qInfo("The screen: %s\nThe window:%s", qPrintable(picture), qPrintable(m_driver->described()));
    }
    const QByteArray standstills = m_driver->standstills();
    m_driver.reset();
    m_hands.reset();
    QVERIFY2(standstills.isEmpty(), "The event loop stood still for milliseconds: " + standstills);
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
}

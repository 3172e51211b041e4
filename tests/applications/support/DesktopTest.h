// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ActionRunner.h"
#include "applications/support/Browser.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QObject>
#include <QTest>

#include <optional>

// What all tests with real applications have in common: they start on an empty private desktop, look at the
// effect of an action there, and leave neither a pressed key nor a changed one behind.
class DesktopTest : public QObject
{
    Q_OBJECT

protected:
    // Fails the test when the event loop stood still meanwhile.
    Outcome perform(const char *action, ActionRunner::Arguments arguments = {});

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

private:
    std::optional<ActionRunner> m_runner;
    QSet<int> m_keysWithSymbols;
};

// The effect has to show within a test's patience; otherwise the test fails with the action's own words and
// what the screen shows instead.
#define VERIFY_EFFECT(effect, outcome)                                                                       \
    QVERIFY2(QTest::qWaitFor([&] { return (effect); }, PrivateDesktop::patience),                            \
             qPrintable((outcome).line + QStringLiteral(" But on the screen: ") + Screen::described()))

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ActionRunner.h"
#include "applications/support/Browser.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QObject>
#include <QSet>
#include <QTest>

#include <optional>

// The base of all tests with real applications: checks for a private desktop at the start, and clears it
// after each function; on X11 it then verifies that no key is pressed and no keysym left lent.
class DesktopTest : public QObject
{
    Q_OBJECT

protected:
    // Runs an action; fails the test if the event loop was blocked meanwhile.
    Outcome perform(const char *action, ActionRunner::Arguments arguments = {});

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

private:
    std::optional<ActionRunner> m_runner;
    QSet<int> m_keysWithSymbols;
};

// Waits for the effect; on timeout, fails the test with the action's result line and the windows on the
// screen.
#define VERIFY_EFFECT(effect, outcome)                                                                       \
    QVERIFY2(QTest::qWaitFor([&] { return (effect); }, PrivateDesktop::patience),                            \
             qPrintable((outcome).line + QStringLiteral(" But on the screen: ") + Screen::described()))

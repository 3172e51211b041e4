// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ActionRunner.h"
#include "applications/support/PrivateDesktop.h"
#include "ui/support/WindowDriver.h"

#include <QObject>
#include <QTest>

#include <optional>

// Base of all window tests: each function drives a new program on an empty private desktop. On failure, a
// screenshot and the window's texts are saved.
class UiTest : public QObject
{
    Q_OBJECT

protected:
    WindowDriver &orvane() { return *m_driver; }

    // Replaces the program by one not yet started.
    void startAfresh();

    // Types with real keys into the focused control.
    void type(const QString &text);

private Q_SLOTS:
    void initTestCase();
    void init() { startAfresh(); }
    void cleanup();

private:
    std::optional<ActionRunner> m_hands;
    std::optional<WindowDriver> m_driver;
};

// Waits for a condition, up to the test timeout.
#define VERIFY_SOON(condition) QVERIFY(QTest::qWaitFor([&] { return (condition); }, PrivateDesktop::patience))

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ActionRunner.h"
#include "applications/support/PrivateDesktop.h"
#include "ui/support/WindowDriver.h"

#include <QObject>
#include <QTest>

#include <optional>

// What all tests of the window have in common: each function drives a program of its own on an empty private
// desktop. Where one fails, a picture of the screen and what the window said are kept.
class UiTest : public QObject
{
    Q_OBJECT

protected:
    WindowDriver &orvane() { return *m_driver; }

    // Puts a program that has not been started in the place of the last one.
    void startAfresh();

    // Types the text with real keys into whatever has the focus.
    void type(const QString &text);

private Q_SLOTS:
    void initTestCase();
    void init() { startAfresh(); }
    void cleanup();

private:
    std::optional<ActionRunner> m_hands;
    std::optional<WindowDriver> m_driver;
};

// Waits for a condition within a test's patience.
#define VERIFY_SOON(condition) QVERIFY(QTest::qWaitFor([&] { return (condition); }, PrivateDesktop::patience))

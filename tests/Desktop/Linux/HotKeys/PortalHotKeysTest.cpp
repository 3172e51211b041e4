// SPDX-License-Identifier: Apache-2.0
// Hot keys through the portal of a real GNOME desktop, whose question is answered as a user would.
#include "Desktop/Linux/HotKeys/PortalHotKeys.h"
#include "Desktop/Linux/HotKeys/HotKeyRefusal.h"
#include "Support/Awaited.h"
#include "applications/support/GnomeQuestions.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using GnomeQuestions::Decision;

class PortalHotKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aRefusedKeyIsNotRegistered();
    void anAllowedKeyIsReportedOncePerPress();
    void theUserIsNotAskedAgain();
    void nothingIsReportedWithoutTheReference();

private:
    // Registers Space. If the desktop asks, it gets the decision.
    std::shared_ptr<HotKeyReference> registered(Decision decision);

    PortalHotKeys m_hotKeys;
    int m_questions = 0;
    int m_presses = 0;
};

// Keys need a window that has the focus.
void PortalHotKeysTest::initTestCase()
{
    QVERIFY(PrivateDesktop::isHere() && Screen::session() == Screen::Session::Gnome);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
}

std::shared_ptr<HotKeyReference> PortalHotKeysTest::registered(Decision decision)
{
    QTimer watching;
    connect(&watching, &QTimer::timeout, this, [this, &watching, decision] {
        if (!GnomeQuestions::isAskedForHotKey())
            return;
        watching.stop();
        ++m_questions;
        GnomeQuestions::answerForHotKey(decision);
    });
    watching.start(200);
    return Awaited::result(m_hotKeys.registerHotKey(ProgramHotKey::virtualKey, ProgramHotKey::modifiers,
                                                    ProgramHotKey::identifier, [this] { ++m_presses; }));
}

void PortalHotKeysTest::aRefusedKeyIsNotRegistered()
{
    QCOMPARE(registered(Decision::Refuse), nullptr);
    QCOMPARE(m_questions, 1);
    // Nor does the desktop ask again, until the program is integrated again.
    QCOMPARE(registered(Decision::Allow), nullptr);
    QCOMPARE(m_questions, 1);
    HotKeyRefusal::forget();
}

void PortalHotKeysTest::anAllowedKeyIsReportedOncePerPress()
{
    const auto reference = registered(Decision::Allow);
    QVERIFY(reference);
    QCOMPARE(m_questions, 2);
    for (int presses = 1; presses <= 3; ++presses) {
        Screen::pressKey(u"ctrl+alt+space"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_presses, presses, PrivateDesktop::patience);
    }
}

void PortalHotKeysTest::theUserIsNotAskedAgain()
{
    m_presses = 0;
    const auto reference = registered(Decision::Refuse);
    QVERIFY(reference);
    QCOMPARE(m_questions, 2);
    Screen::pressKey(u"ctrl+alt+space"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_presses, 1, PrivateDesktop::patience);
}

void PortalHotKeysTest::nothingIsReportedWithoutTheReference()
{
    m_presses = 0;
    auto reference = registered(Decision::Refuse);
    QVERIFY(reference);
    reference.reset();
    Screen::pressKey(u"ctrl+alt+space"_s);
    // A key that is registered later would be reported after it.
    reference = registered(Decision::Refuse);
    QVERIFY(reference);
    QCOMPARE(m_presses, 0);
    Screen::pressKey(u"ctrl+alt+space"_s);
    QTRY_COMPARE_WITH_TIMEOUT(m_presses, 1, PrivateDesktop::patience);
}

QTEST_MAIN(PortalHotKeysTest)
#include "PortalHotKeysTest.moc"

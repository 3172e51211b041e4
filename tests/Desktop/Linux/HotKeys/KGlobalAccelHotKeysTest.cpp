// SPDX-License-Identifier: Apache-2.0
// Hot keys on a real Plasma service, that of KWin.
#include "Desktop/Linux/HotKeys/KGlobalAccelHotKeys.h"
#include "Support/Awaited.h"
#include "applications/support/Kwin.h"
#include "applications/support/KwinHands.h"
#include "applications/support/PrivateDesktop.h"

#include <QProcess>
#include <QTest>

#include <optional>

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace {

// Alt+Space may be KRunner's.
constexpr std::uint16_t letterJ = 38;
constexpr std::uint16_t letterK = 40;
constexpr HotKeyIdentifier identifier{fourCharacterCode("ORVN"), 1};
constexpr HotKeyIdentifier another{fourCharacterCode("ORVN"), 2};
constexpr HotKeyIdentifier late{fourCharacterCode("ORVN"), 3}; // registered after its key was taken

} // namespace

class KGlobalAccelHotKeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aPressIsReportedOnce();
    void nothingIsReportedWithoutTheReference();
    void aTakenKeyIsNotRegistered();
    void whatTheUserHasChosenInsteadIsUsed();
    void aKeyWithoutACharacterIsNotRegistered();
    void itsStandingIsKnown();

private:
    std::shared_ptr<HotKeyReference> registered(std::uint16_t key, HotKeyIdentifier which,
                                                std::function<void()> pressed);
    KGlobalAccelHotKeys::Standing standing(std::uint16_t key, HotKeyIdentifier which);
    void strikeWithAlt(std::uint32_t code);

    KGlobalAccelHotKeys m_hotKeys;
    std::optional<KwinHands> m_hands;
};

void KGlobalAccelHotKeysTest::initTestCase()
{
    QVERIFY(Kwin::permitThisProgram());
    m_hands.emplace();
}

std::shared_ptr<HotKeyReference>
KGlobalAccelHotKeysTest::registered(std::uint16_t key, HotKeyIdentifier which, std::function<void()> pressed)
{
    return Awaited::result(m_hotKeys.registerHotKey(key, HotKeyModifier::Option, which, std::move(pressed)));
}

KGlobalAccelHotKeys::Standing KGlobalAccelHotKeysTest::standing(std::uint16_t key, HotKeyIdentifier which)
{
    return Awaited::result(m_hotKeys.standing(key, HotKeyModifier::Option, which));
}

void KGlobalAccelHotKeysTest::strikeWithAlt(std::uint32_t code)
{
    m_hands->press(KEY_LEFTALT);
    m_hands->strike(code);
    m_hands->release(KEY_LEFTALT);
}

void KGlobalAccelHotKeysTest::aPressIsReportedOnce()
{
    int presses = 0;
    int marks = 0;
    const auto reference = registered(letterJ, identifier, [&presses] { ++presses; });
    const auto mark = registered(letterK, another, [&marks] { ++marks; });
    QVERIFY(reference && mark);
    strikeWithAlt(KEY_J);
    strikeWithAlt(KEY_K); // once it is reported, all earlier keys have been
    QTRY_COMPARE_WITH_TIMEOUT(marks, 1, PrivateDesktop::patience);
    QCOMPARE(presses, 1);
    m_hands->strike(KEY_J);
    strikeWithAlt(KEY_K);
    QTRY_COMPARE_WITH_TIMEOUT(marks, 2, PrivateDesktop::patience);
    QCOMPARE(presses, 1);
}

void KGlobalAccelHotKeysTest::nothingIsReportedWithoutTheReference()
{
    int presses = 0;
    int marks = 0;
    auto reference = registered(letterJ, identifier, [&presses] { ++presses; });
    const auto mark = registered(letterK, another, [&marks] { ++marks; });
    QVERIFY(reference && mark);
    reference.reset();
    strikeWithAlt(KEY_J);
    strikeWithAlt(KEY_K);
    QTRY_COMPARE_WITH_TIMEOUT(marks, 1, PrivateDesktop::patience);
    QCOMPARE(presses, 0);
}

void KGlobalAccelHotKeysTest::aTakenKeyIsNotRegistered()
{
    const auto reference = registered(letterJ, identifier, [] {});
    QVERIFY(reference);
    QVERIFY(!registered(letterJ, late, [] {}));
}

// In the desktop's settings, after the wished key was taken.
void KGlobalAccelHotKeysTest::whatTheUserHasChosenInsteadIsUsed()
{
    const QString altG = u"[([%1, 0, 0, 0],)]"_s.arg(int(Qt::ALT) | int(Qt::Key_G));
    QCOMPARE(QProcess::execute(u"gdbus"_s, {u"call"_s, u"--session"_s, u"--dest"_s, u"org.kde.kglobalaccel"_s,
                                            u"--object-path"_s, u"/kglobalaccel"_s, u"--method"_s,
                                            u"org.kde.KGlobalAccel.setForeignShortcutKeys"_s,
                                            u"['orvane', 'toggle-3', 'Orvane', 'Show or Hide']"_s, altG}),
             0);
    int presses = 0;
    const auto reference = registered(letterJ, late, [&presses] { ++presses; });
    QVERIFY(reference);
    strikeWithAlt(KEY_G);
    QTRY_COMPARE_WITH_TIMEOUT(presses, 1, PrivateDesktop::patience);
}

void KGlobalAccelHotKeysTest::aKeyWithoutACharacterIsNotRegistered()
{
    constexpr std::uint16_t arrowUp = 126;
    QVERIFY(!registered(arrowUp, another, [] {}));
}

void KGlobalAccelHotKeysTest::itsStandingIsKnown()
{
    constexpr std::uint16_t letterH = 4;
    constexpr HotKeyIdentifier unknown{fourCharacterCode("ORVN"), 4};
    const KGlobalAccelHotKeys::Standing free = standing(letterH, unknown);
    QVERIFY(free.isOffered && !free.hasKey);
    QCOMPARE(free.owner, QString());
    const auto reference = registered(letterJ, identifier, [] {});
    QVERIFY(standing(letterJ, identifier).hasKey);
    const KGlobalAccelHotKeys::Standing taken = standing(letterJ, unknown);
    QVERIFY(!taken.hasKey);
    QCOMPARE(taken.owner, u"Orvane"_s);
}

QTEST_GUILESS_MAIN(KGlobalAccelHotKeysTest)
#include "KGlobalAccelHotKeysTest.moc"

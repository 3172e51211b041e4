// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingShell.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

class RecordingShellTest : public QObject
{
    Q_OBJECT

private:
    std::shared_ptr<HotKeyReference> registerKey(RecordingShell &shell, std::function<void()> pressed)
    {
        return Awaited::result(shell.services().hotKeys.registerHotKey(
            49, HotKeyModifier::Option, {fourCharacterCode("ORVN"), 1}, std::move(pressed)));
    }

private Q_SLOTS:
    void aFourCharacterCodeConsistsOfItsBytes() { QCOMPARE(fourCharacterCode("ORVN"), 0x4F52564Eu); }

    void hotKeysWorkWhileTheirReferencesLive()
    {
        RecordingShell shell;
        shell.journal.answersLater = true;
        int presses = 0;
        std::shared_ptr<HotKeyReference> reference = registerKey(shell, [&presses] { ++presses; });
        QVERIFY(reference);
        const QList<RecordingHotKeys::HotKey> registered = shell.hotKeys.registered();
        QCOMPARE(registered.size(), 1);
        QCOMPARE(registered.first().modifiers.toInt(), 2048u);
        QCOMPARE(registered.first().identifier, (HotKeyIdentifier{0x4F52564E, 1}));
        QVERIFY(shell.hotKeys.press(49, HotKeyModifier::Option));
        QVERIFY(!shell.hotKeys.press(49, HotKeyModifier::Command));
        QVERIFY(!shell.hotKeys.press(48, HotKeyModifier::Option));
        QCOMPARE(presses, 1);
        reference.reset();
        QVERIFY(!shell.hotKeys.press(49, HotKeyModifier::Option));
        QVERIFY(shell.hotKeys.registered().isEmpty());
    }

    void aHotKeyHeldByAnotherProgramIsRefused()
    {
        RecordingShell shell;
        shell.hotKeys.isOwnedByAnother = true;
        QVERIFY(!registerKey(shell, [] {}));
        QVERIFY(!shell.hotKeys.press(49, HotKeyModifier::Option));
        QVERIFY(shell.journal.lines.isEmpty());
    }

    void changesAreSignalledOnce()
    {
        RecordingShell shell;
        QSignalSpy dark(&shell.appearance, &Appearance::isDarkChanged);
        QSignalSpy compositing(&shell.windowStyler, &WindowStyler::isCompositingChanged);
        for (int i = 0; i < 2; ++i) {
            shell.appearance.setDark(true);
            shell.windowStyler.setCompositing(true);
        }
        QVERIFY(shell.services().appearance.isDark());
        QVERIFY(shell.services().windowStyler.isCompositing());
        QCOMPARE(dark.size(), 1);
        QCOMPARE(compositing.size(), 1);
    }

    void windowsAreStyledAndShown()
    {
        RecordingShell shell;
        QWindow window;
        window.setTitle(u"Orvane"_s);
        shell.services().windowStyler.style(window);
        QVERIFY(!window.isVisible());
        shell.services().windowStyler.bringForward(window, u"token"_s);
        QVERIFY(window.isVisible());
        QCOMPARE(shell.windowStyler.styled.value(0), &window);
        QCOMPARE(shell.windowStyler.broughtForward.value(0), &window);
        QCOMPARE(shell.windowStyler.tokens, QStringList{u"token"_s});
        QCOMPARE(shell.journal.lines,
                 (QStringList{u"style window “Orvane”"_s, u"bring window “Orvane” forward"_s}));
    }

    void theInstanceReturnsTheScriptedStanding()
    {
        RecordingShell shell;
        RecordingProgramInstance &instance = shell.programInstance;
        QCOMPARE(Awaited::result(instance.claim(InstanceRequest::Toggle)), InstanceStanding::First);
        QCOMPARE(instance.request, InstanceRequest::Toggle);
        instance.standing = InstanceStanding::Later;
        QCOMPARE(Awaited::result(instance.claim(InstanceRequest::Activate)), InstanceStanding::Later);
        shell.journal.failures[RecordedOperation::ClaimInstance] = u"It hangs."_s;
        QVERIFY_THROWS_EXCEPTION(PlatformError, Awaited::result(instance.claim(InstanceRequest::Activate)));
    }
};

QTEST_MAIN(RecordingShellTest)
#include "RecordingShellTest.moc"

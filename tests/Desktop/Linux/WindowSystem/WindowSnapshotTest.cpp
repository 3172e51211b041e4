// SPDX-License-Identifier: Apache-2.0
// The window rules: which is frontmost, which to show, which to close.
#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"
#include "Desktop/Linux/WindowSystem/SampleDesktop.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace SampleDesktop;

namespace {

std::uint32_t frontmost(const WindowSnapshot &snapshot)
{
    const DesktopWindow *found = snapshot.frontmost(own);
    return found ? found->identifier : 0;
}

} // namespace

class WindowSnapshotTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theActiveWindowIsInFront()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.activeWindow = 4;
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void withoutAnActiveWindowNoneIsFrontmost()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.recentlyActivated = {4, 2};
        snapshot.activeWindow.reset();
        QCOMPARE(frontmost(snapshot), 0u);
        snapshot.activeWindow = 77; // no longer exists
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void withAnActivePanelNoneIsFrontmost()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.recentlyActivated = {5, 4, 2};
        snapshot.activeWindow = 5;
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void ourOwnWindowYieldsToThePreviousOne()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.recentlyActivated = {1, 5, 4, 2};
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void withoutAHistoryTheTopmostIsInFront() { QCOMPARE(frontmost(desktop()), 3u); }

    void onlyWindowsOnScreenAreFrontmost()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.recentlyActivated = {1, 77, 3, 2, 4};
        snapshot.windows[3].isMinimised = true;
        snapshot.windows[2].isOnCurrentDesktop = false;
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void anEmptyDesktopHasNoFrontmostWindow()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.windows = {window(5, 500, DesktopWindow::Kind::Shell), window(1, own)};
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void aModalDialogIsInFrontOfItsWindow()
    {
        WindowSnapshot snapshot = desktop();
        for (DesktopWindow &window : snapshot.windows)
            window.title = u"window %1"_s.arg(window.identifier);
        snapshot.recentlyActivated = {2, 3};
        QCOMPARE(snapshot.titlesInFront(editor), QStringList{u"window 2"_s});
        snapshot.windows[3].isModal = true;
        QCOMPARE(snapshot.titlesInFront(editor), QStringList{u"window 2"_s}); // blocks another window
        snapshot.windows[3].transientFor = 2;
        QCOMPARE(snapshot.titlesInFront(editor), (QStringList{u"window 3"_s, u"window 2"_s}));
        QCOMPARE(snapshot.titlesInFront(999), QStringList());
    }

    void titlesOnlyOtherApplicationsOfTheProcessHaveAreForeign()
    {
        WindowSnapshot snapshot;
        const QList<std::pair<QString, QString>> titles{{u"writer"_s, u"Letter"_s},
                                                        {u"calc"_s, u"Sums"_s},
                                                        {u"writer"_s, u"Save"_s},
                                                        {u"calc"_s, u"Save"_s}};
        for (const auto &[part, title] : titles) {
            DesktopWindow each = window(static_cast<std::uint32_t>(snapshot.windows.size() + 1), editor);
            each.part = part;
            each.title = title;
            snapshot.windows.append(each);
        }
        snapshot.recentlyActivated = {2, 1};
        QCOMPARE(snapshot.foreignTitles(editor, u"writer"_s), QStringList{u"Sums"_s});
        QCOMPARE(snapshot.foreignTitles(editor, u"calc"_s), QStringList{u"Letter"_s});
        QCOMPARE(snapshot.foreignTitles(editor, QString()), QStringList());
        QCOMPARE(snapshot.titlesInFront(editor, u"writer"_s), QStringList{u"Letter"_s});
    }

    void theWindowUsedLastIsShown()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.recentlyActivated = {4, 2, 3};
        QCOMPARE(snapshot.windowToShow(editor)->identifier, 2u);
    }

    void aMinimisedWindowIsShownWhenThereIsNoOther()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.windows[1].isMinimised = true;
        QCOMPARE(snapshot.windowToShow(browser)->identifier, 4u);
        QCOMPARE(snapshot.windowToShow(999), nullptr);
    }

    void quittingClosesMainWindowsBeforeDialogs()
    {
        WindowSnapshot snapshot = desktop();
        QCOMPARE(snapshot.windowsToClose(editor).size(), 1);
        QCOMPARE(snapshot.windowsToClose(editor).first().identifier, 2u);
        snapshot.windows.removeAt(2);
        QCOMPARE(snapshot.windowsToClose(editor).first().identifier, 3u);
    }

    void aWindowWithoutDeleteProtocolIsNeverClosed()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.windows[1].canBeClosed = false;
        QVERIFY(snapshot.windowsToClose(browser).isEmpty());
    }
};

QTEST_GUILESS_MAIN(WindowSnapshotTest)
#include "WindowSnapshotTest.moc"

// SPDX-License-Identifier: Apache-2.0
// The rules about windows: which one is in front, which one to show, which ones to close.
#include "Desktop/Linux/X11Snapshot.h"
#include "Desktop/Linux/LinuxApplications.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 own = 100;
constexpr qint64 editor = 200;
constexpr qint64 browser = 300;

X11Window window(std::uint32_t identifier, qint64 process,
                 X11Window::Kind kind = X11Window::Kind::Application)
{
    X11Window result;
    result.identifier = identifier;
    result.process = process;
    result.kind = kind;
    result.belongsInTaskBar = result.isOrdinary();
    return result;
}

// Our palette (1) over an editor's window (2) and dialog (3), a browser (4) and the desktop's background (5).
X11Snapshot desktop()
{
    X11Snapshot snapshot;
    snapshot.windows = {window(5, 500, X11Window::Kind::Shell), window(4, browser), window(2, editor),
                        window(3, editor, X11Window::Kind::Dialog), window(1, own)};
    snapshot.stacking = {1, 3, 2, 4, 5};
    snapshot.activeWindow = 1;
    return snapshot;
}

// A window and an entry of an office suite, which is a single process.
X11Window suite(std::uint32_t identifier, const QString &className)
{
    X11Window result = window(identifier, 600);
    result.className = className;
    return result;
}

DesktopEntry suiteEntry(const QString &name)
{
    DesktopEntry entry;
    entry.identifier = u"libreoffice-"_s + name;
    entry.path = u"/usr/share/applications/%1.desktop"_s.arg(entry.identifier);
    entry.name = u"LibreOffice "_s + name;
    entry.windowClass = entry.identifier;
    return entry;
}

std::uint32_t frontmost(const X11Snapshot &snapshot)
{
    const X11Window *found = snapshot.frontmost(own);
    return found ? found->identifier : 0;
}

} // namespace

class X11SnapshotTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theActiveWindowIsInFront()
    {
        X11Snapshot snapshot = desktop();
        snapshot.activeWindow = 4;
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void withoutAnActiveWindowNobodyIsInFront()
    {
        X11Snapshot snapshot = desktop();
        snapshot.recentlyActivated = {4, 2};
        snapshot.activeWindow.reset();
        QCOMPARE(frontmost(snapshot), 0u);
        snapshot.activeWindow = 77; // has vanished
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void behindThePanelThatIsActiveNobodyIsInFront()
    {
        X11Snapshot snapshot = desktop();
        snapshot.recentlyActivated = {5, 4, 2};
        snapshot.activeWindow = 5;
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void ourOwnWindowGivesWayToTheOneBefore()
    {
        X11Snapshot snapshot = desktop();
        snapshot.recentlyActivated = {1, 5, 4, 2};
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void withoutAHistoryTheTopmostIsInFront() { QCOMPARE(frontmost(desktop()), 3u); }

    void vanishedMinimisedAndDistantWindowsAreNotInFront()
    {
        X11Snapshot snapshot = desktop();
        snapshot.recentlyActivated = {1, 77, 3, 2, 4};
        snapshot.windows[3].isMinimised = true;
        snapshot.windows[2].isOnCurrentDesktop = false;
        QCOMPARE(frontmost(snapshot), 4u);
    }

    void nothingIsInFrontOfAnEmptyDesktop()
    {
        X11Snapshot snapshot = desktop();
        snapshot.windows = {window(5, 500, X11Window::Kind::Shell), window(1, own)};
        QCOMPARE(frontmost(snapshot), 0u);
    }

    void aDialogThatBlocksTheForemostWindowIsInFrontOfIt()
    {
        X11Snapshot snapshot = desktop();
        for (X11Window &window : snapshot.windows)
            window.title = u"window %1"_s.arg(window.identifier);
        snapshot.recentlyActivated = {2, 3};
        QCOMPARE(snapshot.titlesInFront(editor), QStringList{u"window 2"_s});
        snapshot.windows[3].isModal = true;
        QCOMPARE(snapshot.titlesInFront(editor), QStringList{u"window 2"_s}); // blocks another window
        snapshot.windows[3].transientFor = 2;
        QCOMPARE(snapshot.titlesInFront(editor), (QStringList{u"window 3"_s, u"window 2"_s}));
        QCOMPARE(snapshot.titlesInFront(999), QStringList());
    }

    void theWindowUsedLastIsShown()
    {
        X11Snapshot snapshot = desktop();
        snapshot.recentlyActivated = {4, 2, 3};
        QCOMPARE(snapshot.windowToShow(editor)->identifier, 2u);
    }

    void aMinimisedWindowIsShownWhenThereIsNoOther()
    {
        X11Snapshot snapshot = desktop();
        snapshot.windows[1].isMinimised = true;
        QCOMPARE(snapshot.windowToShow(browser)->identifier, 4u);
        QCOMPARE(snapshot.windowToShow(999), nullptr);
    }

    void quittingClosesMainWindowsAndLeavesDialogsToThem()
    {
        X11Snapshot snapshot = desktop();
        QCOMPARE(snapshot.windowsToClose(editor).size(), 1);
        QCOMPARE(snapshot.windowsToClose(editor).first().identifier, 2u);
        snapshot.windows.removeAt(2);
        QCOMPARE(snapshot.windowsToClose(editor).first().identifier, 3u);
    }

    void aWindowThatCannotBeAskedIsNeverClosed()
    {
        X11Snapshot snapshot = desktop();
        snapshot.windows[1].canBeClosed = false;
        QVERIFY(snapshot.windowsToClose(browser).isEmpty());
    }

    void anApplicationIsAProcessInTheOrderOfItsFirstWindow()
    {
        X11Snapshot snapshot = desktop();
        snapshot.windows[2].className = u"Mousepad"_s;
        DesktopEntry entry;
        entry.identifier = u"org.xfce.mousepad"_s;
        entry.path = u"/usr/share/applications/org.xfce.mousepad.desktop"_s;
        entry.name = u"Text Editor"_s;
        snapshot = LinuxApplications::withParts(snapshot, {entry});
        const auto applications = LinuxApplications::running(snapshot, {entry});
        QCOMPARE(applications.size(), 4);
        QCOMPARE(applications[0].isRegular, false);
        QCOMPARE(applications[1].processIdentifier, browser);
        QCOMPARE(applications[1].localizedName, std::nullopt);
        QCOMPARE(applications[2].processIdentifier, editor);
        QCOMPARE(applications[2].localizedName, u"Text Editor"_s);
        QCOMPARE(applications[2].bundle->location, entry.path);
        QCOMPARE(applications[3].processIdentifier, own);
    }

    void withoutAnEntryTheClassIsTheName()
    {
        X11Snapshot snapshot = desktop();
        snapshot.windows[1].instance = u"xterm"_s;
        snapshot.windows[1].className = u"XTerm"_s;
        const auto application = LinuxApplications::ofWindow(snapshot.windows[1], snapshot, {});
        QCOMPARE(application.localizedName, u"XTerm"_s);
        QVERIFY(!application.bundle);
    }

    void oneProcessWithSeveralClassesIsSeveralApplications()
    {
        X11Snapshot snapshot;
        snapshot.windows = {suite(1, u"libreoffice-writer"_s), suite(2, u"libreoffice-calc"_s),
                            suite(3, u"Soffice"_s), suite(4, QString()), suite(5, u"libreoffice-writer"_s)};
        snapshot.windows[2].transientFor = 2;
        snapshot.windows[2].kind = X11Window::Kind::Dialog;
        snapshot.stacking = {5, 4, 3, 2, 1};
        const QList<DesktopEntry> entries{suiteEntry(u"writer"_s), suiteEntry(u"calc"_s)};
        snapshot = LinuxApplications::withParts(snapshot, entries);
        const auto applications = LinuxApplications::running(snapshot, entries);
        QCOMPARE(applications.size(), 2);
        QCOMPARE(applications[0].localizedName, u"LibreOffice writer"_s);
        QCOMPARE(applications[1].localizedName, u"LibreOffice calc"_s);
        const auto &calc = applications[1];
        QCOMPARE(snapshot.windowsToClose(calc.processIdentifier, calc.part).size(), 1);
        QCOMPARE(snapshot.windowToShow(calc.processIdentifier, calc.part)->identifier, 3u);
        const auto dialogsOwner = LinuxApplications::ofWindow(snapshot.windows[2], snapshot, entries);
        QCOMPARE(dialogsOwner.localizedName, u"LibreOffice calc"_s);
        const auto speechless = LinuxApplications::ofWindow(snapshot.windows[3], snapshot, entries);
        QCOMPARE(speechless.localizedName, u"LibreOffice writer"_s);
    }
};

QTEST_GUILESS_MAIN(X11SnapshotTest)
#include "X11SnapshotTest.moc"

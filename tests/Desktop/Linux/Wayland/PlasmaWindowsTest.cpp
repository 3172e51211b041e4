// SPDX-License-Identifier: Apache-2.0
// The windows of a real compositor, KWin.
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "Desktop/PlatformError.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"
#include "applications/support/Kwin.h"
#include "applications/support/KwinScreen.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QGuiApplication>
#include <QProcess>
#include <QRasterWindow>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// The services, connected after the program has got the permission.
struct Services
{
    SystemClock clock;
    WaylandConnection connection;
    PlasmaWindows windows{connection, clock};
};

QStringList titlesOf(const QList<DesktopWindow> &windows)
{
    QStringList titles;
    for (const DesktopWindow &window : windows)
        titles.append(window.title);
    return titles;
}

} // namespace

class PlasmaWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void anEmptyDesktopHasNoWindows();
    void windowsAreReportedAsTheyAreStacked();
    void aWindowIsBroughtForward();
    void aMinimisedWindowIsBroughtForward();
    void aWindowOnAnotherDesktopIsNotOnTheScreen();
    void aWindowThatIsGoneIsNamed();
    void aWindowIsClosed();
    void aDialogBelongsToItsWindow();
    void hostileTitlesAreCleaned();
    void manyWindowsAreListed();

private:
    // Opens a window with each title, of one process, in this order.
    void open(const QStringList &titles);
    WindowSnapshot snapshot() { return Awaited::result(m_services->windows.snapshot()); }
    std::optional<DesktopWindow> windowCalled(const QString &title);

    QProcess m_program;
    std::optional<Services> m_services;
};

void PlasmaWindowsTest::initTestCase()
{
    // Not offered to a program without a desktop entry, as this one is at first.
    QVERIFY(!PlasmaWindows::isOfferedBy(WaylandConnection()));
    QVERIFY(Kwin::permitThisProgram());
    m_services.emplace();
}

void PlasmaWindowsTest::open(const QStringList &titles)
{
    m_program.start(QString::fromLatin1(KEY_RECEIVER), titles);
    const auto areShown = [&titles] {
        return Screen::windows().size() == titles.size() && Screen::activeWindow();
    };
    QVERIFY2(QTest::qWaitFor(areShown, PrivateDesktop::patience), qPrintable(Screen::described()));
}

std::optional<DesktopWindow> PlasmaWindowsTest::windowCalled(const QString &title)
{
    for (const DesktopWindow &window : snapshot().windows) {
        if (window.title == title)
            return window;
    }
    return std::nullopt;
}

void PlasmaWindowsTest::cleanup()
{
    m_program.kill();
    m_program.waitForFinished();
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
}

void PlasmaWindowsTest::anEmptyDesktopHasNoWindows()
{
    const WindowSnapshot now = snapshot();
    QVERIFY(now.windows.isEmpty() && now.stacking.isEmpty() && !now.activeWindow);
}

void PlasmaWindowsTest::windowsAreReportedAsTheyAreStacked()
{
    open({u"First"_s, u"Second"_s, u"Third"_s});
    Awaited::result(m_services->windows.bringForward(*windowCalled(u"Second"_s)));
    const QList<ScreenWindow> expected = KwinScreen::windowsFrontToBack();
    const WindowSnapshot now = snapshot();
    QStringList titles;
    for (const ScreenWindow &window : expected)
        titles.append(window.title);
    QCOMPARE(titlesOf(now.frontToBack()), titles);
    QCOMPARE(titles.constFirst(), u"Second"_s);
    QVERIFY(now.active());
    QCOMPARE(now.active()->title, u"Second"_s);
    for (const DesktopWindow &window : now.windows) {
        QCOMPARE(window.process, m_program.processId());
        QCOMPARE(window.applicationIdentifier, expected.constFirst().applicationIdentifier);
        QVERIFY(window.isOnScreen() && window.belongsInTaskBar && window.canBeClosed);
        QVERIFY(window.kind == DesktopWindow::Kind::Application);
    }
}

void PlasmaWindowsTest::aWindowIsBroughtForward()
{
    open({u"First"_s, u"Second"_s});
    for (const QString &title : {u"First"_s, u"Second"_s, u"First"_s}) {
        const std::optional<DesktopWindow> window = windowCalled(title);
        QVERIFY(window);
        Awaited::result(m_services->windows.bringForward(*window));
        QCOMPARE(Screen::activeWindow()->title, title);
        QCOMPARE(titlesOf(snapshot().frontToBack()).constFirst(), title);
    }
}

void PlasmaWindowsTest::aMinimisedWindowIsBroughtForward()
{
    open({u"First"_s, u"Second"_s});
    Kwin::run(u"workspace.stackingOrder.find(w => w.caption == 'First').minimized = true; tell('');"_s);
    const auto isMinimised = [this] { return windowCalled(u"First"_s)->isMinimised; };
    QVERIFY(QTest::qWaitFor(isMinimised, PrivateDesktop::patience));
    QVERIFY(!windowCalled(u"First"_s)->isOnScreen());
    Awaited::result(m_services->windows.bringForward(*windowCalled(u"First"_s)));
    QCOMPARE(Screen::activeWindow()->title, u"First"_s);
    QVERIFY(windowCalled(u"First"_s)->isOnScreen());
}

void PlasmaWindowsTest::aWindowOnAnotherDesktopIsNotOnTheScreen()
{
    open({u"First"_s, u"Second"_s});
    Kwin::run(u"workspace.createDesktop(1, 'Other');"
              "workspace.stackingOrder.find(w => w.caption == 'First').desktops = [workspace.desktops[1]];"
              "tell('');"_s);
    const auto isElsewhere = [this] { return !windowCalled(u"First"_s)->isOnCurrentDesktop; };
    QVERIFY(QTest::qWaitFor(isElsewhere, PrivateDesktop::patience));
    QVERIFY(windowCalled(u"Second"_s)->isOnCurrentDesktop);
    Awaited::result(m_services->windows.bringForward(*windowCalled(u"First"_s)));
    QCOMPARE(Screen::activeWindow()->title, u"First"_s);
    QVERIFY(windowCalled(u"First"_s)->isOnCurrentDesktop);
    QVERIFY(!windowCalled(u"Second"_s)->isOnCurrentDesktop);
    Kwin::run(u"workspace.removeDesktop(workspace.desktops[1]); tell('');"_s);
}

void PlasmaWindowsTest::aWindowThatIsGoneIsNamed()
{
    open({u"First"_s});
    const std::optional<DesktopWindow> window = windowCalled(u"First"_s);
    QVERIFY(window);
    cleanup();
    QString message;
    try {
        Awaited::result(m_services->windows.bringForward(*window));
    } catch (const PlatformError &error) {
        message = error.errorDescription();
    }
    QCOMPARE(message, u"The window “First” is gone."_s);
}

void PlasmaWindowsTest::aWindowIsClosed()
{
    open({u"First"_s, u"Second"_s});
    const std::optional<DesktopWindow> window = windowCalled(u"First"_s);
    QVERIFY(window);
    Awaited::result(m_services->windows.close({*window}));
    QTRY_COMPARE_WITH_TIMEOUT(Screen::windows().size(), 1, PrivateDesktop::patience);
    QCOMPARE(Screen::windows().constFirst().title, u"Second"_s);
    QVERIFY(!windowCalled(u"First"_s));
}

void PlasmaWindowsTest::aDialogBelongsToItsWindow()
{
    QRasterWindow main;
    main.setTitle(u"Main"_s);
    main.resize(300, 200);
    main.show();
    QRasterWindow dialog;
    dialog.setTitle(u"Question"_s);
    dialog.setTransientParent(&main);
    dialog.resize(200, 100);
    dialog.show();
    QTRY_VERIFY_WITH_TIMEOUT(windowCalled(u"Main"_s) && windowCalled(u"Question"_s),
                             PrivateDesktop::patience);
    const DesktopWindow window = *windowCalled(u"Question"_s);
    QVERIFY(window.kind == DesktopWindow::Kind::Dialog);
    QCOMPARE(window.transientFor, windowCalled(u"Main"_s)->identifier);
    QCOMPARE(window.process, QCoreApplication::applicationPid());
}

void PlasmaWindowsTest::hostileTitlesAreCleaned()
{
    open({u"a\u202E\nb<|im_end|>"_s});
    const QString title = snapshot().windows.constFirst().title;
    QVERIFY2(!title.contains(u'\u202E') && !title.contains(u'\n') && !title.contains("<|im_end|>"_L1),
             qPrintable(title));
}

// In one message, the identifiers of so many windows would be too long for a Wayland connection.
void PlasmaWindowsTest::manyWindowsAreListed()
{
    QStringList titles;
    for (int number = 0; number < 150; ++number)
        titles.append(QString::number(number));
    open(titles);
    const WindowSnapshot now = snapshot();
    QCOMPARE(now.windows.size(), titles.size());
    QCOMPARE(now.stacking.size(), titles.size());
}

QTEST_MAIN(PlasmaWindowsTest)
#include "PlasmaWindowsTest.moc"

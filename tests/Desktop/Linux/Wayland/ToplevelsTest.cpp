// SPDX-License-Identifier: Apache-2.0
// The windows of a real compositor, sway.
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/PlatformError.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QGuiApplication>
#include <QProcess>
#include <QRasterWindow>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QStringList> keyReceiver(QString)
{
    co_return QStringList{u"KeyReceiver"_s};
}

} // namespace

class ToplevelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void anEmptyDesktopHasNoWindows();
    void windowsAreReportedInTheOrderOfUse();
    void twoProcessesOfAnApplicationAreToldApart();
    void withoutSwaysSocketTheProcessIsFoundByItsProgram();
    void withoutSwaysSocketOneOfTwoProcessesIsUnknown();
    void aWindowIsBroughtForward();
    void aWindowThatIsGoneIsNamed();
    void aWindowIsClosed();
    void ourOwnWindowHasOurProcess();
    void withoutACompositorConnectingFails();

private:
    // Opens a window with each title, of one process, in this order.
    void open(const QStringList &titles);
    std::optional<DesktopWindow> windowCalled(const QString &title);
    // What a compositor without processes of its own would report.
    WindowSnapshot withoutSocket();

    QProcess m_program;
    SystemClock m_clock;
    WaylandConnection m_connection;
    WaylandToplevels m_toplevels{m_connection, &keyReceiver, m_clock};
};

void ToplevelsTest::open(const QStringList &titles)
{
    m_program.start(QString::fromLatin1(KEY_RECEIVER), titles);
    const auto areShown = [&titles] {
        return Screen::windows().size() == titles.size() && Screen::activeWindow();
    };
    QVERIFY2(QTest::qWaitFor(areShown, PrivateDesktop::patience), qPrintable(Screen::described()));
}

std::optional<DesktopWindow> ToplevelsTest::windowCalled(const QString &title)
{
    const WindowSnapshot snapshot = Awaited::result(m_toplevels.snapshot());
    for (const DesktopWindow &window : snapshot.windows) {
        if (window.title == title)
            return window;
    }
    return std::nullopt;
}

WindowSnapshot ToplevelsTest::withoutSocket()
{
    const QByteArray socket = qgetenv("SWAYSOCK");
    qunsetenv("SWAYSOCK");
    WaylandConnection connection;
    WaylandToplevels toplevels{connection, &keyReceiver, m_clock};
    const WindowSnapshot snapshot = Awaited::result(toplevels.snapshot());
    qputenv("SWAYSOCK", socket);
    return snapshot;
}

void ToplevelsTest::cleanup()
{
    m_program.kill();
    m_program.waitForFinished();
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
}

void ToplevelsTest::anEmptyDesktopHasNoWindows()
{
    const WindowSnapshot snapshot = Awaited::result(m_toplevels.snapshot());
    QVERIFY(snapshot.windows.isEmpty() && !snapshot.activeWindow);
}

void ToplevelsTest::windowsAreReportedInTheOrderOfUse()
{
    open({u"First"_s, u"Second"_s});
    const QString focused = Screen::activeWindow()->title;
    const WindowSnapshot snapshot = Awaited::result(m_toplevels.snapshot());
    QCOMPARE(snapshot.windows.size(), 2);
    QVERIFY(snapshot.active());
    QCOMPARE(snapshot.active()->title, focused);
    QCOMPARE(snapshot.frontToBack().constFirst().title, focused);
    QCOMPARE(snapshot.frontmost(QCoreApplication::applicationPid())->title, focused);
    QCOMPARE(snapshot.active()->applicationIdentifier, Screen::activeWindow()->applicationIdentifier);
    QCOMPARE(snapshot.active()->process, m_program.processId());
    QCOMPARE(snapshot.windows.at(0).process, snapshot.windows.at(1).process);
}

// Both windows have the same title.
void ToplevelsTest::twoProcessesOfAnApplicationAreToldApart()
{
    QProcess other;
    other.start(QString::fromLatin1(KEY_RECEIVER), {u"Same"_s});
    QVERIFY(QTest::qWaitFor([] { return Screen::windows().size() == 1; }, PrivateDesktop::patience));
    m_program.start(QString::fromLatin1(KEY_RECEIVER), {u"Same"_s});
    const auto isActive = [this] {
        const auto window = Screen::activeWindow();
        return window && window->process == m_program.processId();
    };
    QVERIFY2(QTest::qWaitFor(isActive, PrivateDesktop::patience), qPrintable(Screen::described()));
    const WindowSnapshot snapshot = Awaited::result(m_toplevels.snapshot());
    QCOMPARE(snapshot.windows.size(), 2);
    QCOMPARE(snapshot.active()->process, m_program.processId());
    QCOMPARE(snapshot.frontToBack().constLast().process, other.processId());
    other.kill();
    other.waitForFinished();
}

void ToplevelsTest::withoutSwaysSocketTheProcessIsFoundByItsProgram()
{
    open({u"First"_s, u"Second"_s});
    const WindowSnapshot snapshot = withoutSocket();
    QCOMPARE(snapshot.windows.size(), 2);
    QCOMPARE(snapshot.windows.at(0).process, m_program.processId());
    QCOMPARE(snapshot.windows.at(1).process, m_program.processId());
}

void ToplevelsTest::withoutSwaysSocketOneOfTwoProcessesIsUnknown()
{
    QProcess other;
    other.start(QString::fromLatin1(KEY_RECEIVER), {u"Other"_s});
    QVERIFY(QTest::qWaitFor([] { return Screen::windows().size() == 1; }, PrivateDesktop::patience));
    m_program.start(QString::fromLatin1(KEY_RECEIVER), {u"Another"_s});
    QVERIFY(QTest::qWaitFor([] { return Screen::windows().size() == 2; }, PrivateDesktop::patience));
    const WindowSnapshot snapshot = withoutSocket();
    QCOMPARE(snapshot.windows.size(), 2);
    QVERIFY(snapshot.windows.at(0).process < 0);
    QCOMPARE(snapshot.windows.at(1).process, snapshot.windows.at(0).process);
    other.kill();
    other.waitForFinished();
}

void ToplevelsTest::aWindowIsBroughtForward()
{
    open({u"First"_s, u"Second"_s});
    for (const QString &title : {u"First"_s, u"Second"_s, u"First"_s}) {
        const std::optional<DesktopWindow> window = windowCalled(title);
        QVERIFY(window);
        Awaited::result(m_toplevels.bringForward(*window));
        QCOMPARE(Screen::activeWindow()->title, title);
        QCOMPARE(Awaited::result(m_toplevels.snapshot()).frontToBack().constFirst().title, title);
    }
}

void ToplevelsTest::aWindowThatIsGoneIsNamed()
{
    open({u"First"_s});
    const std::optional<DesktopWindow> window = windowCalled(u"First"_s);
    QVERIFY(window);
    cleanup();
    QString message;
    try {
        Awaited::result(m_toplevels.bringForward(*window));
    } catch (const PlatformError &error) {
        message = error.errorDescription();
    }
    QCOMPARE(message, u"The window “First” is gone."_s);
}

void ToplevelsTest::aWindowIsClosed()
{
    open({u"First"_s, u"Second"_s});
    const std::optional<DesktopWindow> window = windowCalled(u"First"_s);
    QVERIFY(window);
    Awaited::result(m_toplevels.close({*window}));
    QTRY_COMPARE_WITH_TIMEOUT(Screen::windows().size(), 1, PrivateDesktop::patience);
    QCOMPARE(Screen::windows().constFirst().title, u"Second"_s);
    QVERIFY(!windowCalled(u"First"_s));
}

void ToplevelsTest::ourOwnWindowHasOurProcess()
{
    QGuiApplication::setDesktopFileName(u"org.orvane.Test"_s);
    QRasterWindow own;
    own.setTitle(u"Ours"_s);
    own.resize(300, 200);
    own.show();
    QVERIFY(QTest::qWaitFor([] { return Screen::activeWindow().has_value(); }, PrivateDesktop::patience));
    const std::optional<DesktopWindow> window = windowCalled(u"Ours"_s);
    QVERIFY(window);
    QCOMPARE(window->process, QCoreApplication::applicationPid());
}

void ToplevelsTest::withoutACompositorConnectingFails()
{
    const QByteArray display = qgetenv("WAYLAND_DISPLAY");
    qputenv("WAYLAND_DISPLAY", "nothing-listens-here");
    QString message;
    try {
        const WaylandConnection connection;
    } catch (const PlatformError &error) {
        message = error.errorDescription();
    }
    qputenv("WAYLAND_DISPLAY", display);
    QCOMPARE(message, u"The Wayland compositor can't be reached."_s);
}

QTEST_MAIN(ToplevelsTest)
#include "ToplevelsTest.moc"

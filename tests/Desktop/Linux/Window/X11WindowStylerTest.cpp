// SPDX-License-Identifier: Apache-2.0
// The window on a real desktop: its style, activation and position.
#include "Desktop/Linux/Window/X11WindowStyler.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QProcess>
#include <QRasterWindow>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString propertiesOf(const QWindow &window)
{
    const QString identifier = QString::number(window.winId());
    return QString::fromUtf8(LinuxBench::output(u"xprop"_s, {u"-id"_s, identifier}));
}

// On a screen of 1280 by 800 without panels.
constexpr QSize windowSize(400, 300);
constexpr QPoint middle(440, 250);

// Collects the startup notification messages broadcast to all clients.
class LaunchMessages
{
public:
    LaunchMessages()
    {
        const xcb_atom_t begin = m_connection.internAtom("_NET_STARTUP_INFO_BEGIN");
        const xcb_atom_t more = m_connection.internAtom("_NET_STARTUP_INFO");
        m_connection.addEventHandler([this, begin, more](const xcb_generic_event_t &event) {
            const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event);
            if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE ||
                (message.type != begin && message.type != more))
                return;
            m_text.append(reinterpret_cast<const char *>(message.data.data8), sizeof(message.data.data8));
        });
    }

    bool contain(const QByteArray &message)
    {
        m_connection.drainEvents();
        return m_text.contains(message + '\0');
    }

private:
    X11Connection m_connection;
    QByteArray m_text;
};

} // namespace

class X11WindowStylerTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;
    X11WindowStyler m_x11Styler{m_bench.display, m_bench.clock};
    WindowStyler &m_styler = m_x11Styler;
    std::unique_ptr<QRasterWindow> m_window;
    LinuxBench::Program m_other{nullptr, nullptr};

    // Puts another application in front and types into it, so that it has user activity.
    void startOther()
    {
        m_other = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Other application"_s});
        const std::optional<DesktopWindow> window = m_bench.waitForWindow(u"Other application"_s);
        QVERIFY(window);
        m_bench.bringForward(*window);
        LinuxBench::output(u"xdotool"_s, {u"key"_s, u"x"_s});
        QByteArray told;
        const auto isTold = [this, &told] {
            told += m_other->readAllStandardOutput();
            return told.contains("release 58");
        };
        QTRY_VERIFY_WITH_TIMEOUT(isTold(), LinuxBench::patience);
    }

    bool hasKeys()
    {
        DesktopWindow ours;
        ours.identifier = std::uint32_t(m_window->winId());
        ours.process = QCoreApplication::applicationPid();
        const auto ask = [this, ours] { return m_bench.display.windows().hasKeys(ours); };
        return Awaited::result(m_bench.display.run(ask));
    }

    std::optional<DesktopWindow> found()
    {
        const WindowSnapshot now = m_bench.snapshot();
        const DesktopWindow *window = now.find(std::uint32_t(m_window->winId()));
        return window ? std::optional(*window) : std::nullopt;
    }

    void showDesktop(std::uint32_t number)
    {
        const auto ask = [this, number] {
            const X11Connection &connection = m_bench.display.connection();
            connection.sendToManager(connection.root(), connection.atoms()._NET_CURRENT_DESKTOP, {number, 0});
        };
        Awaited::result(m_bench.display.run(ask));
        QTRY_VERIFY_WITH_TIMEOUT(currentDesktop() == QByteArray::number(number), LinuxBench::patience);
    }

    static QByteArray currentDesktop()
    {
        return LinuxBench::output(u"xprop"_s, {u"-root"_s, u"_NET_CURRENT_DESKTOP"_s})
            .split('=')
            .last()
            .trimmed();
    }

    bool isFrontAndCentre() { return m_window->isActive() && hasKeys() && m_window->position() == middle; }

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QRasterWindow>();
        m_window->setTitle(u"Palette"_s);
        m_window->resize(windowSize);
    }

    void cleanup()
    {
        m_window.reset();
        m_other.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Palette"_s));
        QVERIFY(m_bench.waitForNoWindow(u"Other application"_s));
    }

    void aStyledWindowIsAnOrdinaryOneWithoutFrame()
    {
        m_styler.style(*m_window);
        for (int round = 0; round < 2; ++round) {
            m_styler.bringForward(*m_window);
            QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
            const QString properties = propertiesOf(*m_window);
            QVERIFY2(properties.contains(u"_NET_WM_WINDOW_TYPE(ATOM) = _NET_WM_WINDOW_TYPE_NORMAL\n"),
                     qPrintable(properties));
            QVERIFY2(properties.contains(u"_KDE_NET_WM_BLUR_BEHIND_REGION(CARDINAL)"),
                     qPrintable(properties));
            QCOMPARE(m_window->frameMargins(), QMargins());
            QVERIFY(m_window->format().hasAlpha());
            QVERIFY(found()->belongsInTaskBar);
            // Closing destroys the native window; it is re-created the next time.
            m_window->close();
            QVERIFY(m_bench.waitForNoWindow(u"Palette"_s));
        }
    }

    void theBlurRegionFollowsSizeAndCorners()
    {
        m_window->setProperty(WindowStyler::cornerRadiusProperty, 2);
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        const auto blurred = [](QSize size) {
            const QString topAndBottom =
                u"1, 0, %1, 1, 1, %2, %1, 1, "_s.arg(size.width() - 2).arg(size.height() - 1);
            const QString middle = u"0, 1, %1, %2\n"_s.arg(size.width()).arg(size.height() - 2);
            return u"_KDE_NET_WM_BLUR_BEHIND_REGION(CARDINAL) = "_s + topAndBottom + middle;
        };
        QVERIFY2(propertiesOf(*m_window).contains(blurred(windowSize)), qPrintable(propertiesOf(*m_window)));
        const QSize larger(500, 400);
        m_window->resize(larger);
        QTRY_VERIFY_WITH_TIMEOUT(propertiesOf(*m_window).contains(blurred(larger)), LinuxBench::patience);
    }

    void itComesForwardOverTheApplicationInUse()
    {
        startOther();
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        QCOMPARE(m_bench.snapshot().stacking.value(0), std::uint32_t(m_window->winId()));
    }

    void itComesForwardAgainAfterHiding()
    {
        m_styler.style(*m_window);
        startOther();
        for (int round = 0; round < 3; ++round) {
            m_styler.bringForward(*m_window);
            QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
            m_window->hide();
            QVERIFY(m_bench.waitForActive(u"Other application"_s));
        }
    }

    void hiddenAndShownAtOnceItComesForward()
    {
        m_styler.style(*m_window);
        startOther();
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        m_window->hide();
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(m_window->isVisible(), LinuxBench::patience);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
    }

    void itIsCentredWhereverItWasDragged()
    {
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        QProcess::execute(u"xdotool"_s,
                          {u"windowmove"_s, QString::number(m_window->winId()), u"3"_s, u"7"_s});
        const auto isDragged = [this] { return m_window->position() == QPoint(3, 7); };
        QVERIFY(QTest::qWaitFor(isDragged, LinuxBench::patience));
        m_styler.bringForward(*m_window);
        // A late report of the drag may follow, which the macro would take for a failure.
        QVERIFY(QTest::qWaitFor([this] { return isFrontAndCentre(); }, LinuxBench::patience));
    }

    void itComesToTheWorkspaceThatIsShown()
    {
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        showDesktop(1);
        startOther();
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        QVERIFY(found()->isOnCurrentDesktop);
        QCOMPARE(currentDesktop(), QByteArray("1"));
        m_other.reset();
        showDesktop(0);
    }

    void aMinimisedWindowComesBack()
    {
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        m_window->showMinimized();
        QTRY_VERIFY_WITH_TIMEOUT(found() && found()->isMinimised, LinuxBench::patience);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        QVERIFY(!found()->isMinimised);
    }

    void hidingOrDestroyingItMeanwhileIsSafe()
    {
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(m_window->isVisible(), LinuxBench::patience);
        m_window->hide();
        QVERIFY(m_bench.waitForNoWindow(u"Palette"_s));
        m_styler.bringForward(*m_window);
        m_window.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Palette"_s));
        init();
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
    }

    void theLaunchFeedbackEnds()
    {
        LaunchMessages messages;
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window, u"starter-\"12\"-orvane_TIME34567"_s);
        QTRY_VERIFY_WITH_TIMEOUT(messages.contain("remove: ID=\"starter-\\\"12\\\"-orvane_TIME34567\""),
                                 LinuxBench::patience);
    }

    void followsTheCompositor()
    {
        QSignalSpy changes(&m_styler, &WindowStyler::isCompositingChanged);
        QVERIFY(!m_styler.isCompositing());
        LinuxBench::Program manager = LinuxBench::start(u"xfwm4"_s, {u"--replace"_s, u"--compositor=on"_s});
        QTRY_VERIFY_WITH_TIMEOUT(m_styler.isCompositing(), LinuxBench::patience);
        {
            X11WindowStyler later(m_bench.display, m_bench.clock);
            QTRY_VERIFY_WITH_TIMEOUT(later.isCompositing(), LinuxBench::patience);
        }
        LinuxBench::Program plain = LinuxBench::start(u"xfwm4"_s, {u"--replace"_s, u"--compositor=off"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_styler.isCompositing(), LinuxBench::patience);
        QCOMPARE(changes.size(), 2);
        m_styler.style(*m_window);
        m_styler.bringForward(*m_window);
        QTRY_VERIFY_WITH_TIMEOUT(isFrontAndCentre(), LinuxBench::patience);
        cleanup();
    }
};

QTEST_MAIN(X11WindowStylerTest)
#include "X11WindowStylerTest.moc"

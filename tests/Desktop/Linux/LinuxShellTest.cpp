// SPDX-License-Identifier: Apache-2.0
// The services for our own window, together.
#include "Desktop/Linux/LinuxShell.h"
#include "Desktop/Linux/Hands.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QGuiApplication>
#include <QRasterWindow>
#include <QTest>

#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint16_t letterK = 40;
constexpr HotKeyIdentifier identifier{fourCharacterCode("ORVN"), 1};

std::shared_ptr<HotKeyReference> registerKey(LinuxShell &shell, std::function<void()> pressed)
{
    return Awaited::result(shell.shell().hotKeys.registerHotKey(letterK, HotKeyModifier::Option, identifier,
                                                                std::move(pressed)));
}

} // namespace

class LinuxShellTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // While a grabbed key is down, the server moves the focus away; the toggle must not see that.
    void theWindowKeepsTheFocusDuringItsHotKey()
    {
        LinuxShell shell;
        QRasterWindow window;
        window.resize(400, 300);
        shell.shell().windowStyler.style(window);
        shell.shell().windowStyler.bringForward(window);
        QTRY_VERIFY_WITH_TIMEOUT(window.isActive(), LinuxBench::patience);
        QList<QWindow *> focused;
        const auto reference = registerKey(shell, [&] { focused.append(QGuiApplication::focusWindow()); });
        QVERIFY(reference);
        Hands hands;
        hands.strike(XKB_KEY_k, {XKB_KEY_Alt_L});
        QTRY_COMPARE_WITH_TIMEOUT(focused, QList<QWindow *>{&window}, LinuxBench::patience);
    }

    void aHotKeyShowsAndHidesTheWindow()
    {
        LinuxShell shell;
        QRasterWindow window;
        window.resize(400, 300);
        shell.shell().windowStyler.style(window);
        const auto toggle = [&] {
            if (window.isActive())
                window.hide();
            else
                shell.shell().windowStyler.bringForward(window);
        };
        const auto reference = registerKey(shell, toggle);
        QVERIFY(reference);
        Hands hands;
        for (int round = 0; round < 5; ++round) {
            hands.strike(XKB_KEY_k, {XKB_KEY_Alt_L});
            QTRY_VERIFY_WITH_TIMEOUT(window.isActive(), LinuxBench::patience);
            hands.strike(XKB_KEY_k, {XKB_KEY_Alt_L});
            QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), LinuxBench::patience);
        }
    }

    // A nested X server receives all keys of its own desktop.
    void insideAWaylandSessionThereAreHotKeys()
    {
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        LinuxShell shell;
        QVERIFY(registerKey(shell, [] {}));
        qunsetenv("WAYLAND_DISPLAY");
    }

    void theShellMayBeDestroyedWhileTheWindowAppears()
    {
        QRasterWindow window;
        window.resize(400, 300);
        {
            LinuxShell shell;
            shell.shell().windowStyler.style(window);
            shell.shell().windowStyler.bringForward(window);
        }
        LinuxShell next;
        next.shell().windowStyler.style(window);
        next.shell().windowStyler.bringForward(window);
        QTRY_VERIFY_WITH_TIMEOUT(window.isActive(), LinuxBench::patience);
    }
};

QTEST_MAIN(LinuxShellTest)
#include "LinuxShellTest.moc"

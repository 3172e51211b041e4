// SPDX-License-Identifier: Apache-2.0
// Styling the window where the window system places it.
#include "Desktop/Linux/Window/WaylandWindowStyler.h"

#include <QRasterWindow>
#include <QTest>

using namespace Qt::StringLiterals;

class WaylandWindowStylerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void alwaysCompositing() { QVERIFY(WaylandWindowStyler().isCompositing()); }

    void theWindowHasNoFrameAndMayBeTranslucent()
    {
        WaylandWindowStyler styler;
        QRasterWindow window;
        styler.style(window);
        QVERIFY(!window.isVisible());
        QVERIFY(window.flags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(window.requestedFormat().hasAlpha());
    }

    void aWindowIsShownWhateverItsState()
    {
        WaylandWindowStyler styler;
        WindowStyler &any = styler;
        QRasterWindow window;
        any.style(window);
        any.bringForward(window);
        QTRY_VERIFY(window.isActive());
        window.showMinimized();
        any.bringForward(window);
        QVERIFY(window.isVisible());
        QVERIFY(!(window.windowStates() & Qt::WindowMinimized));
    }

    void itsSizeIsFixedOnlyWhileItAppears()
    {
        constexpr QSize least(300, 200);
        constexpr QSize most(900, 800);
        WaylandWindowStyler own;
        WindowStyler &styler = own;
        QRasterWindow window;
        styler.style(window);
        window.setMinimumSize(least);
        window.setMaximumSize(most);
        window.resize(400, 300);
        for (int summons = 0; summons < 2; ++summons) {
            styler.bringForward(window);
            QVERIFY(!window.isActive());
            QCOMPARE(window.minimumSize(), QSize(400, 300));
            QCOMPARE(window.maximumSize(), QSize(400, 300));
        }
        QTRY_VERIFY(window.isActive());
        QCOMPARE(window.minimumSize(), least);
        QCOMPARE(window.maximumSize(), most);
    }

    void theTokenIsPassedToQt()
    {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        WaylandWindowStyler styler;
        QRasterWindow window;
        styler.bringForward(window, QString());
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        styler.bringForward(window, u"token"_s);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("token"));
    }
};

QTEST_MAIN(WaylandWindowStylerTest)
#include "WaylandWindowStylerTest.moc"

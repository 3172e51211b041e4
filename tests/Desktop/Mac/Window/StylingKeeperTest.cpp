// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/StylingKeeper.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

// A window that tracks whether its native window is styled.
class StyledWindow : public QWindow
{
public:
    bool isStyled = false;

    void keepStyled()
    {
        new StylingKeeper(*this, [this] { isStyled = true; });
    }
};

class StylingKeeperTest : public QObject
{
    Q_OBJECT

private:
    // Simulates Qt entering or leaving full screen.
    static void changeState(StyledWindow &window)
    {
        window.isStyled = false;
        QWindowStateChangeEvent event(Qt::WindowNoState);
        QCoreApplication::sendEvent(&window, &event);
    }

private Q_SLOTS:
    void anExistingNativeWindowIsStyledAtOnce()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        QVERIFY(window.isStyled);
    }

    void aNativeWindowIsStyledWhenCreated()
    {
        StyledWindow window;
        window.keepStyled();
        QVERIFY(!window.isStyled);
        window.create();
        QVERIFY(window.isStyled);
    }

    void aNewNativeWindowIsStyledAgain()
    {
        StyledWindow window;
        window.keepStyled();
        window.create();
        window.isStyled = false;
        window.destroy();
        QVERIFY(!window.isStyled);
        window.create();
        QVERIFY(window.isStyled);
    }

    void itIsStyledAgainAfterAStateChange()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        changeState(window);
        QVERIFY(window.isStyled);
    }

    void itIsStyledAgainWhenTheStyleIsLostAfterAStateChange()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        changeState(window);
        window.isStyled = false;
        QTRY_VERIFY(window.isStyled);
    }

    void itIsStyledAgainWhenItIsShown()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        window.show();
        window.isStyled = false;
        QTRY_VERIFY(window.isStyled);
    }

    void itIsStyledAgainOnAnotherScreen()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        window.isStyled = false;
        Q_EMIT window.screenChanged(window.screen());
        QTRY_VERIFY(window.isStyled);
    }

    void aWindowWithoutANativeWindowIsLeftAlone()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        changeState(window);
        window.isStyled = false;
        window.destroy();
        QCoreApplication::processEvents();
        QVERIFY(!window.isStyled);
    }

    void destroyingTheWindowCancelsPendingStyling()
    {
        int stylings = 0;
        auto window = std::make_unique<StyledWindow>();
        window->create();
        new StylingKeeper(*window, [&stylings] { ++stylings; });
        changeState(*window);
        QCOMPARE(stylings, 2);
        window.reset();
        QCoreApplication::processEvents();
        QCOMPARE(stylings, 2);
    }
};

QTEST_MAIN(StylingKeeperTest)
#include "StylingKeeperTest.moc"

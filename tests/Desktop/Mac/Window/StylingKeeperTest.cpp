// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/StylingKeeper.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

// A window whose native side has the styling, or has lost it.
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
    // What Qt does when the window goes to full screen or comes back.
    static void changeState(StyledWindow &window)
    {
        window.isStyled = false;
        QWindowStateChangeEvent event(Qt::WindowNoState);
        QCoreApplication::sendEvent(&window, &event);
    }

private Q_SLOTS:
    void aNativeWindowThatIsThereIsStyledAtOnce()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        QVERIFY(window.isStyled);
    }

    void aNativeWindowIsStyledAsSoonAsItIsMade()
    {
        StyledWindow window;
        window.keepStyled();
        QVERIFY(!window.isStyled);
        window.create();
        QVERIFY(window.isStyled);
    }

    void soIsTheNextOne()
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

    void itIsStyledAgainWhenItsStateHasChanged()
    {
        StyledWindow window;
        window.create();
        window.keepStyled();
        changeState(window);
        QVERIFY(window.isStyled);
    }

    void itIsStyledAgainWhenTheStylingGoesRightAfterAChangeOfState()
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

    void aWindowThatHasLostItsNativeOneIsLeftAlone()
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

    void theStylingThatIsDueGoesWithTheWindow()
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

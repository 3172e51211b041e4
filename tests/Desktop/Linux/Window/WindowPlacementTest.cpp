// SPDX-License-Identifier: Apache-2.0
// Where a window is placed.
#include "Desktop/Linux/Window/WindowPlacement.h"

#include <QTest>

using WindowPlacement::Screen;

class WindowPlacementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theScreenIsTheOneWithThePoint_data()
    {
        QTest::addColumn<QList<Screen>>("screens");
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<std::optional<qsizetype>>("position");
        const QList<Screen> beside{{QRect(0, 0, 1920, 1080), 1}, {QRect(1920, 0, 1280, 800), 1}};
        // The second is 2560 pixels wide and starts where the pixels of the first end.
        const QList<Screen> fine{{QRect(0, 0, 1920, 1080), 2}, {QRect(3840, 0, 1280, 800), 2}};
        const auto row = [](const char *name, const QList<Screen> &screens, QPoint pixel,
                            std::optional<qsizetype> position) {
            QTest::newRow(name) << screens << pixel << position;
        };
        row("first", beside, {10, 10}, 0);
        row("last column of the first", beside, {1919, 500}, 0);
        row("second", beside, {1920, 500}, 1);
        row("below the second", beside, {2000, 900}, std::nullopt);
        row("fine first", fine, {3839, 2159}, 0);
        row("fine second", fine, {3840 + 2559, 1599}, 1);
        row("beyond the fine second", fine, {3840 + 2560, 0}, std::nullopt);
        row("left of all", beside, {-1, 0}, std::nullopt);
        row("no screen", {}, {0, 0}, std::nullopt);
    }

    void theScreenIsTheOneWithThePoint()
    {
        QFETCH(QList<Screen>, screens);
        QFETCH(QPoint, pixel);
        QTEST(WindowPlacement::screenAt(pixel, screens), "position");
    }

    void windowsGoInTheMiddle_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QPoint>("corner");
        QTest::newRow("at the origin") << QSize(720, 620) << QRect(0, 0, 1280, 800) << QPoint(280, 90);
        QTest::newRow("elsewhere") << QSize(100, 100) << QRect(1920, 30, 300, 200) << QPoint(2020, 80);
        QTest::newRow("odd room") << QSize(100, 100) << QRect(0, 0, 101, 103) << QPoint(0, 1);
        QTest::newRow("too large") << QSize(2000, 2000) << QRect(10, 20, 640, 480) << QPoint(10, 20);
        QTest::newRow("too high only") << QSize(100, 2000) << QRect(0, 24, 300, 480) << QPoint(100, 24);
    }

    void windowsGoInTheMiddle()
    {
        QFETCH(QSize, window);
        QFETCH(QRect, area);
        QTEST(WindowPlacement::centred(window, area), "corner");
    }
};

QTEST_GUILESS_MAIN(WindowPlacementTest)
#include "WindowPlacementTest.moc"

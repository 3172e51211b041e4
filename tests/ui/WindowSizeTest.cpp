// SPDX-License-Identifier: Apache-2.0
// The window's initial size and minimum size.
#include "ui/support/Pointer.h"
#include "ui/support/UiTest.h"

using namespace Qt::StringLiterals;

class UiWindowSizeTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void itComesUpInItsOwnSize();
    void itGrowsAndShrinksAtItsCorner();
    void aClickAtTheEdgeDoesNothing_data();
    void aClickAtTheEdgeDoesNothing();
    void itKeepsItsSizeWhileHidden();

private:
    QSize size() { return orvane().window()->area.size(); }
    void dragCorner(QPoint distance);
};

void UiWindowSizeTest::dragCorner(QPoint distance)
{
    const QPoint corner = orvane().window()->area.bottomRight() - QPoint(2, 2);
    Pointer::drag(corner, corner + distance);
}

void UiWindowSizeTest::itComesUpInItsOwnSize()
{
    QVERIFY(orvane().startShown());
    QCOMPARE(size(), QSize(720, 620));
    QCOMPARE(orvane().window()->title, u"Orvane"_s);
}

void UiWindowSizeTest::itGrowsAndShrinksAtItsCorner()
{
    QVERIFY(orvane().startShown());
    dragCorner({100, 50});
    VERIFY_SOON(size().width() > 720 && size().height() > 620);
    dragCorner({-600, -500});
    VERIFY_SOON(size() == QSize(640, 460));
    // All content is still visible.
    QVERIFY(orvane().shows(Role::button, u"Download Qwen2.5 1.5B Instruct"_s));
    QVERIFY(orvane().shows(Role::label, u"On-device"_s));
    type(u"and typing works"_s);
    QVERIFY(orvane().waitForFieldText(u"and typing works"_s));
}

void UiWindowSizeTest::aClickAtTheEdgeDoesNothing_data()
{
    QTest::addColumn<QPoint>("fromCorner"); // offset from the bottom right corner
    QTest::newRow("corner") << QPoint(-2, -2);
    QTest::newRow("right edge") << QPoint(-2, -300);
    QTest::newRow("bottom edge") << QPoint(-300, -2);
    QTest::newRow("background") << QPoint(-360, -20);
}

// The window manager must not keep its grab after the button is released.
void UiWindowSizeTest::aClickAtTheEdgeDoesNothing()
{
    QFETCH(QPoint, fromCorner);
    QVERIFY(orvane().startShown());
    const QRect before = orvane().window()->area;
    Pointer::click(before.bottomRight() + fromCorner);
    Pointer::moveTo(before.center());
    type(u"The keyboard is free"_s);
    QVERIFY(orvane().waitForFieldText(u"The keyboard is free"_s));
    QCOMPARE(orvane().window()->area, before);
}

void UiWindowSizeTest::itKeepsItsSizeWhileHidden()
{
    QVERIFY(orvane().startShown());
    dragCorner({-600, -500});
    VERIFY_SOON(size() == QSize(640, 460));
    Screen::pressKey(u"ctrl+w"_s);
    QVERIFY(orvane().waitForHidden());
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QCOMPARE(size(), QSize(640, 460));
}

QTEST_GUILESS_MAIN(UiWindowSizeTest)
#include "WindowSizeTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/RoundedArea.h"

#include <QRegion>
#include <QTest>

class RoundedAreaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pixelsBelongByTheirCentre_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("radius");
        QTest::newRow("window") << QSize(72, 62) << 14;
        QTest::newRow("square corners") << QSize(20, 10) << 0;
        QTest::newRow("smallest circle") << QSize(9, 9) << 1;
        QTest::newRow("nothing but corners") << QSize(28, 28) << 14;
        QTest::newRow("lower than its corners are") << QSize(60, 10) << 14;
    }

    // Compares every pixel with the circle's equation.
    void pixelsBelongByTheirCentre()
    {
        QFETCH(QSize, size);
        QFETCH(int, radius);
        QRegion area;
        for (const QRect &rectangle : RoundedArea::rectangles(size, radius)) {
            QVERIFY(!rectangle.isEmpty());
            QVERIFY(!area.intersects(rectangle));
            area += rectangle;
        }
        const double round = std::min(radius, std::min(size.width(), size.height()) / 2);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const double across = round - std::min(x + 0.5, size.width() - x - 0.5);
                const double down = round - std::min(y + 0.5, size.height() - y - 0.5);
                const bool inCorner = across > 0 && down > 0;
                const bool inside = !inCorner || across * across + down * down <= round * round;
                QCOMPARE(area.contains(QPoint(x, y)), inside);
            }
        }
        QCOMPARE(area.boundingRect(), QRect(QPoint(), size));
    }

    void aWindowWithoutASizeHasNoArea() { QVERIFY(RoundedArea::rectangles(QSize(0, 10), 3).isEmpty()); }
};

QTEST_GUILESS_MAIN(RoundedAreaTest)
#include "RoundedAreaTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "ContentView/Controls/SymbolImages.h"

#include "ContentView/ViewModels/LogEntryAppearance.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The colours of opaque pixels.
QSet<QRgb> solidColours(const QImage &image)
{
    QSet<QRgb> result;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() == 255)
                result.insert(image.pixelColor(x, y).rgb());
    return result;
}

} // namespace

class SymbolImagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySymbolIsThere_data();
    void everySymbolIsThere();
    void aSymbolTakesTheColourAskedFor();
    void aSymbolIsDrawnAtTheSizeAskedFor();
    void transparencyIsKept();
    void anUnknownSymbolGivesNoImage();
};

void SymbolImagesTest::everySymbolIsThere_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"sparkles", "command", "stop.circle.fill", "arrow.up.circle.fill", "cpu", "arrow.turn.down.right",
          "checkmark", "checkmark.circle.fill", "xmark.circle.fill", "info.circle", "hand.raised.fill",
          "exclamationmark.shield.fill", "lock.fill"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SymbolImagesTest::everySymbolIsThere()
{
    QFETCH(QString, name);
    QSize size;
    const QImage image = SymbolImages().requestImage(name + u"?336699"_s, &size, QSize(28, 28));
    QCOMPARE(size, QSize(28, 28));
    QVERIFY(!solidColours(image).isEmpty());
}

void SymbolImagesTest::aSymbolTakesTheColourAskedFor()
{
    QSize size;
    const QImage image = SymbolImages().requestImage(u"checkmark?336699"_s, &size, QSize(96, 96));
    QCOMPARE(solidColours(image), QSet<QRgb>{qRgb(0x33, 0x66, 0x99)});
}

void SymbolImagesTest::aSymbolIsDrawnAtTheSizeAskedFor()
{
    QSize size;
    QCOMPARE(SymbolImages().requestImage(u"cpu?000000"_s, &size, QSize(57, 57)).size(), QSize(57, 57));
    QCOMPARE(SymbolImages().requestImage(u"cpu?000000"_s, &size, {}).size(), QSize(24, 24));
}

void SymbolImagesTest::transparencyIsKept()
{
    QSize size;
    const QImage image = SymbolImages().requestImage(u"lock.fill?80000000"_s, &size, QSize(96, 96));
    int strongest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            strongest = qMax(strongest, image.pixelColor(x, y).alpha());
    QCOMPARE(strongest, 0x80);
}

void SymbolImagesTest::anUnknownSymbolGivesNoImage()
{
    QSize size;
    QVERIFY(SymbolImages().requestImage(u"no.such.symbol?000000"_s, &size, QSize(24, 24)).isNull());
}

QTEST_MAIN(SymbolImagesTest)
#include "SymbolImagesTest.moc"

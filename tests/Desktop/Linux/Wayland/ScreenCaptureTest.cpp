// SPDX-License-Identifier: Apache-2.0
// Screenshots of a real wlroots compositor.
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QColor red(200, 30, 60);
const QSize windowSize(200, 150);

class RedWindow : public QRasterWindow
{
public:
    RedWindow()
    {
        setFlag(Qt::FramelessWindowHint);
        setTitle(u"Red"_s);
        resize(windowSize);
        show();
    }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(QRect(QPoint(), size()), red); }
};

int redPixels(const QImage &picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == red;
    }
    return count;
}

} // namespace

class WaylandScreenCaptureTest : public QObject
{
    Q_OBJECT

private:
    WaylandScreenCapture m_capture;

    QImage picture()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Screenshot 1.png"_s);
        Awaited::result(m_capture.capture(path));
        return QImage(path, "PNG");
    }

private Q_SLOTS:
    void theCompositorOffersScreenshots() { QVERIFY(WaylandScreenCapture::isOfferedBy(WaylandConnection())); }

    void thePictureShowsTheWholeScreen()
    {
        const RedWindow window;
        QTRY_COMPARE_WITH_TIMEOUT(redPixels(picture()), windowSize.width() * windowSize.height(),
                                  LinuxBench::patience);
        QCOMPARE(picture().size(), QSize(1280, 800));
    }

    void anUnwritablePictureLeavesNoFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"missing/Screenshot.png"_s);
        Awaited::result(m_capture.capture(path));
        QVERIFY(QDir(folder.path()).isEmpty());
    }
};

QTEST_MAIN(WaylandScreenCaptureTest)
#include "ScreenCaptureTest.moc"

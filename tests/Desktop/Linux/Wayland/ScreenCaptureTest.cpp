// SPDX-License-Identifier: Apache-2.0
// Screenshots of a real wlroots compositor.
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QProcess>
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

int redPixels(const QImage &picture, int left = 0)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = left; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == red;
    }
    return count;
}

// A screen of 800 × 600 to the right of the first one.
class SecondOutput
{
public:
    SecondOutput()
    {
        tell({u"create_output"_s});
        tell({u"output"_s, u"HEADLESS-1"_s, u"position"_s, u"0"_s, u"0"_s}); // or sway moves it
        tell({u"output"_s, u"HEADLESS-2"_s, u"resolution"_s, u"800x600"_s, u"position"_s, u"1280"_s, u"0"_s});
    }
    ~SecondOutput() { tell({u"output"_s, u"HEADLESS-2"_s, u"unplug"_s}); }
    SecondOutput(const SecondOutput &) = delete;
    SecondOutput &operator=(const SecondOutput &) = delete;

private:
    static void tell(const QStringList &command)
    {
        QProcess::execute(u"swaymsg"_s, QStringList{u"-q"_s} + command);
    }
};

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

    void outputsAreSideBySide()
    {
        const SecondOutput output;
        QTRY_COMPARE_WITH_TIMEOUT(picture().size(), QSize(2080, 800), LinuxBench::patience);
        const RedWindow window;
        const int size = windowSize.width() * windowSize.height();
        const auto isOnSecond = [this, size] {
            QProcess::execute(u"swaymsg"_s,
                              {u"-q"_s, u"[title=\"Red\"] move container to output HEADLESS-2"_s});
            return redPixels(picture(), 1280) == size;
        };
        QVERIFY(QTest::qWaitFor(isOnSecond, LinuxBench::patience));
        QCOMPARE(redPixels(picture()), size);
        QCOMPARE(picture().pixelColor(1500, 700), QColor(Qt::black)); // below the lower output
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

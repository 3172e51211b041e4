// SPDX-License-Identifier: Apache-2.0
// Screenshots of a real screen.
#include "Desktop/Linux/LinuxScreenCapture.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/XServer.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

class RedWindow : public QRasterWindow
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), QColor(200, 30, 60));
    }
};

} // namespace

class LinuxScreenCaptureTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;
    LinuxScreenCapture m_capture{m_bench.display};

private Q_SLOTS:
    void thePictureShowsTheWholeScreen()
    {
        RedWindow window;
        window.setTitle(u"Red"_s);
        window.resize(200, 200);
        window.show();
        QVERIFY(m_bench.waitForActive(u"Red"_s));
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Screenshot 1.png"_s);
        const QPoint middle = window.mapToGlobal(QPoint(100, 100));
        const auto colourInPicture = [this, &path, &middle] {
            Awaited::result(m_capture.capture(path));
            return QColor(QImage(path, "PNG").pixel(middle));
        };
        QTRY_COMPARE(colourInPicture(), QColor(200, 30, 60));
        QCOMPARE(QImage(path, "PNG").size(), QGuiApplication::primaryScreen()->size());
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
                 1);
    }

    void anUnwritablePictureLeavesNoFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"missing/Screenshot.png"_s);
        Awaited::result(m_capture.capture(path));
        QVERIFY(!QFileInfo::exists(path));
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    // As on a disk that fills up while writing.
    void aPartlyWrittenPictureLeavesNoFile()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit usual{};
        getrlimit(RLIMIT_FSIZE, &usual);
        const rlimit small{100, usual.rlim_max};
        const QTemporaryDir folder;
        setrlimit(RLIMIT_FSIZE, &small);
        Awaited::result(m_capture.capture(folder.filePath(u"Screenshot.png"_s)));
        setrlimit(RLIMIT_FSIZE, &usual);
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void anUnsupportedScreenLeavesNoFile()
    {
        const XServer server(u"640x480x16"_s);
        QVERIFY(server.isRunning());
        SystemClock clock;
        X11Display display(clock);
        LinuxScreenCapture capture(display);
        const QTemporaryDir folder;
        QCOMPARE(LinuxBench::errorOf(capture.capture(folder.filePath(u"Screenshot.png"_s))), QString());
        QVERIFY(QDir(folder.path()).isEmpty());
    }
};

QTEST_MAIN(LinuxScreenCaptureTest)
#include "LinuxScreenCaptureTest.moc"

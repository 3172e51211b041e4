// SPDX-License-Identifier: Apache-2.0
// The clipboard of a real X server, shared with this process's toolkit, which has a connection of its own.
#include "Desktop/Linux/X11/Clipboard.h"

#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class X11ClipboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void writtenTextIsThereForOthers_data();
    void writtenTextIsThereForOthers();
    void othersTextIsRead_data();
    void othersTextIsRead();
    void ownTextIsReadUntilSomethingElseIsCopied();
    void anEmptyClipboardHasNoText();
    void aPictureIsNoText();
    void aTextInPiecesIsTooLong();
    void anOwnerThatDoesNotAnswerIsReported();
    void anObstacleIsReported();

private:
    static QClipboard &others() { return *QGuiApplication::clipboard(); }
    std::optional<QString> read() { return Awaited::result(m_clipboard->read()); }
    void write(const QString &text) { Awaited::result(m_clipboard->write(text)); }

    std::unique_ptr<X11Clipboard> m_clipboard;
};

void X11ClipboardTest::init()
{
    m_clipboard.reset();
    m_clipboard = std::make_unique<X11Clipboard>();
    others().clear();
    QTRY_VERIFY(!others().ownsClipboard());
}

void X11ClipboardTest::writtenTextIsThereForOthers_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << u"one"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("lines and signs") << u"Ärger\n\t€ 😀\n"_s;
    QTest::newRow("as long as scripts may have it") << QString(131'072, u'€');
}

void X11ClipboardTest::writtenTextIsThereForOthers()
{
    QFETCH(QString, text);
    others().setText(u"before"_s);
    write(text);
    QTRY_VERIFY(!others().ownsClipboard());
    QCOMPARE(others().text(), text);
    const QStringList formats = others().mimeData()->formats();
    QVERIFY2(formats.contains(u"text/plain"_s), qPrintable(formats.join(u' ')));
}

void X11ClipboardTest::othersTextIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short") << u"one"_s;
    QTest::newRow("lines and signs") << u"Ärger\n\t€ 😀\n"_s;
    QTest::newRow("long") << QString(60'000, u'€');
}

void X11ClipboardTest::othersTextIsRead()
{
    QFETCH(QString, text);
    others().setText(text);
    QCOMPARE(read(), text);
}

void X11ClipboardTest::ownTextIsReadUntilSomethingElseIsCopied()
{
    write(u"own"_s);
    QCOMPARE(read(), u"own"_s);
    others().setText(u"other"_s);
    QCOMPARE(read(), u"other"_s);
    write(u"again"_s);
    QCOMPARE(read(), u"again"_s);
}

void X11ClipboardTest::anEmptyClipboardHasNoText()
{
    QCOMPARE(read(), std::nullopt);
}

void X11ClipboardTest::aPictureIsNoText()
{
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    others().setImage(picture);
    QCOMPARE(read(), std::nullopt);
}

// Larger than what the X server takes in one request.
void X11ClipboardTest::aTextInPiecesIsTooLong()
{
    others().setText(QString(20'000'000, u'x'));
    const auto reading = [this]() -> QCoro::Task<void> { co_await m_clipboard->read(); };
    QCOMPARE(LinuxBench::errorOf(reading()), u"The text in the clipboard is too long."_s);
}

void X11ClipboardTest::anOwnerThatDoesNotAnswerIsReported()
{
    others().setText(u"one"_s);
    QCoreApplication::processEvents();
    const auto running = std::make_shared<Awaited::Outcome<std::optional<QString>>>();
    const QCoro::Task<void> settling = Awaited::settle(m_clipboard->read(), running);
    // This thread, which would have to answer, doesn't.
    QThread::msleep((Deadlines::answer + 1s).count());
    QVERIFY(Awaited::waitFor(running));
    QVERIFY_THROWS_EXCEPTION(PlatformError, std::rethrow_exception(running->exception));
}

void X11ClipboardTest::anObstacleIsReported()
{
    X11Clipboard clipboard(u"Not here."_s);
    const auto writing = [&clipboard]() -> QCoro::Task<void> { co_await clipboard.write(u"one"_s); };
    QCOMPARE(LinuxBench::errorOf(writing()), u"Not here."_s);
}

QTEST_MAIN(X11ClipboardTest)
#include "ClipboardTest.moc"

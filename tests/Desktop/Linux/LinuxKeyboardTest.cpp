// SPDX-License-Identifier: Apache-2.0
// Keys on a real X server: what arrives, and what stays behind.
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/X11Keyboard.h"

#include <QFile>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

KeyStroke text(const QString &text)
{
    return {0, {}, text};
}

KeyStroke key(std::uint16_t code, EventFlags flags = {})
{
    return {code, flags, {}};
}

// Everything that is hard to type: more characters than there are spare keys, in several scripts.
QString hardText()
{
    QString text = u"Plain {text} ~ ^ ` \\ \"@\" €\n"_s;
    for (int index = 0; index < 120; ++index)
        text += QChar(u'一' + 7 * index);
    return text +
           u"\nÉté à Łódź, žluťoučký kůň, cafe\u0301\nСъешь ещё булок\n👍🏽 👩🏿‍🚀 🎉\n\tend"_s;
}

QByteArray keyMap()
{
    return LinuxBench::output(u"xkbcomp"_s, {u"-xkb"_s, qEnvironmentVariable("DISPLAY"), u"-"_s});
}

} // namespace

class LinuxKeyboardTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;
    LinuxBench::Program m_receiver{nullptr, nullptr};

    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = 0us)
    {
        return LinuxBench::errorOf(m_bench.keyboard.post(strokes, pause));
    }

    void startReceiver()
    {
        m_receiver = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
        QVERIFY(m_bench.waitForActive(u"Receiver"_s));
    }

    // What the receiver told, once it has told of `last`.
    QByteArray receivedUntil(const QByteArray &last)
    {
        QByteArray told;
        const auto look = [this, &told, &last] {
            told += m_receiver->readAllStandardOutput();
            return told.contains(last);
        };
        return QTest::qWaitFor(look, LinuxBench::patience) ? told : QByteArray();
    }

    static bool isModifierDown()
    {
        LinuxBench bench;
        const auto look = [&bench] { return X11Keyboard(bench.display.connection()).isModifierHeld(); };
        return QCoro::waitFor(bench.display.run(look));
    }

private Q_SLOTS:
    void cleanup()
    {
        m_receiver.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Receiver"_s));
    }

    void commandTArrivesAsControlT()
    {
        startReceiver();
        QCOMPARE(post({key(17, EventFlag::Command)}), QString());
        const QByteArray told = receivedUntil("release 1000021");
        QVERIFY2(told.contains("press 54 4000000"), told.constData());
        QVERIFY(!isModifierDown());
    }

    void textArrivesInAnotherApplicationAsWritten()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"typed.txt"_s);
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
        const auto editor = LinuxBench::start(u"mousepad"_s, {path});
        QVERIFY(m_bench.waitForActive(u"typed.txt"_s));
        const QByteArray before = keyMap();
        QCOMPARE(post({text(hardText())}), QString());
        QCOMPARE(keyMap(), before);
        QCOMPARE(post({key(1, EventFlag::Command)}), QString());
        QString content;
        const auto read = [&path, &content] {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly))
                content = QString::fromUtf8(file.readAll());
            return !content.isEmpty();
        };
        QVERIFY(QTest::qWaitFor(read, LinuxBench::patience));
        QCOMPARE(content.trimmed(), hardText().trimmed());
    }
};

QTEST_MAIN(LinuxKeyboardTest)
#include "LinuxKeyboardTest.moc"

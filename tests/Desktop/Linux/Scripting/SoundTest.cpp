// SPDX-License-Identifier: Apache-2.0
// Volume, tones and speech, on a real sound server whose loudspeaker is recorded.
#include "Desktop/Linux/Scripting/SampleScripts.h"
#include "Support/PrivateSoundServer.h"

#include <QLocalServer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// What the loudspeaker plays from the construction on.
class Recording
{
public:
    Recording()
    {
        m_recorder.start(u"parec"_s, {u"--device=loudspeaker.monitor"_s, u"--format=s16le"_s,
                                      u"--channels=1"_s, u"--raw"_s, u"--latency-msec=20"_s});
        // Silence comes first.
        m_recorder.waitForReadyRead();
    }
    ~Recording()
    {
        m_recorder.kill();
        m_recorder.waitForFinished();
    }

    bool isSilent()
    {
        m_bytes += m_recorder.readAllStandardOutput();
        const auto *samples = reinterpret_cast<const qint16 *>(m_bytes.constData());
        constexpr int audible = 500;
        return std::none_of(samples, samples + m_bytes.size() / 2,
                            [](qint16 sample) { return std::abs(int(sample)) > audible; });
    }

private:
    QProcess m_recorder;
    QByteArray m_bytes;
};

} // namespace

class SoundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void setsTheVolume_data();
    void setsTheVolume();
    void tellsTheVolume();
    void mutes();
    void hasNoAlertVolume();
    void beeps();
    void speaks();
    void needsASoundServer();
    void endsIfTheSoundServerIsSilent();
    void needsASpeechService();

private:
    QTemporaryDir m_folder;
    std::optional<PrivateSoundServer> m_soundServer;
    QProcess m_speechService;
};

void SoundTest::initTestCase()
{
    m_soundServer.emplace();
    QVERIFY(m_soundServer->isRunning());

    const QString speechSocket = m_folder.filePath(u"speech"_s);
    qputenv("SPEECHD_ADDRESS", "unix_socket:" + speechSocket.toLocal8Bit());
    m_speechService.start(u"speech-dispatcher"_s,
                          {u"-s"_s, u"-t"_s, u"0"_s, u"-c"_s, u"unix_socket"_s, u"-S"_s, speechSocket,
                           u"-P"_s, m_folder.filePath(u"speech.pid"_s), u"-L"_s, m_folder.path()});
    QVERIFY(m_speechService.waitForStarted());
    QTRY_VERIFY(QFile::exists(speechSocket));
}

void SoundTest::cleanupTestCase()
{
    m_speechService.terminate();
    m_speechService.waitForFinished();
    m_soundServer.reset();
}

void SoundTest::setsTheVolume_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("expected");
    QTest::newRow("in percent") << u"set volume output volume 30"_s << u" 30% "_s;
    QTest::newRow("on the old scale") << u"set volume 3.5"_s << u" 50% "_s;
    QTest::newRow("off") << u"set volume 0"_s << u" 0% "_s;
    QTest::newRow("too loud") << u"set volume output volume 400"_s << u" 100% "_s;
    QTest::newRow("negative") << u"set volume output volume -5"_s << u" 0% "_s;
}

void SoundTest::setsTheVolume()
{
    QFETCH(QString, script);
    QFETCH(QString, expected);
    QCOMPARE(SampleScripts::run(script), u"none"_s);
    const QString volume = PrivateSoundServer::answerTo(u"get-sink-volume"_s);
    QVERIFY2(volume.contains(expected), qPrintable(volume));
}

void SoundTest::tellsTheVolume()
{
    SampleScripts::run(u"set volume output volume 40 input volume 70 without output muted"_s);
    QCOMPARE(SampleScripts::run(u"set s to get volume settings\n"
                                "return {output volume of s, input volume of s, "
                                "alert volume of s is missing value, output muted of s} as text"_s),
             u"4070truefalse"_s);
}

void SoundTest::mutes()
{
    SampleScripts::run(u"set volume with output muted"_s);
    QVERIFY(PrivateSoundServer::answerTo(u"get-sink-mute"_s).contains(u"yes"_s));
    SampleScripts::run(u"set volume output muted false"_s);
    QVERIFY(PrivateSoundServer::answerTo(u"get-sink-mute"_s).contains(u"no"_s));
}

void SoundTest::hasNoAlertVolume()
{
    QCOMPARE(SampleScripts::run(u"set volume alert volume 5"_s),
             u"Error: There is no alert volume on this computer."_s);
}

void SoundTest::beeps()
{
    SampleScripts::run(u"set volume output volume 100"_s);
    Recording recording;
    QVERIFY(recording.isSilent());
    QCOMPARE(SampleScripts::run(u"beep 2"_s), u"none"_s);
    QTRY_VERIFY(!recording.isSilent());
}

void SoundTest::speaks()
{
    SampleScripts::run(u"set volume output volume 100"_s);
    Recording recording;
    QVERIFY(recording.isSilent());
    QCOMPARE(SampleScripts::run(u"say \"Hello\""_s), u"none"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!recording.isSilent(), 20000);
}

void SoundTest::needsASoundServer()
{
    const QByteArray before = qgetenv("PULSE_SERVER");
    qputenv("PULSE_SERVER", "unix:/nonexistent");
    QCOMPARE(SampleScripts::run(u"beep"_s), u"Error: This desktop has no sound server."_s);
    qputenv("PULSE_SERVER", before);
}

void SoundTest::endsIfTheSoundServerIsSilent()
{
    QLocalServer silent;
    QVERIFY(silent.listen(m_folder.filePath(u"silent"_s)));
    const QByteArray before = qgetenv("PULSE_SERVER");
    qputenv("PULSE_SERVER", "unix:" + silent.fullServerName().toLocal8Bit());
    QCOMPARE(SampleScripts::run(u"get volume settings"_s),
             u"Error: The desktop's sound server doesn't answer."_s);
    qputenv("PULSE_SERVER", before);
}

void SoundTest::needsASpeechService()
{
    const QByteArray before = qgetenv("SPEECHD_ADDRESS");
    qputenv("SPEECHD_ADDRESS", "inet_socket:127.0.0.1:1");
    QCOMPARE(SampleScripts::run(u"say \"Hello\""_s), u"Error: This desktop has no speech service."_s);
    qputenv("SPEECHD_ADDRESS", before);
}

QTEST_GUILESS_MAIN(SoundTest)
#include "SoundTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Volume, tones and speech, on a real sound server whose loudspeaker is recorded.
#include "Desktop/Linux/Scripting/LinuxScripting.h"
#include "Desktop/Linux/Scripting/SampleScripts.h"

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
    // The sound server's own word about the loudspeaker.
    QString pactl(const QString &question);

    QTemporaryDir m_folder;
    QProcess m_soundServer;
    QProcess m_speechService;
};

void SoundTest::initTestCase()
{
    const QString socket = m_folder.filePath(u"sound"_s);
    qputenv("PULSE_SERVER", "unix:" + socket.toLocal8Bit());
    m_soundServer.start(u"pulseaudio"_s,
                        {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                         u"-L"_s, u"module-null-sink sink_name=loudspeaker"_s, u"-L"_s,
                         u"module-native-protocol-unix auth-anonymous=1 socket=%1"_s.arg(socket)});
    QVERIFY(m_soundServer.waitForStarted());
    QTRY_VERIFY(!pactl(u"get-sink-mute"_s).isEmpty());

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
    for (QProcess *server : {&m_speechService, &m_soundServer}) {
        server->terminate();
        server->waitForFinished();
    }
}

QString SoundTest::pactl(const QString &question)
{
    QProcess program;
    program.start(u"pactl"_s, {question, u"loudspeaker"_s});
    program.waitForFinished();
    return QString::fromUtf8(program.readAllStandardOutput());
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
    const QString volume = pactl(u"get-sink-volume"_s);
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
    QVERIFY(pactl(u"get-sink-mute"_s).contains(u"yes"_s));
    SampleScripts::run(u"set volume output muted false"_s);
    QVERIFY(pactl(u"get-sink-mute"_s).contains(u"no"_s));
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

// SPDX-License-Identifier: Apache-2.0
// Scripts that talk to real services: a media player, a notification service and a sound server.
#include "Support/PrivateSoundServer.h"
#include "applications/support/DesktopTest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

// A page that plays a tone, and says in its title whether it does.
const QByteArray page = R"(<!DOCTYPE html><meta charset="utf-8"><title>silent</title>
<audio src="tone.wav" autoplay loop></audio>
<script>
const audio = document.querySelector("audio");
audio.onplaying = () => document.title = "playing";
audio.onpause = () => document.title = "paused";
navigator.mediaSession.metadata = new MediaMetadata({title: "A Tone", artist: "Ann", album: "Tones"});
</script>
)";

// A minute of a square wave. Browsers tell the desktop only about media that last some seconds.
QByteArray tone()
{
    constexpr quint32 rate = 8000;
    constexpr quint32 size = 60 * rate;
    QByteArray wave;
    const auto append = [&wave](quint32 number, int bytes) {
        for (int i = 0; i < bytes; ++i)
            wave.append(static_cast<char>(number >> (8 * i)));
    };
    wave += "RIFF";
    append(36 + size, 4);
    wave += "WAVEfmt ";
    append(16, 4);
    append(1, 2); // uncompressed
    append(1, 2); // one channel
    append(rate, 4);
    append(rate, 4);
    append(1, 2);
    append(8, 2);
    wave += "data";
    append(size, 4);
    for (quint32 i = 0; i < size; ++i)
        wave.append(static_cast<char>(i / 10 % 2 == 0 ? 100 : 156));
    return wave;
}

// The title that the browser's player tells the desktop while it plays.
QString playersTitle()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    for (const QString &service : bus.interface()->registeredServiceNames().value()) {
        if (!service.startsWith("org.mpris.MediaPlayer2.chromium"_L1))
            continue;
        QDBusMessage question = QDBusMessage::createMethodCall(
            service, u"/org/mpris/MediaPlayer2"_s, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
        question << u"org.mpris.MediaPlayer2.Player"_s;
        const QDBusReply<QVariantMap> player = bus.call(question);
        const QVariantMap metadata = qdbus_cast<QVariantMap>(player.value().value(u"Metadata"_s));
        if (player.value().value(u"PlaybackStatus"_s) == u"Playing"_s)
            return metadata.value(u"xesam:title"_s).toString();
    }
    return {};
}

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

} // namespace

class ScriptPartnersTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void controlsAPlayer();
    void showsANotification();
    void setsTheVolume();
    void opensAMessageInTheMailProgram();

private:
    Outcome run(const QString &source) { return perform("applescript", {{"script", source}}); }
};

void ScriptPartnersTest::controlsAPlayer()
{
    const PrivateSoundServer soundServer;
    QVERIFY(soundServer.isRunning());
    PrivateDesktop::write(PrivateDesktop::home(u"tone.wav"_s), tone());
    PrivateDesktop::write(PrivateDesktop::home(u"tone.html"_s), page);
    QVERIFY(PrivateDesktop::open(u"chromium"_s,
                                 {u"--force-renderer-accessibility"_s, u"--no-sandbox"_s, u"--no-first-run"_s,
                                  u"--disable-gpu"_s, u"--autoplay-policy=no-user-gesture-required"_s,
                                  PrivateDesktop::home(u"tone.html"_s)},
                                 u"Chromium"_s));
    // The browser tells the desktop a moment after the page.
    QVERIFY2(QTest::qWaitFor([] { return playersTitle() == "A Tone"_L1; }, PrivateDesktop::patience),
             qPrintable(Screen::described()));

    const Outcome paused = run(u"tell application \"Music\" to pause"_s);
    VERIFY_EFFECT(Screen::showsTitle(u"paused"_s), paused);
    QCOMPARE(run(u"tell application \"Music\" to return player state"_s).line, u"Script returned: paused"_s);
    const Outcome playing = run(u"tell application \"Chromium\" to play"_s);
    VERIFY_EFFECT(Screen::showsTitle(u"playing"_s), playing);
    QCOMPARE(run(u"tell application \"Chromium\" to get URL of active tab of front window"_s).line,
             u"Script returned: file://"_s + PrivateDesktop::home(u"tone.html"_s));
    QCOMPARE(run(u"tell application \"Music\"\n"
                 "return (name of current track) & \" by \" & (artist of current track) & \" on \" & "
                 "(album of current track)\n"
                 "end tell"_s)
                 .line,
             u"Script returned: A Tone by Ann on Tones"_s);
}

void ScriptPartnersTest::showsANotification()
{
    if (QDBusConnection::sessionBus().interface()->isServiceRegistered(u"org.freedesktop.Notifications"_s))
        QSKIP("This desktop shows notifications itself.");
    QProcess service;
    service.start(u"dunst"_s, {});
    QVERIFY(QTest::qWaitFor([] { return !outputOf(u"dunstctl"_s, {u"is-paused"_s}).isEmpty(); },
                            PrivateDesktop::patience));
    const Outcome outcome = run(u"display notification \"1 < 2 & <b>bold</b>\" with title \"Backup\""_s);
    QCOMPARE(outcome.line, u"Script ran."_s);
    QVERIFY(QTest::qWaitFor(
        [] {
            return outputOf(u"dunstctl"_s, {u"count"_s, u"displayed"_s}) == "1\n";
        },
        PrivateDesktop::patience));
    outputOf(u"dunstctl"_s, {u"close-all"_s});
    const QJsonDocument history = QJsonDocument::fromJson(outputOf(u"dunstctl"_s, {u"history"_s}));
    const QJsonObject shown = history[u"data"_s][0][0].toObject();
    QCOMPARE(shown[u"summary"_s][u"data"_s].toString(), u"Backup"_s);
    QCOMPARE(shown[u"body"_s][u"data"_s].toString(), u"1 &lt; 2 &amp; &lt;b&gt;bold&lt;/b&gt;"_s);
    service.terminate();
    service.waitForFinished();
}

void ScriptPartnersTest::setsTheVolume()
{
    const PrivateSoundServer soundServer;
    QVERIFY(soundServer.isRunning());
    QCOMPARE(run(u"set volume output volume 35"_s).line, u"Script ran."_s);
    QVERIFY(PrivateSoundServer::answerTo(u"get-sink-volume"_s).contains(u" 35% "_s));
}

// The user's mail program is one that writes down what it is started with, and shows a window.
void ScriptPartnersTest::opensAMessageInTheMailProgram()
{
    const QString opened = PrivateDesktop::home(u"opened"_s);
    QVERIFY(QDir().mkpath(PrivateDesktop::home(u".local/share/applications"_s)));
    QVERIFY(QDir().mkpath(PrivateDesktop::home(u".config"_s)));
    PrivateDesktop::write(PrivateDesktop::home(u".local/share/applications/post.desktop"_s),
                          "[Desktop Entry]\nType=Application\nName=Post Office\n"
                          "MimeType=x-scheme-handler/mailto;\n"
                          "StartupWMClass=Mousepad\n"
                          "Exec=sh -c 'printf %%s \"$1\" >\"$HOME/opened\"; exec mousepad' sh %u\n");
    PrivateDesktop::write(PrivateDesktop::home(u".config/mimeapps.list"_s),
                          "[Default Applications]\nx-scheme-handler/mailto=post.desktop\n");
    const Outcome composed = run(u"tell application \"Mail\"\n"
                                 "set m to make new outgoing message with properties "
                                 "{subject:\"Lunch\", content:\"At noon?\"}\n"
                                 "tell m to make new to recipient at end of to recipients with properties "
                                 "{address:\"ann@example.org\"}\n"
                                 "end tell"_s);
    QVERIFY2(!composed.hasFailed, qPrintable(composed.line));
    QTRY_COMPARE_WITH_TIMEOUT(PrivateDesktop::read(opened),
                              QByteArray("mailto:ann@example.org?subject=Lunch&body=At%20noon%3F"),
                              PrivateDesktop::patience);
}

QTEST_MAIN(ScriptPartnersTest)
#include "ScriptPartnersTest.moc"

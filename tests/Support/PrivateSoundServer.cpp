// SPDX-License-Identifier: Apache-2.0
#include "Support/PrivateSoundServer.h"

#include <QTest>

using namespace Qt::StringLiterals;

PrivateSoundServer::PrivateSoundServer()
{
    const QString socket = m_folder.filePath(u"sound"_s);
    qputenv("PULSE_SERVER", "unix:" + socket.toLocal8Bit());
    m_server.start(u"pulseaudio"_s,
                   {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s, u"-L"_s,
                    u"module-null-sink sink_name=loudspeaker"_s, u"-L"_s,
                    u"module-native-protocol-unix auth-anonymous=1 socket=%1"_s.arg(socket)});
}

PrivateSoundServer::~PrivateSoundServer()
{
    m_server.terminate();
    m_server.waitForFinished();
    qunsetenv("PULSE_SERVER");
}

bool PrivateSoundServer::isRunning() const
{
    return QTest::qWaitFor([] { return !answerTo(u"get-sink-mute"_s).isEmpty(); }, 30'000);
}

QString PrivateSoundServer::answerTo(const QString &question)
{
    QProcess program;
    program.start(u"pactl"_s, {question, u"loudspeaker"_s});
    program.waitForFinished();
    return QString::fromUtf8(program.readAllStandardOutput());
}

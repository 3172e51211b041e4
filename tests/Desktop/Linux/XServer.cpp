// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/XServer.h"

#include "Desktop/Linux/LinuxBench.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

XServer::XServer(const QString &screen)
{
    m_process.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, screen, u"-nolisten"_s,
                                u"tcp"_s, u"-noreset"_s});
    QByteArray number;
    const auto isUp = [this, &number] {
        number += m_process.readAllStandardOutput();
        return number.endsWith('\n');
    };
    if (!QTest::qWaitFor(isUp, LinuxBench::patience))
        return;
    m_display = ":" + number.trimmed();
    qputenv("DISPLAY", m_display);
}

XServer::~XServer()
{
    qputenv("DISPLAY", m_outerDisplay);
    signal(SIGCONT);
    m_process.terminate();
    m_process.waitForFinished();
}

void XServer::signal(int number)
{
    if (m_process.processId() > 0)
        ::kill(pid_t(m_process.processId()), number);
}

void XServer::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

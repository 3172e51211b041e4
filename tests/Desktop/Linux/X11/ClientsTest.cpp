// SPDX-License-Identifier: Apache-2.0
// The rule that determines a window's process.
#include "Desktop/Linux/X11/Clients.h"

#include <QTest>

using namespace Qt::StringLiterals;

class X11ClientsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void processOfAWindow_data()
    {
        QTest::addColumn<bool>("serverReports");
        QTest::addColumn<qint64>("reported");
        QTest::addColumn<qint64>("claimed");
        QTest::addColumn<QByteArray>("machine");
        QTest::addColumn<qint64>("process");
        const auto row = [](const char *name, bool serverReports, qint64 reported, qint64 claimed,
                            const char *machine, qint64 process) {
            QTest::newRow(name) << serverReports << reported << claimed << QByteArray(machine) << process;
        };

        row("an ordinary window", true, 500, 500, "here", 500);
        row("a sandbox that numbers for itself", true, 500, 2, "here", 500);
        row("a window that says nothing", true, 500, 0, "", 500);
        row("a container with a name of its own", true, 500, 500, "toolbox", 500);
        row("a program on another computer", true, 500, 900, "there", -client);
        row("a client that came over a network", true, 0, 900, "there", -client);
        row("a server elsewhere", false, 500, 500, "here", -client);
        row("our own window on a server elsewhere", false, 0, own, "here", own);
        row("our number on another computer", false, 0, own, "there", -client);
    }

    void processOfAWindow()
    {
        QFETCH(bool, serverReports);
        QFETCH(qint64, reported);
        QFETCH(qint64, claimed);
        QFETCH(QByteArray, machine);
        const X11Claims::Claim claim{claimed, machine};
        const X11Claims::Surroundings here{own, "here", serverReports};
        QTEST(X11Claims::processOf(claim, client, reported, here), "process");
    }

private:
    static constexpr qint64 own = 100;
    static constexpr qint64 client = 0x600000;
};

QTEST_GUILESS_MAIN(X11ClientsTest)
#include "ClientsTest.moc"

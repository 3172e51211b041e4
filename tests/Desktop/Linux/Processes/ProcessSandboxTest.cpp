// SPDX-License-Identifier: Apache-2.0
// Which sandbox a process is in, from a fake procfs.
#include "Desktop/Linux/Processes/ProcessSandbox.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray uuid = "3d7f4a5e-0c1b-4f6d-9a0e-2b8c5d6e7f80";

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

} // namespace

class ProcessSandboxTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_processes;

    QString process() const { return m_processes.path() + u"/42"_s; }

private Q_SLOTS:
    void cleanup() { QVERIFY(QDir(process()).removeRecursively()); }

    void theScopeIdentifiesTheSandbox_data()
    {
        QTest::addColumn<QByteArray>("group");
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("application");
        const QByteArray slice = "0::/user.slice/user-1000.slice/user@1000.service/app.slice/";

        QTest::newRow("a Flatpak") << slice + "app-flatpak-org.gnome.TextEditor-1234.scope\n"
                                   << u"/app/bin/gnome-text-editor"_s << u"org.gnome.TextEditor"_s;
        QTest::newRow("a dash in its name") << slice + "app-flatpak-org.example.My\\x2dEditor-7.scope\n"
                                            << QString() << u"org.example.My-Editor"_s;
        QTest::newRow("an older Flatpak") << slice + "flatpak-org.gnome.TextEditor-1234.scope\n"
                                          << QString() << u"org.gnome.TextEditor"_s;
        QTest::newRow("control groups of the first version")
            << QByteArray("12:cpu:/\n1:name=systemd:/user.slice/app-flatpak-org.a.B-1.scope\n") << QString()
            << u"org.a.B"_s;
        QTest::newRow("a snap") << slice + "snap.firefox.firefox-" + uuid + ".scope\n"
                                << u"/snap/firefox/5187/usr/lib/firefox/firefox"_s << u"firefox_firefox"_s;
        QTest::newRow("an older snap") << slice + "snap.code.url-handler." + uuid + ".scope\n"
                                       << u"/snap/code/1/usr/share/code/code"_s << u"code_url-handler"_s;
        QTest::newRow("a snap's service") << slice + "snap.player.daemon.service\n"
                                          << u"/snap/player/1/bin/player"_s << u"player_daemon"_s;
        QTest::newRow("a program that a snap's terminal has started")
            << slice + "snap.code.code-" + uuid + ".scope\n"
            << u"/usr/bin/mousepad"_s << QString();
        QTest::newRow("a program that another desktop has started")
            << slice + "app-gnome-org.gnome.Terminal-99.scope\n"
            << u"/usr/bin/mousepad"_s << QString();
        QTest::newRow("a session") << QByteArray("0::/user.slice/session-2.scope\n") << QString()
                                   << QString();
        QTest::newRow("nothing") << QByteArray() << QString() << QString();
    }

    void theScopeIdentifiesTheSandbox()
    {
        QFETCH(QByteArray, group);
        QFETCH(QString, program);
        write(process() + u"/cgroup"_s, group);
        if (!program.isEmpty())
            QVERIFY(QFile::link(program, process() + u"/exe"_s));
        const auto sandbox = ProcessSandbox::of(42, m_processes.path());
        QTEST(sandbox ? sandbox->application : QString(), "application");
    }

    void flatpakInfoTakesPrecedence()
    {
        write(process() + u"/cgroup"_s, "0::/app.slice/app-flatpak-org.other.App-1.scope\n");
        write(process() + u"/root/.flatpak-info"_s,
              "[Application]\nname=org.gnome.TextEditor\nruntime=runtime/x\n\n"
              "[Instance]\ninstance-id=1817653190\nname=nothing\n");
        const ProcessSandbox expected{u"org.gnome.TextEditor"_s, u"1817653190"_s};
        QCOMPARE(ProcessSandbox::of(42, m_processes.path()), std::optional(expected));
    }

    void anEndedProcessIsNotSandboxed()
    {
        QCOMPARE(ProcessSandbox::of(42, m_processes.path()), std::nullopt);
    }

    void anOrdinaryProcessIsNotSandboxed()
    {
        QCOMPARE(ProcessSandbox::of(QCoreApplication::applicationPid()), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(ProcessSandboxTest)
#include "ProcessSandboxTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Running and installed applications on a real desktop.
#include "Desktop/Linux/Applications/EntryLauncher.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString applicationsFolder()
{
    return qEnvironmentVariable("HOME") + u"/.local/share/applications"_s;
}

QString urlOf(const QString &path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s", qPrintable(path));
}

} // namespace

class LinuxWorkspaceTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;

    // The installed, visible application of this name.
    std::optional<ApplicationBundle> installed(const QString &name)
    {
        const auto folders = Awaited::result(m_bench.workspace.applicationFolders());
        for (const ApplicationFolder &folder : folders) {
            for (const ApplicationFolder::Entry &entry : folder.entries) {
                if (entry.name == name + u".app"_s)
                    return entry.bundle;
            }
        }
        return std::nullopt;
    }

    std::optional<RunningApplication> running(const QString &name)
    {
        for (const RunningApplication &each : Awaited::result(m_bench.workspace.runningApplications())) {
            if (each.localizedName == name)
                return each;
        }
        return std::nullopt;
    }

    void setClass(const QString &title, const QString &name)
    {
        const QString identifier = QString::number(m_bench.waitForWindow(title)->identifier);
        LinuxBench::output(u"xdotool"_s, {u"set_window"_s, u"--class"_s, name, identifier});
    }

    QString frontmostName()
    {
        const auto application = Awaited::result(m_bench.workspace.frontmostApplication());
        return application ? application->localizedName.value_or(QString()) : u"none"_s;
    }

    QString open(const ApplicationBundle &application)
    {
        return LinuxBench::errorOf(m_bench.workspace.openApplication(application));
    }

    bool isTerminated(const RunningApplication &application)
    {
        return Awaited::result(m_bench.workspace.isTerminated(application));
    }

    // Each look may take a second; QTRY_VERIFY would count looks instead of time.
    bool waitUntilTerminated(const RunningApplication &application)
    {
        return QTest::qWaitFor([&] { return isTerminated(application); }, LinuxBench::patience);
    }

private Q_SLOTS:
    void cleanup()
    {
        const WindowSnapshot snapshot = m_bench.snapshot();
        for (const DesktopWindow &window : snapshot.windows) {
            if (window.process > 0 && window.process != QCoreApplication::applicationPid())
                LinuxBench::output(u"kill"_s, {u"-9"_s, QString::number(window.process)});
        }
        QVERIFY(
            QTest::qWaitFor([this] { return m_bench.snapshot().windows.isEmpty(); }, LinuxBench::patience));
    }

    void anEmptyDesktopHasNothingInFront()
    {
        QCOMPARE(frontmostName(), u"none"_s);
        QVERIFY(Awaited::result(m_bench.workspace.runningApplications()).isEmpty());
    }

    void aLaunchedApplicationIsInFront()
    {
        const auto mousepad = installed(u"Mousepad"_s);
        QVERIFY(mousepad);
        QCOMPARE(open(*mousepad), QString());
        QCOMPARE(frontmostName(), u"Mousepad"_s);
        const auto application = running(u"Mousepad"_s);
        QVERIFY(application && application->isRegular);
        QCOMPARE(application->bundle, mousepad);
    }

    void openingARunningApplicationBringsItsWindowBack()
    {
        const auto mousepad = installed(u"Mousepad"_s);
        const auto thunar = installed(u"Thunar File Manager"_s);
        QVERIFY(mousepad && thunar);
        QCOMPARE(open(*mousepad), QString());
        QCOMPARE(open(*thunar), QString());
        QCOMPARE(frontmostName(), u"Thunar File Manager"_s);
        QCOMPARE(open(*mousepad), QString());
        QCOMPARE(frontmostName(), u"Mousepad"_s);
        QCOMPARE(m_bench.snapshot().windows.size(), 2);
    }

    void aMinimisedApplicationComesBack()
    {
        const auto mousepad = installed(u"Mousepad"_s);
        QVERIFY(mousepad);
        QCOMPARE(open(*mousepad), QString());
        const std::uint32_t window = m_bench.snapshot().windows.first().identifier;
        LinuxBench::output(u"xdotool"_s, {u"windowminimize"_s, u"--sync"_s, QString::number(window)});
        QTRY_VERIFY(m_bench.snapshot().windows.first().isMinimised);
        QCOMPARE(frontmostName(), u"none"_s);
        QCOMPARE(open(*mousepad), QString());
        QCOMPARE(frontmostName(), u"Mousepad"_s);
    }

    void ourOwnWindowIsNeverInFront()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto otherEditor = LinuxBench::start(u"featherpad"_s);
        QTRY_COMPARE_WITH_TIMEOUT(frontmostName(), u"FeatherPad"_s, LinuxBench::patience);
        QRasterWindow palette;
        palette.setTitle(u"Palette"_s);
        palette.show();
        QVERIFY(m_bench.waitForActive(u"Palette"_s));
        QCOMPARE(frontmostName(), u"FeatherPad"_s);
        QCOMPARE(running(u"Mousepad"_s)->processIdentifier, editor->processId());
        QCOMPARE(LinuxBench::errorOf(m_bench.workspace.activate(*running(u"Mousepad"_s))), QString());
        palette.requestActivate();
        QVERIFY(m_bench.waitForActive(u"Palette"_s));
        QCOMPARE(frontmostName(), u"Mousepad"_s);
    }

    // No window is active while a launcher's override-redirect window has the focus.
    void withoutAnActiveWindowNoneIsFrontmost()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        QRasterWindow launcher;
        launcher.setFlag(Qt::BypassWindowManagerHint);
        launcher.show();
        LinuxBench::output(u"xdotool"_s, {u"windowfocus"_s, QString::number(launcher.winId())});
        QTRY_VERIFY_WITH_TIMEOUT(!m_bench.snapshot().activeWindow, LinuxBench::patience);

        QCOMPARE(frontmostName(), u"none"_s);
        const KeyStroke text{0, {}, u"for nobody"_s};
        QCOMPARE(m_bench.post({text}), u"No application is in front to receive the keys."_s);
        launcher.close();
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto window = m_bench.waitForWindow(u"Mousepad"_s);
        QVERIFY2(!window->title.startsWith(u'*'), qPrintable(window->title)); // unchanged
        QCOMPARE(frontmostName(), u"Mousepad"_s);
    }

    void quittingClosesTheApplication()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto application = running(u"Mousepad"_s);
        QVERIFY(application && !isTerminated(*application));
        Awaited::result(m_bench.workspace.terminate(*application));
        QVERIFY(waitUntilTerminated(*application));
        const QString message = LinuxBench::errorOf(m_bench.workspace.activate(*application));
        QVERIFY2(message.contains(u"Mousepad"), qPrintable(message));
    }

    // As with two sandboxed applications in different PID namespaces.
    void windowsThatClaimTheSameProcessAreTwoApplications()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto otherEditor = LinuxBench::start(u"featherpad"_s);
        QTRY_COMPARE_WITH_TIMEOUT(frontmostName(), u"FeatherPad"_s, LinuxBench::patience);
        for (const DesktopWindow &window : m_bench.snapshot().windows) {
            const QString identifier = QString::number(window.identifier);
            LinuxBench::output(u"xprop"_s, {u"-id"_s, identifier, u"-f"_s, u"_NET_WM_PID"_s, u"32c"_s,
                                            u"-set"_s, u"_NET_WM_PID"_s, u"2"_s});
        }
        const auto application = running(u"Mousepad"_s);
        QVERIFY(application && running(u"FeatherPad"_s));
        QCOMPARE(application->processIdentifier, editor->processId());
        QCOMPARE(frontmostName(), u"FeatherPad"_s);
        Awaited::result(m_bench.workspace.terminate(*application));
        QVERIFY(waitUntilTerminated(*application));
        QVERIFY(running(u"FeatherPad"_s));
        QCOMPARE(otherEditor->state(), QProcess::Running);
    }

    void oneProcessWithTwoClassesIsTwoApplications()
    {
        const auto program = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Writer"_s, u"Calc"_s});
        QVERIFY(m_bench.waitForWindow(u"Writer"_s) && m_bench.waitForActive(u"Calc"_s));
        setClass(u"Writer"_s, u"suite-writer"_s);
        setClass(u"Calc"_s, u"suite-calc"_s);
        const auto writer = running(u"suite-writer"_s);
        const auto calc = running(u"suite-calc"_s);
        QVERIFY(writer && calc);
        QCOMPARE(writer->processIdentifier, calc->processIdentifier);
        QCOMPARE(LinuxBench::errorOf(m_bench.workspace.activate(*writer)), QString());
        QCOMPARE(frontmostName(), u"suite-writer"_s);
        Awaited::result(m_bench.workspace.terminate(*calc));
        QVERIFY(m_bench.waitForNoWindow(u"Calc"_s));
        QVERIFY(m_bench.waitForWindow(u"Writer"_s));
        QVERIFY(isTerminated(*calc) && !isTerminated(*writer));
    }

    void anApplicationThatPromptsIsNotTerminated()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const KeyStroke text{0, {}, u"unsaved"_s};
        QCOMPARE(m_bench.post({text}), QString());
        const auto application = running(u"Mousepad"_s);
        QVERIFY(application);
        Awaited::result(m_bench.workspace.terminate(*application));
        const auto asks = [this] {
            for (const DesktopWindow &window : m_bench.snapshot().windows) {
                if (window.kind == DesktopWindow::Kind::Dialog)
                    return true;
            }
            return false;
        };
        QVERIFY(QTest::qWaitFor(asks, LinuxBench::patience));
        QVERIFY(!isTerminated(*application));
    }

    void aBackgroundApplicationIsNotTerminated()
    {
        const auto thunar = installed(u"Thunar File Manager"_s);
        QVERIFY(thunar);
        const auto daemon = LinuxBench::start(u"thunar"_s, {u"--daemon"_s});
        // Of two that start at the same time the first one on the bus stays, and the other one ends.
        const auto isFirst = [&daemon] {
            return QDBusConnection::sessionBus().interface()->servicePid(u"org.xfce.Thunar"_s).value() ==
                   daemon->processId();
        };
        QVERIFY(QTest::qWaitFor(isFirst, LinuxBench::patience));
        QCOMPARE(open(*thunar), QString());
        const auto application = running(u"Thunar File Manager"_s);
        QVERIFY(application);
        QCOMPARE(application->processIdentifier, daemon->processId());
        Awaited::result(m_bench.workspace.terminate(*application));
        QTRY_VERIFY_WITH_TIMEOUT(m_bench.snapshot().windows.isEmpty(), LinuxBench::patience);
        QVERIFY(!isTerminated(*application));
        daemon->kill();
        QVERIFY(waitUntilTerminated(*application));
    }

    void anApplicationMayRunWithoutAWindow_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("message");
        QTest::newRow("its process is") << u"quiet"_s << QByteArray("sleep 60") << QString();
        QTest::newRow("its name on the bus is") << u"org.example.Quiet"_s << QByteArray("true") << QString();
        QTest::newRow("it is not") << u"brief"_s << QByteArray("true")
                                   << u"“Quiet” was started but shows no window."_s;
    }

    void anApplicationMayRunWithoutAWindow()
    {
        QFETCH(QString, identifier);
        QFETCH(QByteArray, command);
        const QString path = applicationsFolder() + u'/' + identifier + u".desktop"_s;
        write(path, "[Desktop Entry]\nType=Application\nName=Quiet\nExec=" + command + "\n");
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerService(u"org.example.Quiet"_s));
        const QString message = open({path, u"Quiet"_s});
        bus.unregisterService(u"org.example.Quiet"_s);
        QVERIFY(QDir(applicationsFolder()).removeRecursively());
        QTEST(message, "message");
    }

    void aFileOpensInTheNamedApplication()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"a file & more.txt"_s);
        write(path, "hello\n");
        const auto featherpad = installed(u"FeatherPad"_s);
        QVERIFY(featherpad);
        QCOMPARE(LinuxBench::errorOf(m_bench.workspace.open(urlOf(path), *featherpad)), QString());
        QCOMPARE(frontmostName(), u"FeatherPad"_s);
        QVERIFY(m_bench.waitForActive(u"a file & more.txt"_s));
    }

    void anAddressArrivesLetterForLetter()
    {
        const QTemporaryDir folder;
        const QString reader = folder.filePath(u"reader"_s);
        const QString seen = folder.filePath(u"seen"_s);
        write(reader, "#!/bin/sh\nprintf %s \"$1\" > " + seen.toUtf8() + "\n");
        QVERIFY(QFile::setPermissions(reader, QFile::ReadOwner | QFile::ExeOwner));
        write(applicationsFolder() + u"/reader.desktop"_s,
              "[Desktop Entry]\nType=Application\nName=Reader\nExec=" + reader.toUtf8() + " %u\n");
        std::optional<ApplicationBundle> application;
        QTRY_VERIFY((application = installed(u"Reader"_s)));
        const QString address = u"x-reader://Example.ORG/1.2.3"_s;
        LinuxBench::errorOf(m_bench.workspace.open(address, *application)); // it shows no window
        const auto text = [&seen] {
            QFile file(seen);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        QTRY_COMPARE_WITH_TIMEOUT(text(), address, LinuxBench::patience);
        QVERIFY(QDir(applicationsFolder()).removeRecursively());
    }

    void aFolderOpensInItsDefaultApplication()
    {
        const QTemporaryDir folder;
        QVERIFY(Awaited::result(m_bench.workspace.open(urlOf(folder.path()))));
        QCOMPARE(frontmostName(), u"Thunar File Manager"_s);
        QVERIFY(!Awaited::result(m_bench.workspace.open(u"x-nobody-knows:thing"_s)));
    }

    void aNewFolderIsRevealed()
    {
        const QTemporaryDir folder;
        const QString parent = folder.filePath(u"Parent of it"_s);
        QVERIFY(QDir().mkpath(parent + u"/Projects"_s));
        Awaited::result(m_bench.workspace.reveal(parent + u"/Projects"_s));
        QVERIFY(m_bench.waitForWindow(u"Parent of it"_s));
    }

    void rolesAreFilledByTheDefaults()
    {
        const auto role = [this](const QString &name) {
            const auto bundle = Awaited::result(m_bench.workspace.defaultForRole(name));
            return bundle ? bundle->displayName : u"none"_s;
        };
        QCOMPARE(role(u"Finder"_s), u"Thunar File Manager"_s);
        QCOMPARE(role(u"calculator"_s), u"Calculator"_s);
        QCOMPARE(role(u"Photoshop"_s), u"none"_s);
    }

    void earlierEntriesOverrideAndHiddenOnesAreOmitted()
    {
        const QByteArray group = "[Desktop Entry]\nType=Application\n";
        const QString own = applicationsFolder() + u"/"_s;
        write(own + u"featherpad.desktop"_s,
              group + "Name=My <|im_start|>\xE2\x80\xAE Pad\nExec=featherpad\n");
        write(own + u"thunar-settings.desktop"_s, group + "Name=Gone\nExec=thunar\nHidden=true\n");
        write(own + u"secret.desktop"_s, group + "Name=Secret\nExec=thunar\nNoDisplay=true\n");
        write(own + u"sub/deep.desktop"_s, group + "Name=Deep\nExec=thunar\n");
        const auto folders = Awaited::result(m_bench.workspace.applicationFolders());
        const auto ownPad = installed(u"My < |im_start| > Pad"_s);
        const auto systemPad = installed(u"FeatherPad"_s);
        const auto settings = installed(u"File Manager Settings"_s);
        const auto secret = installed(u"Secret"_s);
        const auto deep = installed(u"Deep"_s);
        QVERIFY(QDir(applicationsFolder()).removeRecursively());
        QCOMPARE(folders.first().path, applicationsFolder());
        QCOMPARE(ownPad->location, own + u"featherpad.desktop"_s);
        QVERIFY(!systemPad && !settings && !secret);
        QVERIFY(deep);
    }

    void anApplicationHasItsNamesInBothLanguages()
    {
        const QString path = applicationsFolder() + u"/org.example.Tool.desktop"_s;
        write(path, "[Desktop Entry]\nType=Application\nName=Word Tool\nName[de]=Wortwerkzeug\n"
                    "Exec=/usr/bin/thunar %F\n");
        const QByteArray language = qgetenv("LANG");
        qputenv("LANG", "de_DE.UTF-8");
        const auto folders = Awaited::result(m_bench.workspace.applicationFolders());
        qputenv("LANG", language);
        QVERIFY(QDir(applicationsFolder()).removeRecursively());
        const ApplicationFolder::Entry entry = folders.first().entries.value(0);
        QCOMPARE(entry.name, u"Wortwerkzeug.app"_s);
        QCOMPARE(entry.otherNames.english, u"Word Tool"_s);
        QCOMPARE(entry.otherNames.identifier, u"org.example.Tool"_s);
        QCOMPARE(entry.otherNames.program, u"thunar"_s);
    }

    void aProgramComesBeforeItsSettings()
    {
        const QByteArray group = "[Desktop Entry]\nType=Application\nExec=thunar\n";
        const QString own = applicationsFolder() + u"/"_s;
        write(own + u"oddterm-settings.desktop"_s, group + "Name=Odd Terminal Settings\n");
        write(own + u"oddterm.desktop"_s, group + "Name=Odd Terminal\n");
        const auto folders = Awaited::result(m_bench.workspace.applicationFolders());
        QVERIFY(QDir(applicationsFolder()).removeRecursively());
        QStringList names;
        for (const ApplicationFolder::Entry &entry : folders.first().entries)
            names << entry.name;
        QCOMPARE(names, (QStringList{u"Odd Terminal.app"_s, u"Odd Terminal Settings.app"_s}));
    }

    void anApplicationThatCannotStartIsAnError()
    {
        const ApplicationBundle missing{u"/nowhere/missing.desktop"_s, u"Missing"_s};
        const QString message = open(missing);
        QVERIFY2(message.contains(u"missing"), qPrintable(message));
    }

    void chromiumBrowsersStartWithAccessibility_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("arguments");

        QTest::newRow("in the family")
            << u"chromium"_s << QByteArray("%1 --new %U")
            << QByteArray("--force-renderer-accessibility --new http://a.test/?b=c%20d");
        QTest::newRow("a channel, in quotes")
            << u"google-chrome-beta"_s << QByteArray("\"%1\" %U")
            << QByteArray("--force-renderer-accessibility http://a.test/?b=c%20d");
        QTest::newRow("not in the family")
            << u"firefox"_s << QByteArray("%1 --new %U") << QByteArray("--new http://a.test/?b=c%20d");
    }

    void chromiumBrowsersStartWithAccessibility()
    {
        QFETCH(QString, program);
        QFETCH(QByteArray, command);
        const QTemporaryDir folder;
        const QString path = folder.filePath(program);
        write(path, "#!/bin/sh\necho \"$@\" > \"$0.new\" && mv \"$0.new\" \"$0.told\"\n");
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        const QString entry = folder.filePath(u"browser.desktop"_s);
        write(entry, "[Desktop Entry]\nType=Application\nName=Browser\nExec=" +
                         command.replace("%1", path.toUtf8()) + "\n");
        const auto launch = [&entry] {
            return EntryLauncher::launch(entry, {u"http://a.test/?b=c%20d"_s}, u"mark"_s).size();
        };
        QCOMPARE(Awaited::result(m_bench.gio.run(launch)), 1);
        QFile told(path + u".told"_s);
        QVERIFY(QTest::qWaitFor([&told] { return told.exists(); }, LinuxBench::patience));
        QVERIFY(told.open(QIODevice::ReadOnly));
        QTEST(told.readAll().trimmed(), "arguments");
    }

    void aLaunchedProgramInheritsNothing()
    {
        QFile inherited(u"/proc/self/status"_s);
        QVERIFY(inherited.open(QIODevice::ReadOnly));
        const auto mousepad = installed(u"Mousepad"_s);
        QVERIFY(mousepad);
        QCOMPARE(open(*mousepad), QString());
        const QString process = u"/proc/%1/"_s.arg(m_bench.snapshot().windows.first().process);
        QCOMPARE(QFile::symLinkTarget(process + u"fd/1"_s), u"/dev/null"_s);
        QCOMPARE(QFile::symLinkTarget(process + u"fd/2"_s), u"/dev/null"_s);
        for (const QString &descriptor : QDir(process + u"fd"_s).entryList(QDir::Files | QDir::System))
            QVERIFY(!QFile::symLinkTarget(process + u"fd/"_s + descriptor).endsWith(u"/status"_s));
        QCOMPARE(QFile::symLinkTarget(process + u"cwd"_s), QDir::home().canonicalPath());
        QFile status(process + u"stat"_s);
        QVERIFY(status.open(QIODevice::ReadOnly));
        const QList<QByteArray> fields = status.readAll().split(' ');
        QVERIFY(fields.value(3).toInt() != QCoreApplication::applicationPid());             // parent
        QCOMPARE(fields.value(5).toLongLong(), m_bench.snapshot().windows.first().process); // session
    }
};

QTEST_MAIN(LinuxWorkspaceTest)
#include "LinuxWorkspaceTest.moc"

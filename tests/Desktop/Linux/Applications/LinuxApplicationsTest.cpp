// SPDX-License-Identifier: Apache-2.0
// Which application a window belongs to, and its name.
#include "Desktop/Linux/Applications/LinuxApplications.h"
#include "Desktop/Linux/WindowSystem/SampleDesktop.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace SampleDesktop;

namespace {

// A window of an office suite, which is a single process.
DesktopWindow suite(std::uint32_t identifier, const QString &className)
{
    DesktopWindow result = window(identifier, 600);
    result.className = className;
    return result;
}

DesktopEntry suiteEntry(const QString &name)
{
    DesktopEntry entry;
    entry.identifier = u"libreoffice-"_s + name;
    entry.path = u"/usr/share/applications/%1.desktop"_s.arg(entry.identifier);
    entry.name = u"LibreOffice "_s + name;
    entry.windowClass = entry.identifier;
    return entry;
}

} // namespace

class LinuxApplicationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anApplicationIsAProcessInTheOrderOfItsFirstWindow()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.windows[2].className = u"Mousepad"_s;
        DesktopEntry entry;
        entry.identifier = u"org.xfce.mousepad"_s;
        entry.path = u"/usr/share/applications/org.xfce.mousepad.desktop"_s;
        entry.name = u"Text Editor"_s;
        snapshot = LinuxApplications::withParts(snapshot, {entry});
        const auto applications = LinuxApplications::running(snapshot, {entry});
        QCOMPARE(applications.size(), 4);
        QCOMPARE(applications[0].isRegular, false);
        QCOMPARE(applications[1].processIdentifier, browser);
        QCOMPARE(applications[1].localizedName, std::nullopt);
        QCOMPARE(applications[2].processIdentifier, editor);
        QCOMPARE(applications[2].localizedName, u"Text Editor"_s);
        QCOMPARE(applications[2].bundle->location, entry.path);
        QCOMPARE(applications[3].processIdentifier, own);
    }

    void withoutAnEntryTheClassIsTheName()
    {
        WindowSnapshot snapshot = desktop();
        snapshot.windows[1].instance = u"xterm"_s;
        snapshot.windows[1].className = u"XTerm"_s;
        const auto application = LinuxApplications::ofWindow(snapshot.windows[1], snapshot, {});
        QCOMPARE(application.localizedName, u"XTerm"_s);
        QVERIFY(!application.bundle);
    }

    void oneProcessWithSeveralClassesIsSeveralApplications()
    {
        WindowSnapshot snapshot;
        snapshot.windows = {suite(1, u"libreoffice-writer"_s), suite(2, u"libreoffice-calc"_s),
                            suite(3, u"Soffice"_s), suite(4, QString()), suite(5, u"libreoffice-writer"_s)};
        snapshot.windows[2].transientFor = 2;
        snapshot.windows[2].kind = DesktopWindow::Kind::Dialog;
        snapshot.stacking = {5, 4, 3, 2, 1};
        const QList<DesktopEntry> entries{suiteEntry(u"writer"_s), suiteEntry(u"calc"_s)};
        snapshot = LinuxApplications::withParts(snapshot, entries);
        const auto applications = LinuxApplications::running(snapshot, entries);
        QCOMPARE(applications.size(), 2);
        QCOMPARE(applications[0].localizedName, u"LibreOffice writer"_s);
        QCOMPARE(applications[1].localizedName, u"LibreOffice calc"_s);
        const auto &calc = applications[1];
        QCOMPARE(snapshot.windowsToClose(calc.processIdentifier, calc.part).size(), 1);
        QCOMPARE(snapshot.windowToShow(calc.processIdentifier, calc.part)->identifier, 3u);
        const auto dialogsOwner = LinuxApplications::ofWindow(snapshot.windows[2], snapshot, entries);
        QCOMPARE(dialogsOwner.localizedName, u"LibreOffice calc"_s);
        const auto unclassified = LinuxApplications::ofWindow(snapshot.windows[3], snapshot, entries);
        QCOMPARE(unclassified.localizedName, u"LibreOffice writer"_s);
    }
};

QTEST_GUILESS_MAIN(LinuxApplicationsTest)
#include "LinuxApplicationsTest.moc"

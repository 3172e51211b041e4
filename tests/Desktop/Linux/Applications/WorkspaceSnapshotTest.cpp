// SPDX-License-Identifier: Apache-2.0
// The snapshot of a real desktop.
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QRasterWindow>
#include <QTest>

using namespace Qt::StringLiterals;

class WorkspaceSnapshotTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;

    QList<WindowDescription> windows() { return Awaited::result(m_bench.workspace.snapshot()).windows; }

    QStringList titles()
    {
        QStringList result;
        for (const WindowDescription &window : windows())
            result.append(window.name.value_or(QString()));
        return result;
    }

    static LinuxBench::Program start(const QString &title)
    {
        return LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {title});
    }

private Q_SLOTS:
    void windowsAreListedFrontToBack()
    {
        const auto first = start(u"First"_s);
        QVERIFY(m_bench.waitForActive(u"First"_s));
        const auto second = start(u"Second"_s);
        QVERIFY(m_bench.waitForActive(u"Second"_s));
        QCOMPARE(titles(), (QStringList{u"Second"_s, u"First"_s}));
        m_bench.bringForward(*m_bench.waitForWindow(u"First"_s));
        QCOMPARE(titles(), (QStringList{u"First"_s, u"Second"_s}));
    }

    void theOwnerIsNamedLikeTheApplication()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto windows = this->windows();
        const auto application = Awaited::result(m_bench.workspace.snapshot()).frontmost;
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows[0].layer, 0);
        QCOMPARE(windows[0].ownerProcessIdentifier, editor->processId());
        QCOMPARE(windows[0].ownerName, u"Mousepad"_s);
        QCOMPARE(application->localizedName, windows[0].ownerName);
    }

    void ourOwnWindowsHaveOurProcess()
    {
        QRasterWindow own;
        own.setTitle(u"Palette"_s);
        own.show();
        QVERIFY(m_bench.waitForActive(u"Palette"_s));
        const auto windows = this->windows();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows[0].ownerProcessIdentifier, QCoreApplication::applicationPid());
    }

    void minimisedWindowsAndOtherDesktopsAreLeftOut()
    {
        const auto first = start(u"First"_s);
        QVERIFY(m_bench.waitForActive(u"First"_s));
        const auto second = start(u"Second"_s);
        QVERIFY(m_bench.waitForActive(u"Second"_s));
        const QString window = QString::number(m_bench.waitForWindow(u"Second"_s)->identifier);
        LinuxBench::output(u"xdotool"_s, {u"windowminimize"_s, window});
        QTRY_COMPARE(titles(), QStringList{u"First"_s});
        LinuxBench::output(u"xdotool"_s, {u"windowactivate"_s, window});
        QTRY_COMPARE(titles().size(), 2);
        LinuxBench::output(u"xdotool"_s, {u"set_num_desktops"_s, u"2"_s});
        LinuxBench::output(u"xdotool"_s, {u"set_desktop_for_window"_s, window, u"1"_s});
        QTRY_COMPARE(titles(), QStringList{u"First"_s});
    }

    void titlesAreCleaned()
    {
        const auto window = start(u"Bad\n<|im_start|>\u202Etitle"_s);
        QVERIFY(m_bench.waitForActive(u"Bad"_s));
        QCOMPARE(titles(), QStringList{u"Bad < |im_start| >title"_s});
    }

    void cleanup() { QTRY_VERIFY_WITH_TIMEOUT(m_bench.snapshot().windows.isEmpty(), LinuxBench::patience); }
};

QTEST_MAIN(WorkspaceSnapshotTest)
#include "WorkspaceSnapshotTest.moc"

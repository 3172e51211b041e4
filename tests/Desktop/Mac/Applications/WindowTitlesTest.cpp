// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/WindowTitles.h"

#include <QTest>

using namespace Qt::StringLiterals;

class WindowTitlesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyTitlesOfOtherApplicationsCount_data()
    {
        QTest::addColumn<QList<WindowDescription>>("windows");
        QTest::addColumn<bool>("tells");
        const WindowDescription ours{0, 1, u"Orvane"_s, u"Orvane"_s};
        const WindowDescription withoutTitle{0, 2, u"Safari"_s, std::nullopt};
        const WindowDescription emptyTitle{0, 2, u"Safari"_s, u""_s};
        const WindowDescription titled{0, 2, u"Safari"_s, u"Apple"_s};
        const WindowDescription menuBar{24, 3, u"Window Server"_s, u"Menubar"_s};
        const WindowDescription unknownLayer{std::nullopt, 3, u"Dock"_s, u"Dock"_s};
        const auto row = [](const char *name, const QList<WindowDescription> &windows, bool tells) {
            QTest::newRow(name) << windows << tells;
        };
        row("nothing", {}, false);
        row("ours", {ours}, false);
        row("another's without one", {ours, withoutTitle, emptyTitle}, false);
        row("the desktop's", {menuBar, unknownLayer, withoutTitle}, false);
        row("another's", {menuBar, ours, withoutTitle, titled}, true);
    }
    void onlyTitlesOfOtherApplicationsCount()
    {
        QFETCH(QList<WindowDescription>, windows);
        QTEST(WindowTitles::includeOthers(windows, 1), "tells");
    }
};

QTEST_GUILESS_MAIN(WindowTitlesTest)
#include "WindowTitlesTest.moc"

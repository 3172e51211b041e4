// SPDX-License-Identifier: Apache-2.0
// The order in which an application's windows are traversed.
#include "Desktop/Linux/Atspi/Tree.h"

#include <QTest>

using namespace Qt::StringLiterals;

class AtspiWindowOrderTest : public QObject
{
    Q_OBJECT

private:
    // The prefix "*" marks the active window.
    static QStringList sorted(const QStringList &names, const AtspiTitles &titles)
    {
        QList<Atspi::WindowState> windows;
        for (const QString &name : names)
            windows.append({name.startsWith(u'*') ? name.mid(1) : name, name.startsWith(u'*')});
        QStringList result;
        for (const qsizetype position : Atspi::frontFirst(windows, titles))
            result.append(names.at(position));
        return result;
    }

private Q_SLOTS:
    void frontWindowsComeFirst_data()
    {
        QTest::addColumn<QStringList>("windows");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<QStringList>("order");
        using L = QStringList;

        QTest::newRow("nothing is known") << L{u"a"_s, u"b"_s} << L{} << L{u"a"_s, u"b"_s};
        QTest::newRow("a title") << L{u"a"_s, u"b"_s, u"c"_s} << L{u"b"_s} << L{u"b"_s, u"a"_s, u"c"_s};
        QTest::newRow("a dialog and its window")
            << L{u"a"_s, u"b"_s, u"c"_s} << L{u"c"_s, u"b"_s} << L{u"c"_s, u"b"_s, u"a"_s};
        QTest::newRow("the active one of two with the same title")
            << L{u"x"_s, u"a"_s, u"*a"_s} << L{u"a"_s} << L{u"*a"_s, u"a"_s, u"x"_s};
        QTest::newRow("a blocked window that is active")
            << L{u"*a"_s, u"b"_s} << L{u"b"_s, u"a"_s} << L{u"b"_s, u"*a"_s};
        QTest::newRow("a toolkit that tells other names")
            << L{u"1"_s, u"*2"_s} << L{u"a"_s} << L{u"*2"_s, u"1"_s};
        QTest::newRow("a window without a title") << L{u""_s, u"b"_s} << L{u""_s, u"b"_s} << L{u"b"_s, u""_s};
        QTest::newRow("no windows") << L{} << L{u"a"_s} << L{};
    }

    void frontWindowsComeFirst()
    {
        QFETCH(QStringList, windows);
        QFETCH(QStringList, titles);
        QTEST(sorted(windows, {titles, {}}), "order");
    }

    void windowsOfOtherApplicationsAreLeftOut()
    {
        const QStringList windows{u"*Sums"_s, u"Letter "_s, u"Dialog"_s};
        QCOMPARE(sorted(windows, {{u"Letter"_s}, {u"Sums"_s}}), (QStringList{u"Letter "_s, u"Dialog"_s}));
        QCOMPARE(sorted(windows, {{}, {u"Sums"_s, u"Letter"_s, u"Dialog"_s}}), QStringList());
        QCOMPARE(sorted({u""_s}, {{}, {u""_s}}), QStringList{u""_s}); // nothing tells whose it is
    }

    void aTitleOrTheActiveStateMakesAFrontWindow()
    {
        const AtspiTitles titles{{u"a"_s}, {}};
        QVERIFY(Atspi::isInFront({u"a"_s, false}, titles));
        QVERIFY(Atspi::isInFront({u"b"_s, true}, titles));
        QVERIFY(!Atspi::isInFront({u"b"_s, false}, titles));
        QVERIFY(!Atspi::isInFront({u""_s, false}, {{u""_s}, {}}));
    }
};

QTEST_GUILESS_MAIN(AtspiWindowOrderTest)
#include "WindowOrderTest.moc"

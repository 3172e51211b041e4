// SPDX-License-Identifier: Apache-2.0
// What differs in a session with KWin from X11: pictures, and what the doctor says. All else is tested by the
// tests that run on both.
#include "applications/support/DesktopTest.h"
#include "applications/support/Doctor.h"
#include "applications/support/OrvaneProgram.h"

#include <QDir>

using namespace Qt::StringLiterals;

class PlasmaTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void aScreenshotIsRefused();
    void theDoctorNamesTheWays();
};

// This desktop has no portal.
void PlasmaTest::aScreenshotIsRefused()
{
    const Outcome outcome = perform("screenshot", {{"save_to", u"Pictures"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"There is no desktop portal."_s);
    QVERIFY(QDir(PrivateDesktop::home(u"Pictures"_s)).isEmpty());
}

// The program is another than this one, and unknown at first.
void PlasmaTest::theDoctorNamesTheWays()
{
    const Doctor::Report unknown = Doctor::consult();
    QCOMPARE(unknown.state(u"session"_s), u"broken"_s);
    QVERIFY2(unknown.advice(u"session"_s).contains("orvane integrate"_L1), qPrintable(unknown.text));
    Doctor::Report report;
    QCOMPARE(OrvaneProgram::run({u"integrate"_s}).status, 0);
    const auto isKnown = [&report] {
        report = Doctor::consult();
        return report.state(u"session"_s) == "works"_L1;
    };
    QVERIFY2(QTest::qWaitFor(isKnown, PrivateDesktop::patience), qPrintable(report.text));
    for (const QString &check : {u"windows"_s, u"keyboard"_s, u"accessibility"_s})
        QVERIFY2(report.state(check) == "works"_L1, qPrintable(report.text));
    QCOMPARE(report.state(u"screenshot"_s), u"absent"_s);
}

QTEST_MAIN(PlasmaTest)
#include "PlasmaTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Which program a desktop entry's command runs, and inserting an argument.
#include "Desktop/Linux/Applications/EntryCommand.h"

#include <QTest>

using namespace Qt::StringLiterals;

class EntryCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programAndArgument_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("longer");

        QTest::newRow("alone") << "mousepad"
                               << "mousepad"
                               << "mousepad --x";
        QTest::newRow("with field codes") << "/usr/bin/chromium %U"
                                          << "/usr/bin/chromium"
                                          << "/usr/bin/chromium --x %U";
        QTest::newRow("in quotes") << "\"/opt/My App/run\" --a %U"
                                   << "/opt/My App/run"
                                   << "\"/opt/My App/run\" --x --a %U";
        QTest::newRow("past env") << "/usr/bin/env A=b C=\"d e\" /snap/bin/chromium %U"
                                  << "/snap/bin/chromium"
                                  << "/usr/bin/env A=b C=\"d e\" /snap/bin/chromium --x %U";
        QTest::newRow("nothing") << ""
                                 << ""
                                 << " --x";
    }

    void programAndArgument()
    {
        QFETCH(QString, command);
        QTEST(EntryCommand::program(command), "program");
        QTEST(EntryCommand::withArgument(command, u"--x"_s), "longer");
    }
};

QTEST_GUILESS_MAIN(EntryCommandTest)
#include "EntryCommandTest.moc"

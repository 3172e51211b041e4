// SPDX-License-Identifier: Apache-2.0
#include "SampleHost.h"
#include "ScriptCases.h"
#include "Scripting/ScriptError.h"
#include "Scripting/ScriptInterpreter.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Runs every script in the folder `scripts` and compares its outcome with the one that the file states.
class ScriptLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scripts_data();
    void scripts();
};

void ScriptLanguageTest::scripts_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    const QDir folder(QFINDTESTDATA("scripts"));
    for (const QFileInfo &file : folder.entryInfoList({u"*.applescript"_s})) {
        const QList<ScriptCase> cases = ScriptCases::in(file.filePath());
        for (const ScriptCase &script : cases)
            QTest::addRow("%s: %s", qPrintable(file.baseName()), qUtf8Printable(script.title))
                << script.source << (script.error ? u"Error: "_s + *script.error : script.result.value());
    }
}

void ScriptLanguageTest::scripts()
{
    QFETCH(QString, source);
    SampleHost host;
    QString outcome;
    try {
        outcome = ScriptCoercion::source(Awaited::result(ScriptInterpreter::run(source, host)));
    } catch (const ScriptError &error) {
        outcome = u"Error: "_s + error.errorDescription();
    }
    QTEST(outcome, "expected");
}

QTEST_GUILESS_MAIN(ScriptLanguageTest)
#include "ScriptLanguageTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/AnswerReader.h"
#include "OrvaneApp/CommandLine/PseudoTerminal.h"

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

class AnswerReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsAreUnderstood_data();
    void wordsAreUnderstood();
    void anAnswerIsReadFromTheTerminal();
    void anAnswerMayComeInPieces();
    void inputBeforeTheQuestionIsNoAnswer();
    void anythingElseIsAskedAgain();
    void aTerminalThatGoesAwayMeansNo();
    void nothingIsReadAfterCancelling();
    void onlyATerminalCanBeAsked();
};

void AnswerReaderTest::wordsAreUnderstood_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("meaning");
    const auto row = [](const char *line, const char *meaning) {
        QTest::newRow(line) << QByteArray(line) << QString::fromLatin1(meaning);
    };
    row("y", "yes");
    row("Y", "yes");
    row(" yes \r", "yes");
    row("n", "no");
    row("NO", "no");
    row("", "nothing");
    row("yn", "nothing");
    row("yes please", "nothing");
}

void AnswerReaderTest::wordsAreUnderstood()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, meaning);
    const std::optional<bool> answer = AnswerReader::meaning(line);
    const QString got = !answer ? u"nothing"_s : *answer ? u"yes"_s : u"no"_s;
    QCOMPARE(got, meaning);
}

void AnswerReaderTest::anAnswerIsReadFromTheTerminal()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    reader.start();
    QVERIFY(terminal.type("yes\n"));
    QTRY_COMPARE(answered.size(), 1);
    QCOMPARE(answered.takeFirst().constFirst().toBool(), true);

    reader.start();
    QVERIFY(terminal.type("n\n"));
    QTRY_COMPARE(answered.size(), 1);
    QCOMPARE(answered.takeFirst().constFirst().toBool(), false);
}

void AnswerReaderTest::anAnswerMayComeInPieces()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    reader.start();
    QVERIFY(terminal.type("ye"));
    QCoreApplication::processEvents();
    QVERIFY(terminal.type("s\n"));
    QTRY_COMPARE(answered.size(), 1);
    QCOMPARE(answered.constFirst().constFirst().toBool(), true);
}

void AnswerReaderTest::inputBeforeTheQuestionIsNoAnswer()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    QVERIFY(terminal.type("y\n"));
    reader.start();
    QVERIFY(terminal.type("n\n"));
    QTRY_COMPARE(answered.size(), 1);
    QCOMPARE(answered.constFirst().constFirst().toBool(), false);
}

void AnswerReaderTest::anythingElseIsAskedAgain()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    QSignalSpy notUnderstood(&reader, &AnswerReader::notUnderstood);
    reader.start();
    QVERIFY(terminal.type("perhaps\n"));
    QTRY_COMPARE(notUnderstood.size(), 1);
    QCOMPARE(answered.size(), 0);
    reader.start();
    QVERIFY(terminal.type("y\n"));
    QTRY_COMPARE(answered.size(), 1);
}

void AnswerReaderTest::aTerminalThatGoesAwayMeansNo()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    reader.start();
    terminal.hangUp();
    QTRY_COMPARE(answered.size(), 1);
    QCOMPARE(answered.constFirst().constFirst().toBool(), false);
}

void AnswerReaderTest::nothingIsReadAfterCancelling()
{
    PseudoTerminal terminal;
    AnswerReader reader(terminal.descriptor());
    QSignalSpy answered(&reader, &AnswerReader::answered);
    reader.start();
    reader.cancel();
    QVERIFY(terminal.type("y\n"));
    // If the cancelled reader still listened, it would receive this input as well.
    AnswerReader other(terminal.descriptor());
    QSignalSpy heard(&other, &AnswerReader::answered);
    other.start();
    QVERIFY(terminal.type("y\n"));
    QTRY_COMPARE(heard.size(), 1);
    QCOMPARE(answered.size(), 0);
}

void AnswerReaderTest::onlyATerminalCanBeAsked()
{
    const PseudoTerminal terminal;
    QVERIFY(AnswerReader(terminal.descriptor()).canAsk());
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(!AnswerReader(file.handle()).canAsk());
}

QTEST_GUILESS_MAIN(AnswerReaderTest)
#include "AnswerReaderTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/CommandLine.h"

#include "OrvaneApp/CommandLine/HelpTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Parses the words after "orvane", split at blanks.
std::variant<CommandLine, CommandLine::WrongUse> parsed(const QString &arguments)
{
    return CommandLine::parse(arguments.split(u' ', Qt::SkipEmptyParts));
}

} // namespace

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandsAreUnderstood_data();
    void commandsAreUnderstood();
    void theWordsAfterDoAreTheTask_data();
    void theWordsAfterDoAreTheTask();
    void modelsAreFoundByTheirIdentifier();
    void theTimeToKeepAModelIsUnderstood();
    void helpIsAboutTheCommand_data();
    void helpIsAboutTheCommand();
    void wrongUseIsSaidClearly_data();
    void wrongUseIsSaidClearly();
    void verboseIsUnderstoodAnywhere();
    void theWindowComesUpAsAskedFor_data();
    void theWindowComesUpAsAskedFor();
    void theDoctorSpeaksJsonWhenAsked();
    void theEntryIsRemovedWhenAsked();
};

void CommandLineTest::commandsAreUnderstood_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("command");
    const auto row = [](const QString &arguments, CommandLine::Command command) {
        QTest::newRow(qPrintable(arguments)) << arguments << static_cast<int>(command);
    };
    row(u"do something"_s, CommandLine::Command::Do);
    row(u"models"_s, CommandLine::Command::ListModels);
    row(u"models download"_s, CommandLine::Command::DownloadModel);
    row(u"models download llama3.2-3b"_s, CommandLine::Command::DownloadModel);
    row(u"models select llama3.2-3b"_s, CommandLine::Command::SelectModel);
    row(u"models keep always"_s, CommandLine::Command::KeepModel);
    row(u"models keep 5"_s, CommandLine::Command::KeepModel);
    row(u"doctor"_s, CommandLine::Command::Doctor);
    row(u"doctor --json"_s, CommandLine::Command::Doctor);
    row(u"doctor --json --help"_s, CommandLine::Command::Help);
    row(u"integrate"_s, CommandLine::Command::Integrate);
    row(u"integrate --remove"_s, CommandLine::Command::Integrate);
    row(u"--version"_s, CommandLine::Command::Version);
    row(u"do something --version"_s, CommandLine::Command::Version);
    row(u"--help"_s, CommandLine::Command::Help);
    row(u"-h"_s, CommandLine::Command::Help);
    row(u"do --help"_s, CommandLine::Command::Help);
    row(u"models download --help"_s, CommandLine::Command::Help);
    row(QString(), CommandLine::Command::Window);
    row(u"--background"_s, CommandLine::Command::Window);
    row(u"--toggle --verbose"_s, CommandLine::Command::Window);
    row(u"--toggle --help"_s, CommandLine::Command::Help);
}

void CommandLineTest::commandsAreUnderstood()
{
    QFETCH(QString, arguments);
    QFETCH(int, command);
    const auto result = parsed(arguments);
    QVERIFY(std::holds_alternative<CommandLine>(result));
    QCOMPARE(static_cast<int>(std::get<CommandLine>(result).command), command);
}

void CommandLineTest::theWordsAfterDoAreTheTask_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("task");
    QTest::newRow("one argument") << QStringList{u"do"_s, u"Open Safari"_s} << u"Open Safari"_s;
    QTest::newRow("words") << QStringList{u"do"_s, u"Open"_s, u"Safari"_s} << u"Open Safari"_s;
    QTest::newRow("blanks around") << QStringList{u"do"_s, u"  Open Safari "_s} << u"Open Safari"_s;
    QTest::newRow("a dash after --") << QStringList{u"do"_s, u"--"_s, u"--help"_s, u"me"_s} << u"--help me"_s;
    QTest::newRow("the name of a command") << QStringList{u"do"_s, u"models"_s} << u"models"_s;
}

void CommandLineTest::theWordsAfterDoAreTheTask()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, task);
    const auto result = CommandLine::parse(arguments);
    QVERIFY(std::holds_alternative<CommandLine>(result));
    QCOMPARE(std::get<CommandLine>(result).task, task);
}

void CommandLineTest::modelsAreFoundByTheirIdentifier()
{
    const auto result = parsed(u"models select llama3.2-3b"_s);
    QCOMPARE(std::get<CommandLine>(result).modelIdentifier, u"llama3.2-3b"_s);
    const auto selectedOne = parsed(u"models download"_s);
    QVERIFY(std::get<CommandLine>(selectedOne).modelIdentifier.isEmpty());
}

void CommandLineTest::theTimeToKeepAModelIsUnderstood()
{
    QCOMPARE(std::get<CommandLine>(parsed(u"models keep 5"_s)).idleTime, std::chrono::minutes(5));
    QCOMPARE(std::get<CommandLine>(parsed(u"models keep always"_s)).idleTime, std::nullopt);
}

void CommandLineTest::helpIsAboutTheCommand_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("text");
    QTest::newRow("no command") << u"--help"_s << HelpTexts::general();
    QTest::newRow("do") << u"do --help"_s << HelpTexts::doCommand();
    QTest::newRow("before do") << u"-h do"_s << HelpTexts::doCommand();
    QTest::newRow("models") << u"models --help"_s << HelpTexts::modelsCommand();
    QTest::newRow("doctor") << u"doctor --help"_s << HelpTexts::doctorCommand();
    QTest::newRow("integrate") << u"integrate --help"_s << HelpTexts::integrateCommand();
    QTest::newRow("models select") << u"models select --help"_s << HelpTexts::modelsCommand();
}

void CommandLineTest::helpIsAboutTheCommand()
{
    QFETCH(QString, arguments);
    QFETCH(QString, text);
    QCOMPARE(std::get<CommandLine>(parsed(arguments)).helpText, text);
}

void CommandLineTest::wrongUseIsSaidClearly_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const QString &arguments, const QString &message) {
        QTest::newRow(qPrintable(u"orvane "_s + arguments)) << arguments << message;
    };
    row(u"--background --toggle"_s,
        u"The options “--background” and “--toggle” exclude each other. See: orvane --help"_s);
    row(u"models --toggle"_s,
        u"The options “--background” and “--toggle” go without a command. See: orvane --help"_s);
    row(u"dance"_s, u"“dance” is no command. See: orvane --help"_s);
    row(u"dance --help"_s, u"“dance” is no command. See: orvane --help"_s);
    row(u"do"_s, u"There is no task to do. See: orvane do --help"_s);
    row(u"--loud do it"_s, u"The option “--loud” is unknown. See: orvane --help"_s);
    row(u"models remove"_s, u"“models remove” is no command. See: orvane models --help"_s);
    row(u"models select"_s, u"Which model is to be selected? See: orvane models"_s);
    row(u"models select gpt"_s, u"There is no model “gpt”. See: orvane models"_s);
    row(u"models download LLAMA3.2-3B"_s, u"There is no model “LLAMA3.2-3B”. See: orvane models"_s);
    row(u"models keep"_s,
        u"“keep” takes “always” or a number of minutes, at most 10080. See: orvane models --help"_s);
    row(u"models keep 0"_s,
        u"“keep” takes “always” or a number of minutes, at most 10080. See: orvane models --help"_s);
    row(u"doctor now"_s, u"“doctor” takes no words. See: orvane doctor --help"_s);
    row(u"integrate now"_s, u"“integrate” takes no words. See: orvane integrate --help"_s);
    row(u"doctor --remove"_s, u"The option “--remove” goes with “integrate” only. See: orvane --help"_s);
    row(u"models --json"_s, u"The option “--json” goes with “doctor” only. See: orvane --help"_s);
    row(u"--json"_s, u"The option “--json” goes with “doctor” only. See: orvane --help"_s);
    row(u"models select llama3.2-3b now"_s,
        u"There are too many words after “select”. See: orvane models --help"_s);
}

void CommandLineTest::wrongUseIsSaidClearly()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    const auto result = parsed(arguments);
    QVERIFY(std::holds_alternative<CommandLine::WrongUse>(result));
    QCOMPARE(std::get<CommandLine::WrongUse>(result).message, message);
}

void CommandLineTest::verboseIsUnderstoodAnywhere()
{
    QVERIFY(std::get<CommandLine>(parsed(u"do it --verbose"_s)).verbose);
    QVERIFY(std::get<CommandLine>(parsed(u"--verbose models"_s)).verbose);
    QVERIFY(!std::get<CommandLine>(parsed(u"do it"_s)).verbose);
    QVERIFY(!std::get<CommandLine>(parsed(u"do -- --verbose"_s)).verbose);
}

void CommandLineTest::theWindowComesUpAsAskedFor_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<CommandLine::Opening>("opening");
    QTest::newRow("nothing said") << QString() << CommandLine::Opening::Shown;
    QTest::newRow("in the background") << u"--background"_s << CommandLine::Opening::Hidden;
    QTest::newRow("toggled") << u"--toggle"_s << CommandLine::Opening::Toggled;
}

void CommandLineTest::theWindowComesUpAsAskedFor()
{
    QFETCH(QString, arguments);
    QTEST(std::get<CommandLine>(parsed(arguments)).opening, "opening");
}

void CommandLineTest::theDoctorSpeaksJsonWhenAsked()
{
    using Format = DoctorReport::Format;
    QCOMPARE(std::get<CommandLine>(parsed(u"doctor"_s)).format, Format::Text);
    QCOMPARE(std::get<CommandLine>(parsed(u"doctor --json"_s)).format, Format::Json);
    QCOMPARE(std::get<CommandLine>(parsed(u"--json doctor"_s)).format, Format::Json);
}

void CommandLineTest::theEntryIsRemovedWhenAsked()
{
    using Integration = CommandLine::Integration;
    QCOMPARE(std::get<CommandLine>(parsed(u"integrate"_s)).integration, Integration::Written);
    QCOMPARE(std::get<CommandLine>(parsed(u"integrate --remove"_s)).integration, Integration::Removed);
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"

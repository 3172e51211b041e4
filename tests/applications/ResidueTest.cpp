// SPDX-License-Identifier: Apache-2.0
// Actions leave nothing behind on the desktop or in the program, even if the program is killed.
#include "Support/KeyboardDevices.h"
#include "applications/support/DesktopTest.h"
#include "applications/support/X11Screen.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

class ResidueTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void actionsGiveTheirDescriptorsBack();
    void theKeysOfAKilledProgramArePutBackByTheNext();

private:
    void performEveryKind();

    QString m_path;
};

namespace {

constexpr auto typingOption = "--type";
constexpr std::uint8_t shiftKey = 50;

// Characters that the layout lacks; long enough to be interrupted halfway.
const QString foreignText = u"Съешь ещё этих мягких французских булок, да выпей же чаю. "_s.repeated(40);

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

// Runs this executable as a program that only types.
int typeAndEnd()
{
    ActionRunner runner;
    return runner.perform("type_text", {{"text", foreignText}}).hasFailed ? 1 : 0;
}

} // namespace

void ResidueTest::init()
{
    m_path = PrivateDesktop::home(u"Documents/residue.txt"_s);
    PrivateDesktop::write(m_path, "");
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {m_path}, u"Mousepad"_s));
}

void ResidueTest::performEveryKind()
{
    const QList<Outcome> outcomes = {
        perform("open_app", {{"app", u"Mousepad"_s}}),
        perform("type_text", {{"text", u"жук "_s}}),
        perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}}),
        perform("click", {{"label", u"Undo"_s}}),
        perform("read_ui"),
        perform("list_windows"),
        perform("screenshot", {{"folder", u"Pictures"_s}}),
        perform("find_files", {{"folder", u"Documents"_s}, {"extension", u"txt"_s}}),
    };
    for (const Outcome &outcome : outcomes)
        QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
    QVERIFY(perform("click", {{"label", u"Launch the rocket"_s}}).hasFailed);
    QVERIFY(perform("open_app", {{"app", u"Zanzibar Studio"_s}}).hasFailed);
}

// Descriptors that are kept, such as bus connections, are opened in the first round.
void ResidueTest::actionsGiveTheirDescriptorsBack()
{
    performEveryKind();
    const qsizetype before = openDescriptors();
    for (int round = 0; round < 5; ++round)
        performEveryKind();
    QTRY_COMPARE_WITH_TIMEOUT(openDescriptors(), before, PrivateDesktop::patience);
}

// The user's keyboard has a different layout from the XTEST keyboard, and was used last.
void ResidueTest::theKeysOfAKilledProgramArePutBackByTheNext()
{
    KeyboardDevices keyboards;
    KeyboardDevices::setLayout(keyboards.physical, u"de"_s);
    keyboards.pressPhysicalKey(shiftKey);
    const QByteArray physical = KeyboardDevices::map(keyboards.physical);
    const QByteArray sending = KeyboardDevices::map(keyboards.sending);
    QVERIFY(physical != sending);
    const QSet<int> keys = X11Screen::keysWithSymbols();

    QProcess program;
    program.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(typingOption)});
    const auto hasChangedKeys = [&] { return KeyboardDevices::map(keyboards.sending) != sending; };
    QVERIFY(QTest::qWaitFor(hasChangedKeys, PrivateDesktop::patience));
    program.kill();
    QVERIFY(program.waitForFinished());
    QVERIFY(!X11Screen::isAKeyPressed());
    QVERIFY(hasChangedKeys());
    QCOMPARE(KeyboardDevices::map(keyboards.physical), physical);

    // Applications see the user's keymap again as soon as that keyboard is used.
    keyboards.pressPhysicalKey(shiftKey);
    QCOMPARE(X11Screen::keysWithSymbols(), keys);

    const Outcome typed = perform("type_text", {{"text", u"plain"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    QCOMPARE(KeyboardDevices::map(keyboards.sending), sending);
    QCOMPARE(KeyboardDevices::map(keyboards.physical), physical);
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    if (application.arguments().value(1) == QLatin1StringView(typingOption))
        return typeAndEnd();
    ResidueTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "ResidueTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Text of every kind arrives unchanged in a GTK, a Qt and a web text field, in ten rounds out of ten.
#include "applications/support/DesktopTest.h"
#include "applications/support/HardText.h"
#include "applications/support/LocalSite.h"
#include "applications/support/TextFields.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 10;

} // namespace

class TypingTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void arrivesInAnEditor_data();
    void arrivesInAnEditor();
    void arrivesInAWebPage();
    void goesNowhereWithoutAWindow();

private:
    // Replaces the existing text.
    Outcome type(const QString &text);
};

Outcome TypingTest::type(const QString &text)
{
    const Outcome selected = perform("press_key", {{"key", u"a"_s}, {"modifiers", u"command"_s}});
    return selected.hasFailed ? selected : perform("type_text", {{"text", text}});
}

void TypingTest::arrivesInAnEditor_data()
{
    TextFields::addEditors();
}

void TypingTest::arrivesInAnEditor()
{
    QFETCH(QString, program);
    QFETCH(QString, windowClass);
    const QString path = PrivateDesktop::home(u"Documents/typed.txt"_s);
    QVERIFY(TextFields::openFile(path, "nothing typed yet", program, windowClass));
    for (int round = 0; round < rounds; ++round) {
        const QString text = HardText::ofRound(round);
        const Outcome outcome = type(text);
        QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
        const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
        QVERIFY2(!saved.hasFailed, qPrintable(saved.line));
        const QString difference = TextFields::differenceInFile(path, text);
        QVERIFY2(difference.isEmpty(), qPrintable(u"round %1: %2"_s.arg(round).arg(difference)));
    }
}

void TypingTest::arrivesInAWebPage()
{
    LocalSite site;
    TextFields::addPage(site);
    const Outcome page = perform("open_url", {{"url", site.address(u"/notes"_s)}});
    VERIFY_EFFECT(site.report() == "ready"_L1 && Browser::isActive(), page);
    for (int round = 0; round < rounds; ++round) {
        const QString text = HardText::ofRound(round);
        const Outcome outcome = type(text);
        QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
        QVERIFY2(QTest::qWaitFor([&] { return site.report() == text; }, PrivateDesktop::patience),
                 qPrintable(u"round %1: %2"_s.arg(round).arg(HardText::difference(text, site.report()))));
    }
}

void TypingTest::goesNowhereWithoutAWindow()
{
    const Outcome outcome = perform("type_text", {{"text", u"secret"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"No application is in front to receive the keys."_s);
}

QTEST_MAIN(TypingTest)
#include "TypingTest.moc"

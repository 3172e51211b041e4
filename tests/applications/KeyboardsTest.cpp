// SPDX-License-Identifier: Apache-2.0
// Real applications while keyboard devices have different layouts: text arrives unchanged, and shortcuts
// work.
#include "Support/KeyboardDevices.h"
#include "applications/support/DesktopTest.h"
#include "applications/support/HardText.h"
#include "applications/support/LocalSite.h"
#include "applications/support/TextFields.h"

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t rightAlternateKey = 108;
constexpr std::uint8_t letterF = 41;

const QString plainText = u"zylophone-yes zz, 12 & {x} @"_s;

} // namespace

class KeyboardsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void textArrivesInAnEditor_data();
    void textArrivesInAnEditor();
    void textArrivesInAWebPage();
    void theUserGoesOnInTheLanguageThatWasSwitchedOn();
    void commandsWorkInABrowser_data();
    void commandsWorkInABrowser();

private:
    // Uses the physical keyboard last, so that applications see its layout.
    void setLayouts(const QString &physical, const QString &sending);

    KeyboardDevices m_keyboards;
};

void KeyboardsTest::setLayouts(const QString &physical, const QString &sending)
{
    KeyboardDevices::setLayout(m_keyboards.sending, sending);
    KeyboardDevices::setLayout(m_keyboards.physical, physical);
    m_keyboards.pressPhysicalKey(shiftKey);
}

void KeyboardsTest::init()
{
    QVERIFY(m_keyboards.isValid());
    KeyboardDevices::setLayout(u"us"_s);
}

void KeyboardsTest::textArrivesInAnEditor_data()
{
    TextFields::addEditors();
}

void KeyboardsTest::textArrivesInAnEditor()
{
    QFETCH(QString, program);
    QFETCH(QString, windowClass);
    const QString path = PrivateDesktop::home(u"Documents/keyboards.txt"_s);
    QVERIFY(TextFields::openFile(path, "nothing typed yet", program, windowClass));
    setLayouts(u"de"_s, u"us"_s);
    const QByteArray physical = KeyboardDevices::map(m_keyboards.physical);
    for (const QString &text : {plainText, HardText::ofRound(1)}) {
        m_keyboards.pressPhysicalKey(shiftKey);
        QVERIFY(!perform("press_key", {{"key", u"a"_s}, {"modifiers", u"command"_s}}).hasFailed);
        const Outcome typed = perform("type_text", {{"text", text}});
        QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
        QVERIFY(!perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}}).hasFailed);
        QCOMPARE(TextFields::differenceInFile(path, text), QString());
    }
    QCOMPARE(KeyboardDevices::map(m_keyboards.physical), physical);
}

void KeyboardsTest::textArrivesInAWebPage()
{
    LocalSite site;
    TextFields::addPage(site);
    const Outcome page = perform("open_url", {{"url", site.address(u"/notes"_s)}});
    VERIFY_EFFECT(site.report() == "ready"_L1 && Browser::isActive(), page);
    setLayouts(u"us"_s, u"fr"_s);
    const Outcome typed = perform("type_text", {{"text", plainText}});
    VERIFY_EFFECT(site.report() == plainText, typed);
}

// The XTEST keyboard lacks this language.
void KeyboardsTest::theUserGoesOnInTheLanguageThatWasSwitchedOn()
{
    const QString path = PrivateDesktop::home(u"Documents/language.txt"_s);
    QVERIFY(TextFields::openFile(path, "", u"mousepad"_s, u"Mousepad"_s));
    KeyboardDevices::setLayout(m_keyboards.physical, u"de,ru"_s, u"grp:toggle"_s);
    m_keyboards.pressPhysicalKey(rightAlternateKey);
    const QByteArray map = KeyboardDevices::map(m_keyboards.master);
    QCOMPARE(map, KeyboardDevices::map(m_keyboards.physical));
    for (const QString &text : {plainText, u"漢字"_s}) {
        const Outcome typed = perform("type_text", {{"text", text}});
        QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
        QCOMPARE(KeyboardDevices::map(m_keyboards.master), map);
        m_keyboards.pressPhysicalKey(letterF);
    }
    const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    const QByteArray wanted = (plainText + u"а漢字а"_s).toUtf8();
    VERIFY_EFFECT(PrivateDesktop::read(path).trimmed() == wanted, saved);
}

void KeyboardsTest::commandsWorkInABrowser_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("key");
    QTest::newRow("the first tab, where digits need Shift") << u"fr"_s << u"1"_s;
    QTest::newRow("the tab closed, in another language") << u"us,ru"_s << u"w"_s;
}

// Either shortcut leads from the second page to the first.
void KeyboardsTest::commandsWorkInABrowser()
{
    QFETCH(QString, layout);
    QFETCH(QString, key);
    LocalSite site;
    site.setPage(u"/first"_s, u"First page"_s, u"<h1>First</h1>"_s);
    site.setPage(u"/second"_s, u"Second page"_s, u"<h1>Second</h1>"_s);
    const auto isShown = [](const QString &title) {
        const auto active = Screen::activeWindow();
        return active && active->title.startsWith(title);
    };
    const auto open = [&](const QString &page, const QString &title) {
        PrivateDesktop::start(u"chromium"_s, {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                                              u"--hide-crash-restore-bubble"_s, site.address(page)});
        return QTest::qWaitFor([&] { return isShown(title); }, PrivateDesktop::patience);
    };
    QVERIFY(open(u"/first"_s, u"First page"_s));
    QVERIFY(open(u"/second"_s, u"Second page"_s));

    KeyboardDevices::setLayout(layout, u"grp:toggle"_s);
    m_keyboards.pressPhysicalKey(rightAlternateKey); // the next language, if there is one
    const Outcome pressed = perform("press_key", {{"key", key}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(isShown(u"First page"_s), pressed);
}

QTEST_MAIN(KeyboardsTest)
#include "KeyboardsTest.moc"

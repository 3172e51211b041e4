// SPDX-License-Identifier: Apache-2.0
// Web addresses and pages in a real Firefox, judged by its window's title and the pages' reports. Actions on
// every browser are tested in matrix/.
#include "applications/support/DesktopTest.h"
#include "applications/support/LocalSite.h"

using namespace Qt::StringLiterals;

class BrowserTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void opensAnAddressInTheBrowserOfAnotherSystem();
    void opensASecondAddressInATabOfTheRunningBrowser();
    void tellsScriptsTheAddressOfItsPage_data();
    void tellsScriptsTheAddressOfItsPage();
    void refusesAnAddressWithoutAHost();
    void typesIntoAPageAndSendsItWithReturn();
    void pressesTheControlOfThatLabel_data();
    void pressesTheControlOfThatLabel();

private:
    std::unique_ptr<LocalSite> m_site;
};

void BrowserTest::init()
{
    m_site = std::make_unique<LocalSite>();
    m_site->setPage(u"/first"_s, u"First page"_s, u"<h1>First</h1>"_s);
    m_site->setPage(u"/second"_s, u"Second page"_s, u"<h1>Second</h1>"_s);
    Browser::useProxy(m_site->port());
}

void BrowserTest::opensAnAddressInTheBrowserOfAnotherSystem()
{
    const Outcome outcome =
        perform("open_url", {{"url", m_site->address(u"/first"_s)}, {"app", u"Safari"_s}});
    VERIFY_EFFECT(Browser::showsPage(u"First page"_s), outcome);
    QVERIFY2(outcome.line.startsWith("Opened 127.0.0.1 in Firefox"_L1), qPrintable(outcome.line));
}

void BrowserTest::opensASecondAddressInATabOfTheRunningBrowser()
{
    const Outcome first = perform("open_url", {{"url", m_site->address(u"/first"_s)}});
    VERIFY_EFFECT(Browser::showsPage(u"First page"_s), first);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));

    const Outcome second =
        perform("open_url", {{"url", m_site->address(u"/second"_s)}, {"app", u"Firefox"_s}});
    VERIFY_EFFECT(Browser::showsPage(u"Second page"_s) && Browser::isActive(), second);
    QCOMPARE(Screen::windowsOf(QString::fromLatin1(Browser::windowClass)).size(), 1);
}

void BrowserTest::tellsScriptsTheAddressOfItsPage_data()
{
    QTest::addColumn<QString>("page");
    QTest::newRow("active tab") << u"active tab of front window"_s;
    QTest::newRow("current tab") << u"current tab of window 1"_s;
    QTest::newRow("document") << u"front document"_s;
}

// The tab behind has another address.
void BrowserTest::tellsScriptsTheAddressOfItsPage()
{
    QFETCH(QString, page);
    const Outcome first = perform("open_url", {{"url", m_site->address(u"/first"_s)}});
    VERIFY_EFFECT(Browser::showsPage(u"First page"_s), first);
    const Outcome second = perform("open_url", {{"url", m_site->address(u"/second?a=b#c"_s)}});
    VERIFY_EFFECT(Browser::showsPage(u"Second page"_s), second);
    const QString script = u"tell application \"Firefox\" to return URL of %1"_s.arg(page);
    const Outcome told = perform("applescript", {{"script", script}});
    QCOMPARE(told.line, u"Script returned: "_s + m_site->address(u"/second?a=b#c"_s));
}

void BrowserTest::refusesAnAddressWithoutAHost()
{
    const Outcome outcome = perform("open_url", {{"url", u"file:///etc"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"“file:///etc” isn't a valid address."_s);
    QVERIFY(!Browser::isShown());
}

void BrowserTest::typesIntoAPageAndSendsItWithReturn()
{
    m_site->setPage(u"/form"_s, u"A form"_s, u"<form action='/sent'><input name='words' autofocus></form>"_s);
    m_site->setPage(u"/sent"_s, u"It was sent"_s, u"<p>Thank you</p>"_s);
    const Outcome page = perform("open_url", {{"url", m_site->address(u"/form"_s)}});
    VERIFY_EFFECT(Browser::showsPage(u"A form"_s) && Browser::isActive(), page);
    const Outcome typed = perform("type_text", {{"text", u"two words"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome sent = perform("press_key", {{"key", u"Return"_s}});
    VERIFY_EFFECT(Browser::showsPage(u"It was sent"_s), sent);
    QVERIFY2(m_site->visits().contains(u"/sent?words=two+words"_s), qPrintable(m_site->visits().join(u' ')));
}

void BrowserTest::pressesTheControlOfThatLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("pressed");
    QTest::newRow("a link") << u"Read more"_s << u"link"_s;
    QTest::newRow("a check box") << u"I agree"_s << u"check box"_s;
}

void BrowserTest::pressesTheControlOfThatLabel()
{
    QFETCH(QString, label);
    QFETCH(QString, pressed);
    m_site->setPage(u"/controls"_s, u"Controls"_s,
                    u"<a href='#' onclick=\"report('link')\">Read more</a>"
                    "<label><input type='checkbox' onchange=\"report('check box')\">I agree</label>"_s);
    const Outcome page = perform("open_url", {{"url", m_site->address(u"/controls"_s)}});
    VERIFY_EFFECT(Browser::showsPage(u"Controls"_s) && Browser::isActive(), page);

    // Retry: a browser just started exposes a page's controls with a delay.
    Outcome outcome;
    const auto isFound = [&] { return !(outcome = perform("click", {{"label", label}})).hasFailed; };
    QVERIFY2(QTest::qWaitFor(isFound, PrivateDesktop::patience), qPrintable(outcome.line));
    VERIFY_EFFECT(m_site->report() == pressed, outcome);
    QCOMPARE(outcome.line, u"Clicked “%1”."_s.arg(label));
}

QTEST_MAIN(BrowserTest)
#include "BrowserTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/Operations/Browsing.h"
#include "Actions/Operations/WebAddress.h"

#include <QTest>

using namespace Qt::StringLiterals;

class WebTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void validAddresses_data();
    void validAddresses();
    void invalidAddresses_data();
    void invalidAddresses();
    void searchAddresses_data();
    void searchAddresses();
    void aQueryThatCannotBeEncodedIsUsedAsItIs();
    void aNamedBrowserOpensTheAddress();
    void anUnknownBrowserFails();
    void theAddressIsCheckedBeforeTheBrowser();
    void theDefaultHandlersAnswerIsIgnored();
    void theNamedBrowsersErrorPassesThrough();
};

void WebTest::validAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("host");

    QTest::newRow("a bare host") << u"example.org"_s << u"https://example.org"_s << u"example.org"_s;
    QTest::newRow("a scheme and a path stay")
        << u"http://example.org/a/b?c=d#e"_s << u"http://example.org/a/b?c=d#e"_s << u"example.org"_s;
    QTest::newRow("a path without a scheme")
        << u"example.org/a b"_s.replace(u' ', u'-') << u"https://example.org/a-b"_s << u"example.org"_s;
    QTest::newRow("a single word") << u"localhost"_s << u"https://localhost"_s << u"localhost"_s;
    QTest::newRow("a port") << u"localhost:8080/x"_s << u"https://localhost:8080/x"_s << u"localhost"_s;
    QTest::newRow("any scheme with a host")
        << u"ftp://example.org"_s << u"ftp://example.org"_s << u"example.org"_s;
    QTest::newRow("a numeric host") << u"https://[::1]/"_s << u"https://[::1]/"_s << u"::1"_s;
    QTest::newRow("capital letters") << u"Example.ORG/Path"_s << u"https://Example.ORG/Path"_s
                                     << u"Example.ORG"_s;
    QTest::newRow("a scheme in capital letters")
        << u"HTTPS://Example.org/A"_s << u"https://Example.org/A"_s << u"Example.org"_s;
    QTest::newRow("three numbers") << u"1.2.3"_s << u"https://1.2.3"_s << u"1.2.3"_s;
    QTest::newRow("a user and a port")
        << u"https://Kim:a@Example.org:81?q"_s << u"https://Kim:a@Example.org:81?q"_s << u"Example.org"_s;
    QTest::newRow("an at sign behind the host")
        << u"Example.org/@kim"_s << u"https://Example.org/@kim"_s << u"Example.org"_s;
    QTest::newRow("letters of any script in the host")
        << u"Bücher.example"_s << u"https://xn--bcher-kva.example"_s << u"Bücher.example"_s;
    QTest::newRow("letters of any script in the path")
        << u"https://example.org/é"_s << u"https://example.org/%C3%A9"_s << u"example.org"_s;
    QTest::newRow("\"://\" anywhere counts as a scheme, so none is added")
        << u"a.org/?to=b://c"_s << QString() << QString();
}

void WebTest::validAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, opened);
    QFETCH(QString, host);
    ActionBench bench;
    const QString outcome = bench.outcome(Browsing::openURL(text, std::nullopt, bench.services()));
    if (opened.isNull()) {
        QCOMPARE(outcome, u"Error: “%1” isn't a valid address."_s.arg(text));
        return;
    }
    QCOMPARE(outcome, u"Opened %1 in the default browser."_s.arg(host));
    const QStringList expected{u"open "_s + opened, u"wait 1200 ms"_s};
    QCOMPARE(bench.journal(), expected);
}

void WebTest::invalidAddresses_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("a file has no host") << u"file:///Users"_s;
    QTest::newRow("blanks are not encoded in a host") << u"exam ple.org"_s;
    QTest::newRow("blanks are not encoded in a path") << u"example.org/a b"_s;
    QTest::newRow("a scheme only") << u"https://"_s;
    QTest::newRow("no scheme before the slashes") << u"://example.org"_s;
    QTest::newRow("a host without a scheme") << u"//example.org/?to=a://b"_s;
    QTest::newRow("a port that is no number") << u"example.org:http"_s;
    QTest::newRow("a broken percent sign") << u"https://example.org/%zz"_s;
    QTest::newRow("a settings address has no host") << u"x-apple.systempreferences:com.apple.Sound"_s;
}

void WebTest::invalidAddresses()
{
    QFETCH(QString, text);
    ActionBench bench;
    QCOMPARE(bench.outcome(Browsing::openURL(text, std::nullopt, bench.services())),
             u"Error: “%1” isn't a valid address."_s.arg(text));
    QCOMPARE(bench.journal(), QStringList());
}

void WebTest::searchAddresses_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("encoded");

    QTest::newRow("blanks") << u"cheap flights"_s << u"cheap%20flights"_s;
    QTest::newRow("an ampersand stays") << u"a&b"_s << u"a&b"_s;
    QTest::newRow("everything that a query may hold stays")
        << u"azAZ09-._~!$&'()*+,;=:@/?"_s << u"azAZ09-._~!$&'()*+,;=:@/?"_s;
    QTest::newRow("everything else is encoded")
        << u"\"#%<>[\\]^`{|}\n"_s << u"%22%23%25%3C%3E%5B%5C%5D%5E%60%7B%7C%7D%0A"_s;
    QTest::newRow("other scripts, as UTF-8") << u"é日🚀"_s << u"%C3%A9%E6%97%A5%F0%9F%9A%80"_s;
}

void WebTest::searchAddresses()
{
    QFETCH(QString, query);
    QFETCH(QString, encoded);
    const QString address = u"https://www.google.com/search?q="_s + encoded;
    QCOMPARE(WebAddress::forSearch(query), address);
    ActionBench bench;
    QCOMPARE(bench.outcome(Browsing::openURL(address, std::nullopt, bench.services())),
             u"Opened www.google.com in the default browser."_s);
    QCOMPARE(bench.journal().value(0), u"open "_s + address);
}

void WebTest::aQueryThatCannotBeEncodedIsUsedAsItIs()
{
    const QString query = u"a b"_s + QChar(0xD800);
    QCOMPARE(WebAddress::forSearch(query), u"https://www.google.com/search?q="_s + query);
}

void WebTest::aNamedBrowserOpensTheAddress()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Google Chrome"_s);
    const std::optional<QString> browser = u"chrome"_s;
    QCOMPARE(bench.outcome(Browsing::openURL(u"example.org"_s, browser, bench.services())),
             u"Opened example.org in Google Chrome."_s);
    const QStringList expected{u"open https://example.org with /Applications/Google Chrome.app"_s,
                               u"wait 1200 ms"_s};
    QCOMPARE(bench.journal(), expected);
}

void WebTest::anUnknownBrowserFails()
{
    ActionBench bench;
    const std::optional<QString> browser = u"Mosaic"_s;
    QCOMPARE(bench.outcome(Browsing::openURL(u"example.org"_s, browser, bench.services())),
             u"Error: Couldn't find an app called “Mosaic”."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void WebTest::theAddressIsCheckedBeforeTheBrowser()
{
    ActionBench bench;
    const std::optional<QString> browser = u"Mosaic"_s;
    QCOMPARE(bench.outcome(Browsing::openURL(u"a b"_s, browser, bench.services())),
             u"Error: “a b” isn't a valid address."_s);
}

void WebTest::theDefaultHandlersAnswerIsIgnored()
{
    ActionBench bench;
    bench.desktop.workspace.opensURLs = false;
    QCOMPARE(bench.outcome(Browsing::openURL(u"example.org"_s, std::nullopt, bench.services())),
             u"Opened example.org in the default browser."_s);
}

void WebTest::theNamedBrowsersErrorPassesThrough()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Safari"_s);
    bench.desktop.journal.failures.insert(RecordedOperation::OpenURLWithApplication, u"It crashed."_s);
    const std::optional<QString> browser = u"Safari"_s;
    QCOMPARE(bench.outcome(Browsing::openURL(u"example.org"_s, browser, bench.services())),
             u"Error: It crashed."_s);
}

QTEST_GUILESS_MAIN(WebTest)
#include "WebTest.moc"

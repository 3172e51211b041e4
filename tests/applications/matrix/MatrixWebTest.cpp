// SPDX-License-Identifier: Apache-2.0
// Opening addresses and searching the web.
#include "applications/matrix/MatrixDesktop.h"
#include "applications/matrix/MatrixTest.h"

#include <QUrl>

using namespace Qt::StringLiterals;

void MatrixTest::opensAddresses()
{
    MatrixDesktop::makeDefault(m_application.entry, m_application.roleTypes);
    if (const auto cell = begin(MatrixAction::OpenAddress))
        verifyAddressOpened({});
    if (QTest::currentTestFailed())
        return;
    QVERIFY(PrivateDesktop::clear());
    m_site->clearReport();
    if (const auto cell = begin(MatrixAction::OpenAddressNamed))
        verifyAddressOpened(m_application.part);
}

// An empty name means the default browser.
void MatrixTest::verifyAddressOpened(const QString &application)
{
    const QString address = m_site->address(u"/matrix?from=a%20task"_s);
    const Outcome outcome = perform("open_url", {{"url", address}, {"app", application}});
    VERIFY_EFFECT(m_site->visits().contains(u"/matrix?from=a%20task"_s) &&
                      showsTitle(m_application.startTitle) &&
                      Screen::activeClass() == m_application.windowClass,
                  outcome);
    const QString place = application.isEmpty() ? u"the default browser"_s : m_application.name;
    QCOMPARE(outcome.line, u"Opened 127.0.0.1 in %1."_s.arg(place));
}

void MatrixTest::searchesTheWeb()
{
    MatrixDesktop::makeDefault(m_application.entry, m_application.roleTypes);
    if (const auto cell = begin(MatrixAction::SearchWeb))
        verifySearch({});
    if (QTest::currentTestFailed())
        return;
    QVERIFY(PrivateDesktop::clear());
    if (const auto cell = begin(MatrixAction::SearchWebNamed))
        verifySearch(m_application.part);
}

// The address bar shows the requested address, and the proxy records the host. No request leaves this
// machine.
void MatrixTest::verifySearch(const QString &application)
{
    const QString query = u"cheap flights to Łódź"_s;
    const Outcome outcome = perform("web_search", {{"query", query}, {"app", application}});
    QUrl address;
    const auto isAsked = [&] {
        return Screen::activeClass() == m_application.windowClass &&
               (address = QUrl(Browser::address())).hasQuery() &&
               m_site->foreignSites().contains(address.host() + u":443"_s);
    };
    VERIFY_EFFECT(isAsked(), outcome);
    QCOMPARE(address.scheme(), u"https"_s);
    QCOMPARE(address.query(QUrl::FullyDecoded), u"q="_s + query);
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
}

// SPDX-License-Identifier: Apache-2.0
// Web pages in browsers, the largest trees.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString page = uR"(<title>Shop</title><h1>Fruit</h1><p>Fresh every <b>morning</b>.</p>
<label><input type=checkbox>Gift wrap</label><input type=password value=secret aria-label=Code>
<input value=pears aria-label=Basket> <button onclick="document.title='Bought'">Buy</button>
<p><a href="#price">Prices</a></p>)"_s;

} // namespace

class AtspiBrowserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aPageIsReadAndPressed_data();
    void aPageIsReadAndPressed();

private:
    AtspiBench::Program open(const QString &browser, const QString &html);

    AtspiBench m_bench;
    QTemporaryDir m_folder;
};

void AtspiBrowserTest::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

AtspiBench::Program AtspiBrowserTest::open(const QString &browser, const QString &html)
{
    QFile file(m_folder.filePath(u"page.html"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(html.toUtf8()) < 0)
        qFatal("The page cannot be written.");
    const QString address = QUrl::fromLocalFile(file.fileName()).toString();
    if (browser == u"chromium"_s)
        return AtspiBench::start(browser, {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                                           u"--force-renderer-accessibility"_s, address});
    return AtspiBench::start(browser, {u"--new-instance"_s, address});
}

void AtspiBrowserTest::aPageIsReadAndPressed_data()
{
    QTest::addColumn<QString>("browser");
    QTest::newRow("Firefox") << u"firefox-esr"_s;
    QTest::newRow("Chromium") << u"chromium"_s;
}

void AtspiBrowserTest::aPageIsReadAndPressed()
{
    QFETCH(QString, browser);
    const auto process = open(browser, page);
    QVERIFY2(m_bench.waitForLabel(*process, u"AXButton"_s, u"Buy"_s),
             qPrintable(m_bench.labels(*process, u"AXButton"_s).join(u" | ")));
    QVERIFY(m_bench.labels(*process, u"AXLink"_s).contains(u"Prices"_s));
    QVERIFY(m_bench.labels(*process, u"AXCheckBox"_s).contains(u"Gift wrap"_s));
    QVERIFY(m_bench.labels(*process, u"AXStaticText"_s).contains(u"Fruit"_s));
    QVERIFY(m_bench.labels(*process, u"AXTextField"_s).contains(u"Code"_s));

    const auto whole = Awaited::result(AtspiBench::walk(m_bench.tree(*process)));
    bool hasBasket = false;
    for (const AccessibilityAttributes &attributes : whole.attributes) {
        hasBasket = hasBasket || (attributes.title == u"Basket"_s && attributes.value == u"pears"_s);
        QVERIFY(attributes.title != u"Code"_s || !attributes.value);
    }
    QVERIFY(hasBasket);

    QVERIFY(m_bench.press(*process, u"AXButton"_s, u"Buy"_s));
    const auto hasTabBought = [&] {
        const QStringList tabs = m_bench.labels(*process, u"AXTab"_s);
        return std::any_of(tabs.begin(), tabs.end(),
                           [](const QString &tab) { return tab.startsWith(u"Bought"_s); });
    };
    QTRY_VERIFY_WITH_TIMEOUT(hasTabBought(), AtspiBench::patience);
}

QTEST_GUILESS_MAIN(AtspiBrowserTest)
#include "BrowserTest.moc"

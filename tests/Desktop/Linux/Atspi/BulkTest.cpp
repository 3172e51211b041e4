// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QDBusMessage>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace {

AtspiReference object(int number)
{
    return {u":1.7"_s, u"/org/a11y/atspi/accessible/%1"_s.arg(number)};
}

AtspiCacheItem item(int number, int parent, int index, int childCount)
{
    AtspiCacheItem result;
    result.object = object(number);
    result.parent = object(parent);
    result.indexInParent = index;
    result.childCount = childCount;
    return result;
}

// A tree of ten children each, two levels deep: object n has the children 10 n + 1 … 10 n + 10.
QList<AtspiCacheItem> wholeTree()
{
    QList<AtspiCacheItem> items;
    for (int i = 1; i <= 110; ++i)
        items.append(item(i, (i - 1) / 10, (i - 1) % 10, i <= 10 ? 10 : 0));
    AtspiCacheItem root = item(0, 0, -1, 10);
    root.parent = {u":1.0"_s, u"/org/a11y/atspi/accessible/root"_s};
    items.append(root);
    return items;
}

bool hasAllChildren(const AtspiCache &cache, int number)
{
    const AtspiCacheItem *const found = cache.find(object(number));
    return found && cache.hasAllChildren(*found);
}

} // namespace

class AtspiBulkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTreeIsTheSameWhateverTheOrderOfTheAnswer();
    void aMissingChildMakesItsParentIncomplete();
    void twoChildrenOfOneIndexMakeTheirParentIncomplete();
    void anObjectThatDidNotCountItsChildrenIsIncomplete();
    void whatWasLeftOutIsNotFound();
    void anErrorIsAnEmptyAnswer();
};

void AtspiBulkTest::theTreeIsTheSameWhateverTheOrderOfTheAnswer()
{
    QList<AtspiCacheItem> items = wholeTree();
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        std::shuffle(items.begin(), items.end(), random);
        const AtspiCache cache(items);
        QCOMPARE(cache.items().size(), 111);
        for (int parent = 0; parent <= 10; ++parent) {
            QVERIFY(hasAllChildren(cache, parent));
            QList<AtspiReference> expected;
            for (int i = 1; i <= 10; ++i)
                expected.append(object(10 * parent + i));
            QVERIFY(cache.children(*cache.find(object(parent))) == expected);
        }
        QVERIFY(hasAllChildren(cache, 11));
        QVERIFY(cache.children(*cache.find(object(11))).isEmpty());
    }
}

void AtspiBulkTest::aMissingChildMakesItsParentIncomplete()
{
    QList<AtspiCacheItem> items = wholeTree();
    items.removeIf([](const AtspiCacheItem &candidate) { return candidate.object == object(35); });
    const AtspiCache cache(items);
    QVERIFY(!hasAllChildren(cache, 3));
    QVERIFY(hasAllChildren(cache, 4));
    QVERIFY(!cache.find(object(35)));
}

void AtspiBulkTest::twoChildrenOfOneIndexMakeTheirParentIncomplete()
{
    QList<AtspiCacheItem> items = wholeTree();
    for (AtspiCacheItem &candidate : items) {
        if (candidate.object == object(35))
            candidate.indexInParent = 5;
    }
    QVERIFY(!hasAllChildren(AtspiCache(items), 3));
}

void AtspiBulkTest::anObjectThatDidNotCountItsChildrenIsIncomplete()
{
    const AtspiCache cache({item(1, 0, 0, -1)});
    QVERIFY(cache.find(object(1)));
    QVERIFY(!hasAllChildren(cache, 1));
}

void AtspiBulkTest::whatWasLeftOutIsNotFound()
{
    const AtspiCache cache(wholeTree());
    QVERIFY(!cache.find(object(4711)));
    // The same path on another connection is another object.
    QVERIFY(!cache.find({u":1.8"_s, object(1).path}));
}

void AtspiBulkTest::anErrorIsAnEmptyAnswer()
{
    const QDBusMessage call = QDBusMessage::createMethodCall(u":1.7"_s, u"/"_s, u"a.b"_s, u"GetItems"_s);
    const QDBusMessage error = call.createErrorReply(QDBusError::UnknownMethod, u"No."_s);
    QCOMPARE(AtspiCache::fromReply(error).items().size(), 0);
}

QTEST_GUILESS_MAIN(AtspiBulkTest)
#include "BulkTest.moc"

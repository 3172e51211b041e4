// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QDBusMessage>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Answers = QList<QList<AtspiReference>>;

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

// A tree two levels deep with ten children each: object n has the children 10 n + 1 … 10 n + 10.
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

QList<AtspiReference> objects(const QList<int> &numbers)
{
    QList<AtspiReference> result;
    for (const int number : numbers)
        result.append(object(number));
    return result;
}

Answers answers(const QList<int> &below)
{
    Answers result(AtspiOutline::questionCount);
    result.first() = objects(below);
    return result;
}

} // namespace

class AtspiBulkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTreeDoesNotDependOnTheOrderOfTheItems();
    void aMissingChildMakesItsParentIncomplete();
    void duplicateIndicesMakeTheParentIncomplete();
    void anUnknownChildCountMeansIncomplete();
    void missingObjectsAreNotFound();
    void anErrorYieldsAnEmptyCache();

    void theOrderDeterminesTheLeaves();
    void twoPagesAreKeptApart();
    void laterChangesMakeNoLeaves();
    void theEndOfATruncatedAnswerIsUnknown();
    void theMatchingQueriesDetermineTheRole();
    void aRoleWithAMissedQueryIsUnknown();
    void otherObjectsAreUnknown();
    void theNumberOfSubtreesIsLimited();
};

void AtspiBulkTest::theTreeDoesNotDependOnTheOrderOfTheItems()
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

void AtspiBulkTest::duplicateIndicesMakeTheParentIncomplete()
{
    QList<AtspiCacheItem> items = wholeTree();
    for (AtspiCacheItem &candidate : items) {
        if (candidate.object == object(35))
            candidate.indexInParent = 5;
    }
    QVERIFY(!hasAllChildren(AtspiCache(items), 3));
}

void AtspiBulkTest::anUnknownChildCountMeansIncomplete()
{
    const AtspiCache cache({item(1, 0, 0, -1)});
    QVERIFY(cache.find(object(1)));
    QVERIFY(!hasAllChildren(cache, 1));
}

void AtspiBulkTest::missingObjectsAreNotFound()
{
    const AtspiCache cache(wholeTree());
    QVERIFY(!cache.find(object(4711)));
    // The same path on another connection is another object.
    QVERIFY(!cache.find({u":1.8"_s, object(1).path}));
}

void AtspiBulkTest::anErrorYieldsAnEmptyCache()
{
    const QDBusMessage call = QDBusMessage::createMethodCall(u":1.7"_s, u"/"_s, u"a.b"_s, u"GetItems"_s);
    const QDBusMessage error = call.createErrorReply(QDBusError::UnknownMethod, u"No."_s);
    QCOMPARE(AtspiCache::fromReply(error).items().size(), 0);
}

void AtspiBulkTest::theOrderDeterminesTheLeaves()
{
    // 0 has the children 1, 4 and 5; 1 has 2 and 3; 5 has 6.
    AtspiOutline outline;
    outline.add(object(0), answers({1, 2, 3, 4, 5, 6}));
    QVERIFY(!outline.isLeaf(object(4)));
    outline.setChildren(object(0), objects({1, 4, 5}));
    QVERIFY(!outline.isLeaf(object(0)));
    QVERIFY(!outline.isLeaf(object(1)));
    QVERIFY(outline.isLeaf(object(4)));
    QVERIFY(!outline.isLeaf(object(5)));
    outline.setChildren(object(1), objects({2, 3}));
    QVERIFY(outline.isLeaf(object(2)));
    QVERIFY(outline.isLeaf(object(3)));
    outline.setChildren(object(5), objects({6}));
    QVERIFY(outline.isLeaf(object(6)));
}

void AtspiBulkTest::twoPagesAreKeptApart()
{
    AtspiOutline outline;
    outline.add(object(0), answers({1, 2}));
    outline.add(object(10), answers({11}));
    outline.setChildren(object(0), objects({1, 2}));
    outline.setChildren(object(10), objects({11}));
    for (const int leaf : {1, 2, 11})
        QVERIFY(outline.isLeaf(object(leaf)));
}

void AtspiBulkTest::laterChangesMakeNoLeaves()
{
    AtspiOutline outline;
    outline.add(object(0), answers({1, 2, 3}));
    // 2 was removed and 9 added: the end of 1 is unknown then, but 3 is still the last.
    outline.setChildren(object(0), objects({1, 9, 3}));
    QVERIFY(!outline.isLeaf(object(1)));
    QVERIFY(!outline.isLeaf(object(9)));
    QVERIFY(outline.isLeaf(object(3)));
}

void AtspiBulkTest::theEndOfATruncatedAnswerIsUnknown()
{
    QList<int> below(AtspiOutline::longestAnswer);
    std::iota(below.begin(), below.end(), 1);
    AtspiOutline outline;
    outline.add(object(0), answers(below));
    outline.setChildren(object(0), objects(below));
    QVERIFY(outline.isLeaf(object(AtspiOutline::longestAnswer - 1)));
    QVERIFY(!outline.isLeaf(object(AtspiOutline::longestAnswer)));
}

void AtspiBulkTest::theMatchingQueriesDetermineTheRole()
{
    QSet<AtspiRole> roles;
    for (int question = 0; question < AtspiOutline::questionCount; ++question) {
        for (const AtspiRole role : AtspiOutline::rolesOfQuestion(question))
            roles.insert(role);
    }
    QVERIFY(roles.contains(AtspiRole::Link));
    QVERIFY(roles.contains(AtspiRole::Static));
    for (const AtspiRole role : std::as_const(roles)) {
        Answers found = answers({1, 2});
        for (int question = 1; question < AtspiOutline::questionCount; ++question) {
            if (AtspiOutline::rolesOfQuestion(question).contains(role))
                found[question] = objects({2});
        }
        AtspiOutline outline;
        outline.add(object(0), found);
        QCOMPARE(outline.role(object(2)), role);
        QCOMPARE(outline.role(object(1)), AtspiRole::Invalid);
    }
}

// An element that appears or changes between the queries.
void AtspiBulkTest::aRoleWithAMissedQueryIsUnknown()
{
    for (int changed = 1; changed < AtspiOutline::questionCount; ++changed) {
        Answers found = answers({1});
        for (int question = 1; question < AtspiOutline::questionCount; ++question) {
            const bool isAsked = AtspiOutline::rolesOfQuestion(question).contains(AtspiRole::Link);
            if (isAsked != (question == changed))
                found[question] = objects({1});
        }
        AtspiOutline outline;
        outline.add(object(0), found);
        QCOMPARE(outline.role(object(1)), AtspiRole::Invalid);
    }
}

void AtspiBulkTest::otherObjectsAreUnknown()
{
    AtspiOutline outline;
    outline.add(object(0), answers({1}));
    outline.setChildren(object(5), objects({1}));
    QVERIFY(outline.knows(object(1)));
    QVERIFY(!outline.knows(object(5)));
    QVERIFY(!outline.isLeaf(object(5)));
    QVERIFY(!outline.isLeaf(object(1)));
    QCOMPARE(outline.role(object(5)), AtspiRole::Invalid);
}

void AtspiBulkTest::theNumberOfSubtreesIsLimited()
{
    AtspiOutline outline(1);
    QVERIFY(outline.mayAsk());
    outline.add(object(0), answers({}));
    QVERIFY(!outline.mayAsk());
    QVERIFY(!outline.knows(object(0)));
}

QTEST_GUILESS_MAIN(AtspiBulkTest)
#include "BulkTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/AccessibilityWalk.h"
#include "Desktop/Recording/RecordingAccessibility.h"
#include "Support/Awaited.h"

#include <QQueue>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

class AccessibilityWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void visitsTheSameElementsAsOneAtATime_data();
    void visitsTheSameElementsAsOneAtATime();
    void aTreeIsReadALevelAtATime();
    void theElementLimitIsExact();
    void theDepthLimitIsExact();
    void aCycleEndsAtTheLimits();
    void aHugeLevelIsReadAsFarAsTheBudgetGoes();
    void aVisitorStopsTheWalk();

private:
    // The elements visited, in order, until the walk stops.
    static QList<int> visited(const RecordedTree &recorded, WalkLimits limits, qsizetype stopAfter)
    {
        RecordingJournal journal;
        RecordingAccessibility accessibility(journal);
        accessibility.trees.insert(1, recorded);
        const auto tree = Awaited::result(accessibility.applicationTree({1}));
        QList<int> order;
        const WalkVisitor visitor = [&order, stopAfter](AccessibilityElement element,
                                                        const AccessibilityAttributes &) {
            order.append(element);
            return order.size() == stopAfter ? WalkStep::Stop : WalkStep::Continue;
        };
        Awaited::result(walkBreadthFirst(tree, limits, visitor));
        return order;
    }

    // The reference: a queue, one element at a time.
    static QList<int> visitedOneAtATime(const RecordedTree &tree, WalkLimits limits, qsizetype stopAfter)
    {
        QList<int> order;
        QQueue<std::pair<int, int>> queue;
        queue.enqueue({0, 0});
        while (!queue.isEmpty() && order.size() < limits.elements) {
            const auto [element, depth] = queue.dequeue();
            order.append(element);
            if (order.size() == stopAfter)
                break;
            if (depth <= limits.depth) {
                for (const int child : tree.elements.at(element).children)
                    queue.enqueue({child, depth + 1});
            }
        }
        return order;
    }

    // Random shapes: broad, deep, empty, and with edges back or repeatedly to the same element.
    static RecordedTree randomTree(quint32 seed)
    {
        QRandomGenerator random(seed);
        RecordedTree tree;
        const int size = random.bounded(1, 120);
        const int spread = random.bounded(1, 12);
        for (int i = 1; i < size; ++i)
            tree.add(std::max(0, i - 1 - random.bounded(spread)), {u"AXGroup"_s, std::nullopt});
        for (int i = random.bounded(4); i > 0; --i)
            tree.elements[random.bounded(size)].children.append(random.bounded(size));
        return tree;
    }
};

void AccessibilityWalkTest::visitsTheSameElementsAsOneAtATime_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 400; ++seed)
        QTest::addRow("tree %u", seed) << seed;
}

void AccessibilityWalkTest::visitsTheSameElementsAsOneAtATime()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed + 1'000'000);
    const RecordedTree tree = randomTree(seed);
    const WalkLimits limits{random.bounded(1, 300), random.bounded(0, 30)};
    const qsizetype stopAfter = random.bounded(1, 600);
    QCOMPARE(visited(tree, limits, stopAfter), visitedOneAtATime(tree, limits, stopAfter));
}

void AccessibilityWalkTest::aTreeIsReadALevelAtATime()
{
    RecordingJournal journal;
    RecordingAccessibility accessibility(journal);
    RecordedTree recorded;
    for (int i = 0; i < 10; ++i) {
        const int group = recorded.add(0, {u"AXGroup"_s, std::nullopt});
        for (int j = 0; j < 10; ++j)
            recorded.add(group, {u"AXButton"_s, u"x"_s});
    }
    accessibility.trees.insert(1, recorded);
    const auto tree = Awaited::result(accessibility.applicationTree({1}));
    const WalkVisitor visitor = [](AccessibilityElement, const AccessibilityAttributes &) {
        return WalkStep::Continue;
    };
    Awaited::result(walkBreadthFirst(tree, {1000, 10}, visitor));
    QCOMPARE(accessibility.requests, 3);
    QCOMPARE(accessibility.elementsRead, 111);
}

void AccessibilityWalkTest::theElementLimitIsExact()
{
    RecordedTree tree;
    for (int i = 0; i < 5; ++i)
        tree.add(0, {u"AXButton"_s, u"x"_s});
    QCOMPARE(visited(tree, {3, 10}, -1), (QList<int>{0, 1, 2}));
    QCOMPARE(visited(tree, {6, 10}, -1), (QList<int>{0, 1, 2, 3, 4, 5}));
    QCOMPARE(visited(tree, {1, 10}, -1), (QList<int>{0}));
}

void AccessibilityWalkTest::theDepthLimitIsExact()
{
    RecordedTree tree;
    int last = 0;
    for (int i = 0; i < 5; ++i)
        last = tree.add(last, {u"AXGroup"_s, std::nullopt});
    // Children are visited for depths 0 to 2, so depth 3 is the last.
    QCOMPARE(visited(tree, {100, 2}, -1), (QList<int>{0, 1, 2, 3}));
}

void AccessibilityWalkTest::aCycleEndsAtTheLimits()
{
    RecordedTree tree;
    const int child = tree.add(0, {u"AXGroup"_s, std::nullopt});
    tree.elements[child].children = {0, 0, child};
    QCOMPARE(visited(tree, {1000, 3}, -1), visitedOneAtATime(tree, {1000, 3}, -1));
    QCOMPARE(visited(tree, {1000, 1'000'000}, -1).size(), 1000);
}

void AccessibilityWalkTest::aHugeLevelIsReadAsFarAsTheBudgetGoes()
{
    RecordingJournal journal;
    RecordingAccessibility accessibility(journal);
    RecordedTree recorded;
    for (int i = 0; i < 100'000; ++i)
        recorded.add(0, {u"AXButton"_s, u"x"_s});
    accessibility.trees.insert(1, recorded);
    const auto tree = Awaited::result(accessibility.applicationTree({1}));
    const WalkVisitor visitor = [](AccessibilityElement, const AccessibilityAttributes &) {
        return WalkStep::Continue;
    };
    Awaited::result(walkBreadthFirst(tree, {1500, 9}, visitor));
    QCOMPARE(accessibility.elementsRead, 1500);
}

void AccessibilityWalkTest::aVisitorStopsTheWalk()
{
    RecordedTree tree;
    const int group = tree.add(0, {u"AXGroup"_s, std::nullopt});
    tree.add(group, {u"AXButton"_s, u"x"_s});
    QCOMPARE(visited(tree, {100, 10}, 2), (QList<int>{0, group}));
}

QTEST_GUILESS_MAIN(AccessibilityWalkTest)
#include "AccessibilityWalkTest.moc"

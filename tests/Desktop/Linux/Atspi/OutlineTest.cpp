// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Outline.h"

#include <QSet>
#include <QTest>

#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Answers = QList<QList<AtspiReference>>;

AtspiReference object(int number)
{
    return {u":1.7"_s, u"/org/a11y/atspi/accessible/%1"_s.arg(number)};
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

class AtspiOutlineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOrderTellsWhichChildrenAreLeaves();
    void twoPagesAreKeptApart();
    void whatCameLaterMakesNoLeaves();
    void theEndOfACutAnswerIsNotKnown();
    void aRoleIsToldByTheQuestionsThatFindIt();
    void aRoleThatOneQuestionMissedIsNotKnown();
    void nothingIsKnownOfOthers();
    void onlySoManyMayBeAsked();
};

void AtspiOutlineTest::theOrderTellsWhichChildrenAreLeaves()
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

void AtspiOutlineTest::twoPagesAreKeptApart()
{
    AtspiOutline outline;
    outline.add(object(0), answers({1, 2}));
    outline.add(object(10), answers({11}));
    outline.setChildren(object(0), objects({1, 2}));
    outline.setChildren(object(10), objects({11}));
    for (const int leaf : {1, 2, 11})
        QVERIFY(outline.isLeaf(object(leaf)));
}

void AtspiOutlineTest::whatCameLaterMakesNoLeaves()
{
    AtspiOutline outline;
    outline.add(object(0), answers({1, 2, 3}));
    // 2 has gone, 9 has come: where 1 ends cannot be said then, but 3 is still the last.
    outline.setChildren(object(0), objects({1, 9, 3}));
    QVERIFY(!outline.isLeaf(object(1)));
    QVERIFY(!outline.isLeaf(object(9)));
    QVERIFY(outline.isLeaf(object(3)));
}

void AtspiOutlineTest::theEndOfACutAnswerIsNotKnown()
{
    QList<int> below(AtspiOutline::longestAnswer);
    std::iota(below.begin(), below.end(), 1);
    AtspiOutline outline;
    outline.add(object(0), answers(below));
    outline.setChildren(object(0), objects(below));
    QVERIFY(outline.isLeaf(object(AtspiOutline::longestAnswer - 1)));
    QVERIFY(!outline.isLeaf(object(AtspiOutline::longestAnswer)));
}

void AtspiOutlineTest::aRoleIsToldByTheQuestionsThatFindIt()
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

// An element that appears or changes while the questions are answered.
void AtspiOutlineTest::aRoleThatOneQuestionMissedIsNotKnown()
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

void AtspiOutlineTest::nothingIsKnownOfOthers()
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

void AtspiOutlineTest::onlySoManyMayBeAsked()
{
    AtspiOutline outline(1);
    QVERIFY(outline.mayAsk());
    outline.add(object(0), answers({}));
    QVERIFY(!outline.mayAsk());
    QVERIFY(!outline.knows(object(0)));
}

QTEST_GUILESS_MAIN(AtspiOutlineTest)
#include "OutlineTest.moc"

// SPDX-License-Identifier: Apache-2.0
#include "Inference/ContextFitting.h"
#include "Inference/InferenceError.h"

#include <QTest>

#include <limits>
#include <numeric>

// The selection of prompt tokens.
class ContextFittingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPromptThatFitsStaysWhole_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("maxTokens");
        QTest::newRow("short") << 100 << 200;
        QTest::newRow("exactly full") << 3896 << 200;
        QTest::newRow("no room for a reply wanted") << 4096 << 0;
        QTest::newRow("small budget, smaller prompt") << 56 << 4040;
    }

    void aPromptThatFitsStaysWhole()
    {
        QFETCH(int, count);
        QFETCH(int, maxTokens);
        const std::vector<qint32> tokens = numbered(count);
        QCOMPARE(ContextFitting::fitted(tokens, maxTokens), tokens);
    }

    void aLongPromptKeepsItsHeadAndTail_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("maxTokens");
        QTest::addColumn<int>("head");
        QTest::addColumn<int>("tail");
        QTest::newRow("head at its most") << 5000 << 400 << 900 << 2796;
        QTest::newRow("one token too many") << 3897 << 200 << 900 << 2996;
        QTest::newRow("no reply wanted") << 5000 << 0 << 900 << 3196;
        QTest::newRow("head of half the budget") << 5000 << 3000 << 548 << 548;
        QTest::newRow("odd budget") << 5000 << 3001 << 547 << 548;
        QTest::newRow("smallest budget") << 5000 << 4031 << 32 << 33;
    }

    void aLongPromptKeepsItsHeadAndTail()
    {
        QFETCH(int, count);
        QFETCH(int, maxTokens);
        QFETCH(int, head);
        QFETCH(int, tail);
        std::vector<qint32> expected = numbered(head);
        for (int i = count - tail; i < count; ++i)
            expected.push_back(i);
        QCOMPARE(ContextFitting::fitted(numbered(count), maxTokens), expected);
    }

    void aBudgetBelow65CannotBeTokenized_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("maxTokens");
        QTest::newRow("budget 56") << 5000 << 4040;
        QTest::newRow("budget 64") << 65 << 4032;
        QTest::newRow("prompt of one token more than the budget") << 57 << 4040;
        QTest::newRow("more than the context wanted") << 1 << 5000;
        QTest::newRow("most that can be wanted") << 1 << std::numeric_limits<int>::max();
    }

    void aBudgetBelow65CannotBeTokenized()
    {
        QFETCH(int, count);
        QFETCH(int, maxTokens);
        try {
            ContextFitting::fitted(numbered(count), maxTokens);
            QFAIL("It was fitted");
        } catch (const InferenceError &error) {
            QCOMPARE(error.code(), InferenceError::Code::TokenizeFailed);
        }
    }

private:
    static std::vector<qint32> numbered(int count)
    {
        std::vector<qint32> tokens(static_cast<size_t>(count));
        std::iota(tokens.begin(), tokens.end(), 0);
        return tokens;
    }
};

QTEST_GUILESS_MAIN(ContextFittingTest)
#include "ContextFittingTest.moc"

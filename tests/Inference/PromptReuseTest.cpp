// SPDX-License-Identifier: Apache-2.0
#include "Inference/PromptReuse.h"

#include "Inference/ContextFitting.h"

#include <QTest>

#include <numeric>

using Tokens = std::vector<qint32>;

class PromptReuseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeChunksOfTheCommonBeginningAreReusable_data();
    void wholeChunksOfTheCommonBeginningAreReusable();
    void onlyWholeChunksAreKept_data();
    void onlyWholeChunksAreKept();
    void nothingIsReusableAtFirstAndAfterForgetting();
    void theNextPromptTakesThePlaceOfTheLast();
    void chunksEndAtMultiplesOfTheirLength_data();
    void chunksEndAtMultiplesOfTheirLength();
    void theHeadOfAPromptThatDoesNotFitIsReusable();
};

namespace {

constexpr size_t chunk = 4;

Tokens counting(qint32 from, qint32 count)
{
    Tokens tokens(static_cast<size_t>(count));
    std::iota(tokens.begin(), tokens.end(), from);
    return tokens;
}

} // namespace

void PromptReuseTest::wholeChunksOfTheCommonBeginningAreReusable_data()
{
    QTest::addColumn<Tokens>("evaluated");
    QTest::addColumn<Tokens>("prompt");
    QTest::addColumn<size_t>("reusable");
    const auto row = [](const char *name, const Tokens &evaluated, const Tokens &prompt, size_t reusable) {
        QTest::newRow(name) << evaluated << prompt << reusable;
    };
    row("equal, ending inside a chunk", counting(0, 10), counting(0, 10), 8);
    row("equal, ending with a chunk: its last token is evaluated again", counting(0, 8), counting(0, 8), 4);
    row("prefix", counting(0, 8), counting(0, 20), 8);
    row("prefix that ends inside a chunk", counting(0, 11), counting(0, 20), 8);
    row("diverging inside a chunk", counting(0, 12), {0, 1, 2, 3, 4, 5, 99, 7, 8, 9, 10, 11, 12}, 4);
    row("diverging at the start of a chunk", counting(0, 12), {0, 1, 2, 3, 99, 5, 6, 7, 8}, 4);
    row("diverging in the first chunk", counting(0, 12), {0, 99, 2, 3, 4, 5}, 0);
    row("shorter", counting(0, 12), counting(0, 7), 4);
    row("shorter, and ending with a chunk", counting(0, 12), counting(0, 8), 4);
    row("shorter than a chunk", counting(0, 12), counting(0, 3), 0);
    row("no prompt", counting(0, 12), {}, 0);
    row("nothing evaluated", {}, counting(0, 12), 0);
    row("less than a chunk evaluated", counting(0, 3), counting(0, 12), 0);
}

void PromptReuseTest::wholeChunksOfTheCommonBeginningAreReusable()
{
    QFETCH(Tokens, evaluated);
    QFETCH(Tokens, prompt);
    PromptReuse reuse(chunk);
    reuse.keep(evaluated);
    QTEST(reuse.reusable(prompt), "reusable");
}

void PromptReuseTest::onlyWholeChunksAreKept_data()
{
    QTest::addColumn<qint32>("evaluated");
    QTest::addColumn<size_t>("kept");
    QTest::newRow("none") << 0 << size_t(0);
    QTest::newRow("less than one") << 3 << size_t(0);
    QTest::newRow("one") << 4 << size_t(4);
    QTest::newRow("two and a bit") << 9 << size_t(8);
}

void PromptReuseTest::onlyWholeChunksAreKept()
{
    QFETCH(qint32, evaluated);
    PromptReuse reuse(chunk);
    reuse.keep(counting(0, evaluated));
    QTEST(reuse.keptCount(), "kept");
}

void PromptReuseTest::nothingIsReusableAtFirstAndAfterForgetting()
{
    PromptReuse reuse(chunk);
    QCOMPARE(reuse.reusable(counting(0, 12)), size_t(0));
    reuse.keep(counting(0, 12));
    reuse.forget();
    QCOMPARE(reuse.keptCount(), size_t(0));
    QCOMPARE(reuse.reusable(counting(0, 12)), size_t(0));
}

void PromptReuseTest::theNextPromptTakesThePlaceOfTheLast()
{
    PromptReuse reuse(chunk);
    reuse.keep(counting(0, 12));
    reuse.keep(counting(100, 6));
    QCOMPARE(reuse.reusable(counting(0, 12)), size_t(0));
    QCOMPARE(reuse.reusable(counting(100, 12)), size_t(4));
}

void PromptReuseTest::chunksEndAtMultiplesOfTheirLength_data()
{
    QTest::addColumn<size_t>("start");
    QTest::addColumn<size_t>("end");
    QTest::newRow("first") << size_t(0) << size_t(4);
    QTest::newRow("second") << size_t(4) << size_t(8);
    QTest::newRow("the rest") << size_t(8) << size_t(10);
}

void PromptReuseTest::chunksEndAtMultiplesOfTheirLength()
{
    QFETCH(size_t, start);
    QTEST(PromptReuse(chunk).chunkEnd(start, 10), "end");
}

// Step by step the middle that is left out grows; the head of 900 tokens stays.
void PromptReuseTest::theHeadOfAPromptThatDoesNotFitIsReusable()
{
    PromptReuse reuse(64);
    reuse.keep(ContextFitting::fitted(counting(0, 5000), 400));
    QCOMPARE(reuse.keptCount(), size_t(3648)); // of 3696
    QCOMPARE(reuse.reusable(ContextFitting::fitted(counting(0, 5100), 400)), size_t(896));
}

QTEST_GUILESS_MAIN(PromptReuseTest)
#include "PromptReuseTest.moc"

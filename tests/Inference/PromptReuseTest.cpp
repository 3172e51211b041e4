// SPDX-License-Identifier: Apache-2.0
#include "Inference/PromptReuse.h"

#include "Inference/ContextFitting.h"

#include <QTest>

#include <algorithm>
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
    void chunksEndWithAMessageOrAtTheMaximumLength_data();
    void chunksEndWithAMessageOrAtTheMaximumLength();
    void chunksEndWithTheGenerationPrompt_data();
    void chunksEndWithTheGenerationPrompt();
    void messagesAreReusableInWhole_data();
    void messagesAreReusableInWhole();
    void wholePromptsAreReusableOnceAnswered_data();
    void wholePromptsAreReusableOnceAnswered();
    void chunksDoNotDependOnLaterTokens_data();
    void chunksDoNotDependOnLaterTokens();
    void theHeadOfAPromptThatDoesNotFitIsReusable();
};

namespace {

constexpr size_t chunk = 4;
constexpr qint32 messageEnd = 1000;
constexpr qint32 otherEnd = 2000;

Tokens counting(qint32 from, qint32 count)
{
    Tokens tokens(static_cast<size_t>(count));
    std::iota(tokens.begin(), tokens.end(), from);
    return tokens;
}

PromptReuse reuseOfMessages()
{
    return PromptReuse(chunk, {messageEnd, otherEnd});
}

// Generation prompts are the tokens 60, 61.
PromptReuse reuseOfReplies()
{
    return PromptReuse(6, {messageEnd, otherEnd}, Tokens{5, messageEnd, 60, 61});
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

void PromptReuseTest::chunksEndWithAMessageOrAtTheMaximumLength_data()
{
    QTest::addColumn<Tokens>("prompt");
    QTest::addColumn<size_t>("start");
    QTest::addColumn<size_t>("end");
    const auto row = [](const char *name, const Tokens &prompt, size_t start, size_t end) {
        QTest::newRow(name) << prompt << start << end;
    };
    row("no message ends", counting(0, 10), 0, 4);
    row("the next one", counting(0, 10), 4, 8);
    row("the rest", counting(0, 10), 8, 10);
    row("a message ends first", {0, 1, messageEnd, 3, 4, 5}, 0, 3);
    row("a message of one token", {messageEnd, 1, 2, 3, 4, 5}, 0, 1);
    row("two ends in a row", {0, messageEnd, messageEnd, 3}, 2, 3);
    row("a message as long as a chunk", {0, 1, 2, messageEnd, 4, 5}, 0, 4);
    row("another kind of end", {0, otherEnd, 2, 3, 4, 5}, 0, 2);
    row("chunks are counted from the message's end", {0, messageEnd, 2, 3, 4, 5, 6}, 2, 6);
}

void PromptReuseTest::chunksEndWithAMessageOrAtTheMaximumLength()
{
    QFETCH(Tokens, prompt);
    QFETCH(size_t, start);
    QTEST(reuseOfMessages().chunkEnd(start, prompt), "end");
}

void PromptReuseTest::chunksEndWithTheGenerationPrompt_data()
{
    QTest::addColumn<Tokens>("prompt");
    QTest::addColumn<size_t>("start");
    QTest::addColumn<size_t>("end");
    const auto row = [](const char *name, const Tokens &prompt, size_t start, size_t end) {
        QTest::newRow(name) << prompt << start << end;
    };
    row("the first message", {0, 1, messageEnd, 3, 4, 5}, 0, 3);
    row("behind other messages", {0, messageEnd, 2, messageEnd, 60, 61, 6, 7}, 2, 6);
    row("at once", {messageEnd, 60, 61, 3, 4, 5}, 1, 3);
    row("another reply", {messageEnd, 60, 61, 3, messageEnd, 60, 61, 7}, 3, 7);
    row("a part of the tokens that ask for it", {messageEnd, 60, 2, 61, 4, 5, 6, 7}, 1, 7);
    row("the chunk is full before", {messageEnd, 1, 2, 3, 4, 5, 60, 61, 8}, 1, 7);
    row("and the rest of the tokens is one", {messageEnd, 1, 2, 3, 4, 5, 60, 61, 8}, 7, 8);
    row("the rest", {messageEnd, 60, 61, 3, 4}, 3, 5);
}

void PromptReuseTest::chunksEndWithTheGenerationPrompt()
{
    QFETCH(Tokens, prompt);
    QFETCH(size_t, start);
    QTEST(reuseOfReplies().chunkEnd(start, prompt), "end");
}

void PromptReuseTest::messagesAreReusableInWhole_data()
{
    QTest::addColumn<Tokens>("evaluated");
    QTest::addColumn<Tokens>("prompt");
    QTest::addColumn<size_t>("reusable");
    const Tokens question = {0, 1, messageEnd, 7, 8, messageEnd, 9};
    QTest::newRow("the conversation goes on")
        << question << Tokens{0, 1, messageEnd, 7, 8, messageEnd, 9, 5, 5} << size_t(6);
    QTest::newRow("another question") << question << Tokens{0, 1, messageEnd, 7, 5, 5, 5} << size_t(3);
    QTest::newRow("the message goes on")
        << question << Tokens{0, 1, messageEnd, 7, 8, 5, messageEnd} << size_t(3);
    QTest::newRow("ending with the message: its chunk is evaluated again")
        << question << Tokens{0, 1, messageEnd, 7, 8, messageEnd} << size_t(3);
    QTest::newRow("another beginning")
        << question << Tokens{5, 1, messageEnd, 7, 8, messageEnd, 9} << size_t(0);
}

void PromptReuseTest::messagesAreReusableInWhole()
{
    QFETCH(Tokens, evaluated);
    QFETCH(Tokens, prompt);
    PromptReuse reuse = reuseOfMessages();
    reuse.keep(evaluated);
    QTEST(reuse.reusable(prompt), "reusable");
}

void PromptReuseTest::wholePromptsAreReusableOnceAnswered_data()
{
    QTest::addColumn<Tokens>("evaluated");
    QTest::addColumn<Tokens>("prompt");
    QTest::addColumn<size_t>("reusable");
    const Tokens question = {0, messageEnd, 2, messageEnd, 60, 61};
    QTest::newRow("the conversation goes on")
        << question << Tokens{0, messageEnd, 2, messageEnd, 60, 61, 7, messageEnd, 9, messageEnd, 60, 61}
        << size_t(6);
    QTest::newRow("another question")
        << question << Tokens{0, messageEnd, 3, messageEnd, 60, 61} << size_t(2);
    QTest::newRow("the same question: its chunk is evaluated again") << question << question << size_t(2);
    QTest::newRow("what is evaluated ahead") << Tokens{0, messageEnd, 60, 61} << question << size_t(2);
}

void PromptReuseTest::wholePromptsAreReusableOnceAnswered()
{
    QFETCH(Tokens, evaluated);
    QFETCH(Tokens, prompt);
    PromptReuse reuse = reuseOfReplies();
    reuse.keep(evaluated);
    QTEST(reuse.reusable(prompt), "reusable");
}

void PromptReuseTest::chunksDoNotDependOnLaterTokens_data()
{
    QTest::addColumn<bool>("knowsReplies");
    QTest::addColumn<std::vector<size_t>>("ends");
    QTest::newRow("chunks end with messages") << false << std::vector<size_t>{3, 7, 9, 13, 15, 16};
    QTest::newRow("chunks end where a reply is to begin") << true << std::vector<size_t>{3, 9, 11, 16};
}

// Otherwise a restored chunk would differ from a newly evaluated one.
void PromptReuseTest::chunksDoNotDependOnLaterTokens()
{
    QFETCH(bool, knowsReplies);
    const Tokens prompt = {0, 1, messageEnd, 3, 4, 5, 6, 7, otherEnd, 60, 61, 11, 12, 13, messageEnd, 15};
    const PromptReuse reuse = knowsReplies ? reuseOfReplies() : reuseOfMessages();
    std::vector<size_t> ends;
    for (size_t end = 0; end < prompt.size();)
        ends.push_back(end = reuse.chunkEnd(end, prompt));
    QTEST(ends, "ends");
    for (size_t count = 1; count <= prompt.size(); ++count) {
        const size_t whole = reuse.wholeChunks(std::span(prompt).first(count));
        const auto next = std::ranges::upper_bound(ends, count == prompt.size() ? count - 1 : count);
        QCOMPARE(whole, next == ends.begin() ? size_t(0) : *std::prev(next));
    }
}

// The omitted middle grows with each step; the first 900 tokens stay.
void PromptReuseTest::theHeadOfAPromptThatDoesNotFitIsReusable()
{
    PromptReuse reuse(64);
    reuse.keep(ContextFitting::fitted(counting(0, 5000), 400));
    QCOMPARE(reuse.keptCount(), size_t(3648)); // of 3696
    QCOMPARE(reuse.reusable(ContextFitting::fitted(counting(0, 5100), 400)), size_t(896));
}

QTEST_GUILESS_MAIN(PromptReuseTest)
#include "PromptReuseTest.moc"

// SPDX-License-Identifier: Apache-2.0
// Restoring a prompt's state does not change one bit of the logits: real llama.cpp, with models of the
// catalog's shapes.
#include "Inference/Llama/LlamaPromptCache.h"

#include "Inference/ContextFitting.h"
#include "Inference/Llama/LlamaHandles.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Inference/Llama/LlamaLimits.h"
#include "Inference/Llama/LlamaLog.h"
#include "Inference/Llama/LlamaPrompt.h"
#include "Inference/RecordedConversation.h"
#include "Inference/ShapedModel.h"
#include "Inference/TinyModel.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <llama.h>

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

class LlamaPromptCacheTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyScoreOfEveryStepIsTheSame_data();
    void everyScoreOfEveryStepIsTheSame();
    void theNextStepEvaluatesNewTokensOnly();
    void everyConversationSharesItsFirstMessage();
    void nothingIsRestoredBeforeTheTrial();
    void aPromptThatIsTooShortGivesNoTrial();
    void aTrialTakesFewTokensAndKeepsTheCopy();
    void aContextThatCannotTruncateIsEvaluatedInFull();
    void resetFreesTheCopy();
    void theCopyStaysWithinItsBound();
    void twelveStepsOfEveryModelAreKept_data();
    void twelveStepsOfEveryModelAreKept();

private:
    QString fileOf(const QString &model) const;

    QTemporaryDir m_folder;
};

namespace {

constexpr int maxTokens = 400;
constexpr int replyTokens = 4;

// A loaded model with a context and a prompt cache.
class Machine
{
public:
    explicit Machine(const QString &path, size_t mostBytes = LlamaPromptCache::mostKeptBytes)
        : m_memory(mostBytes)
    {
        LlamaLibrary::initialise();
        m_model.reset(
            llama_model_load_from_file(QFile::encodeName(path).constData(), llama_model_default_params()));
        llama_context_params parameters = llama_context_default_params();
        parameters.n_ctx = ContextFitting::contextSize;
        parameters.n_batch = LlamaLimits::batchSize;
        parameters.no_perf = false;
        m_context.reset(llama_init_from_model(m_model.get(), parameters));
        if (!m_context)
            qFatal("No model to test with");
    }

    LlamaPromptCache &memory() { return m_memory; }

    std::vector<qint32> tokens(const QList<ChatMessage> &messages) const
    {
        const QString prompt = LlamaPrompt::render(messages, m_model.get(), {});
        return ContextFitting::fitted(LlamaPrompt::tokenized(llama_model_get_vocab(m_model.get()), prompt),
                                      maxTokens);
    }

    bool endsMessage(qint32 token) const
    {
        return llama_vocab_is_eog(llama_model_get_vocab(m_model.get()), token);
    }

    void begin(const std::vector<qint32> &prompt) { m_memory.begin(m_context.get(), prompt); }

    void evaluate(const std::vector<qint32> &prompt)
    {
        begin(prompt);
        while (!m_memory.isEvaluated())
            m_memory.evaluateChunk();
    }

    // The logits after the prompt and after each following token.
    QList<QByteArray> scores(const std::vector<qint32> &prompt)
    {
        evaluate(prompt);
        QList<QByteArray> all = {scores()};
        for (qint32 token = 100; token < 100 + replyTokens; ++token) {
            llama_decode(m_context.get(), llama_batch_get_one(&token, 1));
            all.append(scores());
        }
        return all;
    }

    // As the engine does after a reply.
    void keep()
    {
        m_memory.keep();
        if (m_memory.needsTrial())
            m_memory.tryOut();
    }

    // As counted by the library.
    qint64 evaluatedTokens() const { return llama_perf_context(m_context.get()).n_p_eval; }

    QByteArray scores() const
    {
        const auto count = static_cast<size_t>(llama_vocab_n_tokens(llama_model_get_vocab(m_model.get())));
        const std::span<const float> last(llama_get_logits_ith(m_context.get(), -1), count);
        return {reinterpret_cast<const char *>(last.data()), static_cast<qsizetype>(last.size_bytes())};
    }

private:
    LlamaModel m_model;
    LlamaContext m_context;
    LlamaPromptCache m_memory;
};

// With an answer in its middle so long that the last steps do not fit into the context.
QList<ChatMessage> overflowing()
{
    QList<ChatMessage> conversation = RecordedConversation::read(6);
    conversation[7].content += u" | Link: The Bergen Line"_s.repeated(700);
    return conversation;
}

QList<ChatMessage> recorded(int steps)
{
    return steps > 0 ? RecordedConversation::read(steps) : overflowing();
}

} // namespace

void LlamaPromptCacheTest::initTestCase()
{
    LlamaLog::keep(LlamaLog::Kept::Errors);
    ShapedModel qwen = ShapedModel::qwen2_1_5b().cut(2, 2000);
    ShapedModel llama = ShapedModel::llama3_2_3b().cut(2, 2000);
    for (ShapedModel *model : {&qwen, &llama})
        model->setTexts(RecordedConversation::texts(RecordedConversation::read(12)));
    qwen.write(fileOf(u"qwen"_s));
    llama.write(fileOf(u"llama"_s));
}

QString LlamaPromptCacheTest::fileOf(const QString &model) const
{
    return model == u"practice"_s ? QStringLiteral(ORVANE_PRACTICE_MODEL) : m_folder.filePath(model);
}

void LlamaPromptCacheTest::everyScoreOfEveryStepIsTheSame_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("steps"); // 0: a conversation longer than the context
    QTest::newRow("practice model, 3 steps") << u"practice"_s << 3;
    QTest::newRow("practice model, 6 steps") << u"practice"_s << 6;
    QTest::newRow("practice model, 12 steps") << u"practice"_s << 12;
    QTest::newRow("practice model, overflow") << u"practice"_s << 0;
    QTest::newRow("first of the catalog, 3 steps") << u"qwen"_s << 3;
    QTest::newRow("first of the catalog, 12 steps") << u"qwen"_s << 12;
    QTest::newRow("first of the catalog, overflow") << u"qwen"_s << 0;
    QTest::newRow("second of the catalog, 6 steps") << u"llama"_s << 6;
}

void LlamaPromptCacheTest::everyScoreOfEveryStepIsTheSame()
{
    QFETCH(QString, model);
    QFETCH(int, steps);
    Machine reusing(fileOf(model));
    Machine plain(fileOf(model)); // never reuses
    size_t reused = 0;
    const QList<QList<ChatMessage>> prompts = RecordedConversation::prompts(recorded(steps));
    for (const QList<ChatMessage> &messages : prompts) {
        const std::vector<qint32> prompt = reusing.tokens(messages);
        QCOMPARE(reusing.scores(prompt), plain.scores(prompt));
        reused += reusing.memory().reusedCount();
        QCOMPARE(plain.memory().reusedCount(), size_t(0));
        reusing.keep();
    }
    // Without reuse the comparison would prove nothing.
    QVERIFY(reused > 0);
}

void LlamaPromptCacheTest::theNextStepEvaluatesNewTokensOnly()
{
    Machine machine(fileOf(u"qwen"_s));
    const QList<QList<ChatMessage>> prompts = RecordedConversation::prompts(RecordedConversation::read(3));
    const std::vector<qint32> first = machine.tokens(prompts[0]);
    const std::vector<qint32> second = machine.tokens(prompts[1]);
    machine.evaluate(first);
    machine.keep();
    QVERIFY(machine.memory().keptBytes() > 0);
    machine.evaluate(second);
    QVERIFY(std::ranges::mismatch(first, second).in1 == first.end());
    QCOMPARE(machine.memory().reusedCount(), first.size());
}

// The part that the engine evaluates ahead.
void LlamaPromptCacheTest::everyConversationSharesItsFirstMessage()
{
    Machine machine(fileOf(u"llama"_s));
    const QList<ChatMessage> conversation =
        RecordedConversation::prompts(RecordedConversation::read(3)).first();
    const std::vector<qint32> beginning = machine.tokens({conversation.first()});
    const std::vector<qint32> whole = machine.tokens(conversation);
    machine.evaluate(beginning);
    machine.keep();
    machine.evaluate(whole);
    const auto firstEnd =
        std::ranges::find_if(whole, [&machine](qint32 token) { return machine.endsMessage(token); });
    QCOMPARE(machine.memory().reusedCount(), static_cast<size_t>(firstEnd - whole.begin()) + 1);
}

void LlamaPromptCacheTest::nothingIsRestoredBeforeTheTrial()
{
    Machine machine(fileOf(u"qwen"_s));
    const std::vector<qint32> prompt =
        machine.tokens(RecordedConversation::prompts(RecordedConversation::read(3)).first());
    machine.evaluate(prompt);
    machine.memory().keep();
    QVERIFY(machine.memory().needsTrial());
    machine.evaluate(prompt);
    QCOMPARE(machine.memory().reusedCount(), size_t(0));
    machine.memory().tryOut();
    QVERIFY(!machine.memory().needsTrial());
    QVERIFY(machine.memory().canReuse());
    machine.evaluate(prompt);
    QVERIFY(machine.memory().reusedCount() > 0);
}

void LlamaPromptCacheTest::aPromptThatIsTooShortGivesNoTrial()
{
    Machine machine(fileOf(u"qwen"_s));
    std::vector<qint32> prompt(2 * LlamaPromptCache::trialTokens - 1, 100);
    machine.evaluate(prompt);
    QVERIFY(!machine.memory().needsTrial());
    prompt.push_back(100);
    machine.evaluate(prompt);
    QVERIFY(machine.memory().needsTrial());
}

// A task submitted meanwhile waits for the trial.
void LlamaPromptCacheTest::aTrialTakesFewTokensAndKeepsTheCopy()
{
    Machine machine(fileOf(u"llama"_s));
    Machine plain(fileOf(u"llama"_s));
    const std::vector<qint32> prompt =
        machine.tokens(RecordedConversation::prompts(RecordedConversation::read(3)).first());
    plain.evaluate(prompt);
    machine.evaluate(prompt);
    machine.memory().keep();
    const qint64 before = machine.evaluatedTokens();
    machine.memory().tryOut();
    const qint64 tried = machine.evaluatedTokens() - before;
    QVERIFY2(tried > 0 && tried < qint64(LlamaPromptCache::longestChunk / 4),
             qPrintable(QString::number(tried)));
    QVERIFY(!machine.memory().isEvaluated());
    machine.evaluate(prompt);
    QVERIFY(machine.memory().reusedCount() > 2 * LlamaPromptCache::longestChunk);
    QCOMPARE(machine.scores(), plain.scores());
}

void LlamaPromptCacheTest::aContextThatCannotTruncateIsEvaluatedInFull()
{
    TinyModel recurrent;
    recurrent.setArchitecture(TinyModel::Architecture::Recurrent);
    recurrent.write(fileOf(u"recurrent"_s));
    Machine machine(fileOf(u"recurrent"_s));
    const std::vector<qint32> prompt(3 * LlamaPromptCache::longestChunk + 7, TinyModel::byteToken('a'));
    machine.evaluate(prompt);
    const QByteArray scores = machine.scores();
    machine.keep();
    QVERIFY(!machine.memory().canReuse());
    QCOMPARE(machine.memory().keptBytes(), size_t(0));
    machine.evaluate(prompt);
    QCOMPARE(machine.memory().reusedCount(), size_t(0));
    QCOMPARE(machine.scores(), scores);
}

void LlamaPromptCacheTest::resetFreesTheCopy()
{
    Machine machine(fileOf(u"qwen"_s));
    const std::vector<qint32> prompt =
        machine.tokens(RecordedConversation::prompts(RecordedConversation::read(3)).first());
    machine.evaluate(prompt);
    machine.keep();
    QVERIFY(machine.memory().keptBytes() > 0);
    machine.memory().reset();
    QCOMPARE(machine.memory().keptBytes(), size_t(0));
    machine.evaluate(prompt);
    QCOMPARE(machine.memory().reusedCount(), size_t(0));
}

void LlamaPromptCacheTest::theCopyStaysWithinItsBound()
{
    TinyModel tiny;
    tiny.write(fileOf(u"tiny"_s));
    constexpr size_t chunk = LlamaPromptCache::longestChunk;
    const std::vector<qint32> prompt(8 * chunk, TinyModel::byteToken('a'));
    Machine unbounded(fileOf(u"tiny"_s));
    const QList<QByteArray> scores = unbounded.scores(prompt);
    unbounded.evaluate(prompt);
    unbounded.memory().keep();
    const size_t whole = unbounded.memory().keptBytes();

    // The beginning of the prompt that fits remains reusable.
    const size_t half = whole / 2;
    Machine bounded(fileOf(u"tiny"_s), half);
    bounded.evaluate(prompt);
    bounded.keep();
    QVERIFY(bounded.memory().keptBytes() <= half);
    QVERIFY(bounded.memory().keptBytes() > half / 2);
    QCOMPARE(bounded.scores(prompt), scores);
    QVERIFY(bounded.memory().reusedCount() == 3 * chunk || bounded.memory().reusedCount() == 4 * chunk);

    // Less than one chunk cannot be reused.
    Machine tight(fileOf(u"tiny"_s), whole / 10);
    tight.evaluate(prompt);
    tight.keep();
    QCOMPARE(tight.memory().keptBytes(), size_t(0));
    QCOMPARE(tight.scores(prompt), scores);
    QCOMPARE(tight.memory().reusedCount(), size_t(0));
}

void LlamaPromptCacheTest::twelveStepsOfEveryModelAreKept_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("first of the catalog") << u"qwen"_s;
    QTest::newRow("second of the catalog") << u"llama"_s;
}

void LlamaPromptCacheTest::twelveStepsOfEveryModelAreKept()
{
    constexpr size_t layers = 28;    // both models
    constexpr size_t layersHere = 2; // the other layers are alike
    QFETCH(QString, model);
    Machine machine(fileOf(model), LlamaPromptCache::mostKeptBytes / (layers / layersHere));
    const std::vector<qint32> last =
        machine.tokens(RecordedConversation::prompts(RecordedConversation::read(12)).last());
    machine.evaluate(last);
    machine.keep();
    machine.evaluate(last);
    QVERIFY(last.size() - machine.memory().reusedCount() <= LlamaPromptCache::longestChunk);
}

QTEST_GUILESS_MAIN(LlamaPromptCacheTest)
#include "LlamaPromptCacheTest.moc"

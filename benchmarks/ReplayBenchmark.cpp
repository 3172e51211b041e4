// SPDX-License-Identifier: Apache-2.0
// The latency of each step of a task: recorded conversations, replayed through the engine and through a bare
// loop over llama.cpp, with models of the catalog's shapes.
//
// Writes the model files to --folder once, and prints a table for each model and conversation.
#include "Inference/ContextFitting.h"
#include "Inference/Llama/LlamaEngine.h"
#include "Inference/Llama/LlamaHandles.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Inference/Llama/LlamaLimits.h"
#include "Inference/Llama/LlamaLog.h"
#include "Inference/Llama/LlamaPrompt.h"
#include "Inference/RecordedConversation.h"
#include "Inference/ShapedModel.h"
#include "ReplyClock.h"
#include "Support/Awaited.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>
#include <QThread>

#include <llama.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int repetitions = 5;         // of the last step
constexpr int replyTokens = 32;        // enough to measure the time per token
constexpr int preparationTime = 60000; // ms, more than the system prompt takes with the larger model
constexpr int settlingTime = 300;      // ms for the engine to copy its state, as while an action is executed

// Options of the bare loop; the library's defaults unless set.
struct Levers
{
    const char *name = "the library's choices, 512 tokens a call";
    int chunk = LlamaLimits::batchSize;
    int threads = 0;
    bool flashAttention = true; // automatic
    bool memoryMapping = true;
    bool repacking = true;
};

std::vector<Levers> allLevers()
{
    const int processors = QThread::idealThreadCount();
    return {{},
            {.name = "256 tokens a call", .chunk = 256},
            {.name = "128 tokens a call", .chunk = 128},
            {.name = "64 tokens a call", .chunk = 64},
            {.name = "32 tokens a call", .chunk = 32},
            {.name = "a thread for each processor", .threads = processors},
            {.name = "the same, 64 tokens a call", .chunk = 64, .threads = processors},
            {.name = "without flash attention", .flashAttention = false},
            {.name = "without memory mapping", .memoryMapping = false},
            {.name = "without repacking", .repacking = false}};
}

double seconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

struct SamplerDeleter
{
    void operator()(llama_sampler *sampler) const { llama_sampler_free(sampler); }
};

class BareLoop
{
public:
    BareLoop(const QString &path, const Levers &levers) : m_levers(levers)
    {
        llama_model_params modelParameters = llama_model_default_params();
        modelParameters.n_gpu_layers = LlamaLimits::gpuLayers;
        if (!levers.memoryMapping)
            modelParameters.load_mode = LLAMA_LOAD_MODE_NONE;
        modelParameters.use_extra_bufts = levers.repacking;
        QElapsedTimer timer;
        timer.start();
        m_model.reset(llama_model_load_from_file(QFile::encodeName(path).constData(), modelParameters));
        m_loadSeconds = seconds(timer);
        llama_context_params contextParameters = llama_context_default_params();
        contextParameters.n_ctx = LlamaEngine::contextSize;
        contextParameters.n_batch = LlamaLimits::batchSize;
        if (!levers.flashAttention)
            contextParameters.flash_attn_type = LLAMA_FLASH_ATTN_TYPE_DISABLED;
        m_context.reset(llama_init_from_model(m_model.get(), contextParameters));
        if (!m_context)
            qFatal("The model cannot be used");
        if (levers.threads > 0)
            llama_set_n_threads(m_context.get(), levers.threads, levers.threads);
        m_sampler.reset(llama_sampler_chain_init(llama_sampler_chain_default_params()));
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_top_k(40));
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_temp(0.2F));
        llama_sampler_chain_add(m_sampler.get(), llama_sampler_init_dist(1));
    }

    double loadSeconds() const { return m_loadSeconds; }
    llama_context *context() const { return m_context.get(); }

    std::vector<llama_token> tokens(const QList<ChatMessage> &messages) const
    {
        const QString prompt = LlamaPrompt::render(messages, m_model.get(), {});
        return ContextFitting::fitted(LlamaPrompt::tokenized(llama_model_get_vocab(m_model.get()), prompt),
                                      replyTokens);
    }

    // Evaluates the whole prompt.
    ReplyClock reply(const QList<ChatMessage> &messages, int wanted)
    {
        std::vector<llama_token> prompt = tokens(messages);
        const auto chunk = static_cast<size_t>(m_levers.chunk);
        ReplyClock clock;
        llama_memory_clear(llama_get_memory(m_context.get()), true);
        for (size_t start = 0; start < prompt.size(); start += chunk)
            decode(&prompt[start], std::min(prompt.size() - start, chunk));
        llama_token token = sample();
        for (clock.token(); clock.tokens() < wanted; clock.token()) {
            decode(&token, 1);
            token = sample();
        }
        return clock;
    }

private:
    void decode(llama_token *tokens, size_t count)
    {
        if (llama_decode(m_context.get(), llama_batch_get_one(tokens, static_cast<qint32>(count))) != 0)
            qFatal("The model failed");
    }

    llama_token sample() { return llama_sampler_sample(m_sampler.get(), m_context.get(), -1); }

    Levers m_levers;
    double m_loadSeconds = 0;
    LlamaModel m_model;
    LlamaContext m_context;
    std::unique_ptr<llama_sampler, SamplerDeleter> m_sampler;
};

// As in the program: the engine knows the common beginning and has had time to evaluate it ahead.
class PreparedEngine
{
public:
    PreparedEngine(const QString &path, const QList<ChatMessage> &conversation)
        : m_engine({conversation.first()})
    {
        Awaited::result(m_engine.load(path));
        QTest::qWait(preparationTime); // any request would end the evaluation ahead
    }
    ~PreparedEngine() { m_engine.unload(); }

    // Waits like the agent between two steps, so that the engine can copy its state.
    ReplyClock reply(const QList<ChatMessage> &messages, int wanted)
    {
        ReplyClock clock;
        Awaited::result(m_engine.generate(messages, wanted, [&clock](const QString &) { clock.token(); }));
        if (clock.tokens() == 0)
            qFatal("The engine said nothing");
        QTest::qWait(settlingTime);
        return clock;
    }

private:
    LlamaEngine m_engine;
};

double median(std::vector<double> values)
{
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

// Alternates, because a shared machine's speed varies. The previous step's prompt restores the engine's copy
// to its earlier state.
void repeatLastStep(PreparedEngine &engine, BareLoop &bare, const QList<QList<ChatMessage>> &prompts)
{
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < repetitions; ++round) {
        engine.reply(prompts.at(prompts.size() - 2), 1);
        ours.push_back(engine.reply(prompts.last(), 1).secondsToFirstToken());
        theirs.push_back(bare.reply(prompts.last(), 1).secondsToFirstToken());
    }
    std::printf("the last step again, medians of %d: engine %.3f s, bare %.3f s, bare/engine %.1f\n",
                repetitions, median(ours), median(theirs), median(theirs) / median(ours));
    std::fflush(stdout);
}

void replay(const QString &path, int steps)
{
    const QList<ChatMessage> conversation = RecordedConversation::read(steps);
    BareLoop bare(path, {});
    std::printf("\n%s, %d steps; prompts in chunks of at most %zu tokens\n",
                qPrintable(QFileInfo(path).fileName()), steps, LlamaPromptCache::longestChunk);
    std::printf("step  prompt  evaluated |  first token, s: engine    bare  bare/engine | tokens/s: engine  "
                "bare\n");
    PreparedEngine engine(path, conversation);
    const std::vector<llama_token> beginning = bare.tokens({conversation.first()});
    PromptReuse reuse = LlamaPromptCache::reuseFor(bare.context(), beginning);
    reuse.keep(beginning);
    const QList<QList<ChatMessage>> prompts = RecordedConversation::prompts(conversation);
    int step = 0;
    for (const QList<ChatMessage> &messages : prompts) {
        const std::vector<llama_token> prompt = bare.tokens(messages);
        const ReplyClock ours = engine.reply(messages, replyTokens);
        const ReplyClock theirs = bare.reply(messages, replyTokens);
        std::printf("%4d  %6zu  %9zu |  %22.3f  %6.3f  %11.1f | %16.1f  %4.1f\n", ++step, prompt.size(),
                    prompt.size() - reuse.reusable(prompt), ours.secondsToFirstToken(),
                    theirs.secondsToFirstToken(), theirs.secondsToFirstToken() / ours.secondsToFirstToken(),
                    1 / ours.secondsPerToken(), 1 / theirs.secondsPerToken());
        std::fflush(stdout);
        reuse.keep(prompt);
    }
    repeatLastStep(engine, bare, prompts);
}

// Size and time of the engine's state copy after the given prompt.
void reportCopy(const BareLoop &bare, size_t tokens)
{
    constexpr llama_seq_id sequence = 0;
    std::vector<quint8> state(llama_state_seq_get_size(bare.context(), sequence));
    QElapsedTimer timer;
    timer.start();
    llama_state_seq_get_data(bare.context(), state.data(), state.size(), sequence);
    const double saved = seconds(timer);
    timer.restart();
    llama_memory_clear(llama_get_memory(bare.context()), true);
    llama_state_seq_set_data(bare.context(), state.data(), state.size(), sequence);
    std::printf("state of %zu tokens: %.1f MB, saved in %.0f ms, put back in %.0f ms\n", tokens,
                static_cast<double>(state.size()) * 1e-6, saved * 1e3, seconds(timer) * 1e3);
}

// Effect of each option on the first and last prompt of a conversation.
void compareLevers(const QString &path, int steps, const QString &wanted)
{
    const QList<QList<ChatMessage>> prompts =
        RecordedConversation::prompts(RecordedConversation::read(steps));
    std::printf("\n%s, first and last prompt of %d steps\n", qPrintable(QFileInfo(path).fileName()), steps);
    std::printf("%-42s  load, s  first prompt, s  last prompt, s  ms/token\n", "");
    for (const Levers &levers : allLevers()) {
        if (!QString::fromLatin1(levers.name).contains(wanted))
            continue;
        BareLoop bare(path, levers);
        const ReplyClock first = bare.reply(prompts.first(), 1);
        const ReplyClock last = bare.reply(prompts.last(), replyTokens);
        std::printf("%-42s  %7.1f  %15.2f  %14.2f  %8.1f\n", levers.name, bare.loadSeconds(),
                    first.secondsToFirstToken(), last.secondsToFirstToken(), last.secondsPerToken() * 1e3);
        std::fflush(stdout);
        if (levers.chunk == LlamaPromptCache::longestChunk)
            reportCopy(bare, bare.tokens(prompts.last()).size() + replyTokens);
    }
}

QString modelFile(const QString &name, const QString &folder)
{
    if (QFileInfo::exists(name))
        return name;
    const QString path = QDir(folder).filePath(name + u".gguf"_s);
    if (QFileInfo::exists(path))
        return path;
    ShapedModel model = name == u"llama3.2-3b"_s ? ShapedModel::llama3_2_3b() : ShapedModel::qwen2_1_5b();
    model.setTexts(RecordedConversation::texts(RecordedConversation::read(12)));
    std::fprintf(stderr, "Writes %s\n", qPrintable(path));
    model.write(path);
    return path;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    LlamaLog::keep(LlamaLog::Kept::Errors);
    LlamaLibrary::initialise();
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption folder(u"folder"_s, u"where the model files are written"_s, u"PATH"_s,
                                    QDir::tempPath());
    const QCommandLineOption model(
        u"model"_s, u"qwen2.5-1.5b, llama3.2-3b, or a file; may be repeated (default: both)"_s, u"NAME"_s);
    const QCommandLineOption steps(u"steps"_s, u"3, 6 or 12; may be repeated (default: all)"_s, u"COUNT"_s);
    const QCommandLineOption levers(u"levers"_s,
                                    u"compare what can be chosen about the bare loop instead of replaying"_s);
    const QCommandLineOption lever(u"lever"_s, u"of those, only the ones whose name contains this"_s,
                                   u"TEXT"_s);
    parser.addOptions({folder, model, steps, levers, lever});
    parser.process(application);

    const QStringList models =
        parser.isSet(model) ? parser.values(model) : QStringList{u"qwen2.5-1.5b"_s, u"llama3.2-3b"_s};
    const QStringList counts =
        parser.isSet(steps) ? parser.values(steps) : QStringList{u"3"_s, u"6"_s, u"12"_s};
    for (const QString &name : models) {
        for (const QString &count : counts) {
            const QString path = modelFile(name, parser.value(folder));
            parser.isSet(levers) ? compareLevers(path, count.toInt(), parser.value(lever))
                                 : replay(path, count.toInt());
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
// How long a user waits for each step of a task: recorded conversations, replayed step by step through the
// engine and through a bare loop over llama.cpp, with models that have the catalog's shapes.
//
// Writes the model files where --folder says, once, and prints a table for each model and conversation.
#include "Inference/ContextFitting.h"
#include "Inference/LlamaEngine.h"
#include "Inference/LlamaHandles.h"
#include "Inference/LlamaLimits.h"
#include "Inference/LlamaLog.h"
#include "Inference/LlamaPrompt.h"
#include "Inference/RecordedConversation.h"
#include "Inference/ShapedModel.h"
#include "Support/Awaited.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <llama.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int replyTokens = 24;
constexpr int preparationTime = 30000; // ms, far more than the system prompt takes
constexpr int settlingTime =
    300; // ms in which the engine copies a state, as it does while an action is carried out

// What is tried out on the bare loop; the library's own choices where nothing is said.
struct Levers
{
    int chunk = LlamaLimits::batchSize;
    int threads = 0;
    bool flashAttention = true; // where the library finds it faster
    bool memoryMapping = true;
    bool repacking = true;
};

struct Times
{
    double firstToken = 0; // seconds from the question to the first token
    double perToken = 0;   // seconds a token after it
};

double seconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

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
    }

    double loadSeconds() const { return m_loadSeconds; }

    std::vector<llama_token> tokens(const QList<ChatMessage> &messages) const
    {
        const QString prompt = LlamaPrompt::render(messages, m_model.get(), {});
        return ContextFitting::fitted(LlamaPrompt::tokenized(llama_model_get_vocab(m_model.get()), prompt),
                                      replyTokens);
    }

    Times reply(const QList<ChatMessage> &messages)
    {
        std::vector<llama_token> prompt = tokens(messages);
        const auto chunk = static_cast<size_t>(m_levers.chunk);
        QElapsedTimer timer;
        timer.start();
        llama_memory_clear(llama_get_memory(m_context.get()), true);
        for (size_t start = 0; start < prompt.size(); start += chunk)
            decode(&prompt[start], std::min(prompt.size() - start, chunk));
        Times times;
        times.firstToken = seconds(timer);
        timer.restart();
        for (llama_token token = 1; token < replyTokens; ++token)
            decode(&token, 1);
        times.perToken = seconds(timer) / (replyTokens - 1);
        return times;
    }

private:
    void decode(llama_token *tokens, size_t count)
    {
        if (llama_decode(m_context.get(), llama_batch_get_one(tokens, static_cast<qint32>(count))) != 0)
            qFatal("The model failed");
        llama_synchronize(m_context.get());
    }

    Levers m_levers;
    double m_loadSeconds = 0;
    LlamaModel m_model;
    LlamaContext m_context;
};

// As the program holds it: it knows how every conversation begins, and has had time to prepare for that.
class PreparedEngine
{
public:
    PreparedEngine(const QString &path, const QList<ChatMessage> &conversation)
        : m_engine({conversation.first()})
    {
        Awaited::result(m_engine.load(path));
        QTest::qWait(preparationTime); // any question would end the preparation
    }
    ~PreparedEngine() { m_engine.unload(); }

    Times reply(const QList<ChatMessage> &messages)
    {
        Times times;
        times.firstToken = generate(messages, 1);
        QTest::qWait(settlingTime);
        const double oneMore = generate(messages, 1);
        QTest::qWait(settlingTime);
        times.perToken = (generate(messages, replyTokens) - oneMore) / (replyTokens - 1);
        QTest::qWait(settlingTime);
        return times;
    }

private:
    double generate(const QList<ChatMessage> &messages, int maxTokens)
    {
        QElapsedTimer timer;
        timer.start();
        Awaited::result(m_engine.generate(messages, maxTokens, [](const QString &) {}));
        return seconds(timer);
    }

    LlamaEngine m_engine;
};

// Tokens of the prompt that the engine evaluates, going by what the prompt before it was.
size_t evaluatedTokens(const std::vector<llama_token> &previous, const std::vector<llama_token> &prompt)
{
    PromptReuse reuse(LlamaPromptMemory::chunk);
    reuse.keep(previous);
    return prompt.size() - reuse.reusable(prompt);
}

void replay(const QString &path, int steps, const Levers &levers)
{
    const QList<ChatMessage> conversation = RecordedConversation::read(steps);
    BareLoop bare(path, levers);
    std::printf("\n%s, %d steps; loaded in %.1f s\n", qPrintable(QFileInfo(path).fileName()), steps,
                bare.loadSeconds());
    std::printf("step  prompt  evaluated |  first token, s: engine    bare  bare/engine |  tokens/s: engine  "
                " bare\n");
    PreparedEngine engine(path, conversation);
    std::vector<llama_token> previous = bare.tokens({conversation.first()});
    int step = 0;
    for (const QList<ChatMessage> &messages : RecordedConversation::prompts(conversation)) {
        const std::vector<llama_token> prompt = bare.tokens(messages);
        const Times ours = engine.reply(messages);
        const Times theirs = bare.reply(messages);
        std::printf("%4d  %6zu  %9zu |  %22.3f  %6.3f  %11.1f |  %16.1f  %5.1f\n", ++step, prompt.size(),
                    evaluatedTokens(previous, prompt), ours.firstToken, theirs.firstToken,
                    theirs.firstToken / ours.firstToken, 1 / ours.perToken, 1 / theirs.perToken);
        std::fflush(stdout);
        previous = prompt;
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
    LlamaLog::keepErrorsOnly();
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption folder(u"folder"_s, u"where the model files are written"_s, u"PATH"_s,
                                    QDir::tempPath());
    const QCommandLineOption model(
        u"model"_s, u"qwen2.5-1.5b, llama3.2-3b, or a file; may be repeated (default: both)"_s, u"NAME"_s);
    const QCommandLineOption steps(u"steps"_s, u"3, 6 or 12; may be repeated (default: all)"_s, u"COUNT"_s);
    const QCommandLineOption chunk(u"chunk"_s, u"tokens a call, in the bare loop"_s, u"COUNT"_s,
                                   QString::number(LlamaLimits::batchSize));
    const QCommandLineOption threads(u"threads"_s, u"in the bare loop"_s, u"COUNT"_s, u"0"_s);
    const QCommandLineOption noFlash(u"no-flash-attention"_s, u"in the bare loop"_s);
    const QCommandLineOption noMapping(u"no-mmap"_s, u"in the bare loop"_s);
    const QCommandLineOption noRepacking(u"no-repack"_s, u"in the bare loop"_s);
    parser.addOptions({folder, model, steps, chunk, threads, noFlash, noMapping, noRepacking});
    parser.process(application);

    const Levers levers = {parser.value(chunk).toInt(), parser.value(threads).toInt(), !parser.isSet(noFlash),
                           !parser.isSet(noMapping), !parser.isSet(noRepacking)};
    const QStringList models =
        parser.isSet(model) ? parser.values(model) : QStringList{u"qwen2.5-1.5b"_s, u"llama3.2-3b"_s};
    const QStringList counts =
        parser.isSet(steps) ? parser.values(steps) : QStringList{u"3"_s, u"6"_s, u"12"_s};
    for (const QString &name : models) {
        for (const QString &count : counts)
            replay(modelFile(name, parser.value(folder)), count.toInt(), levers);
    }
}

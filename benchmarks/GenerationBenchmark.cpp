// SPDX-License-Identifier: Apache-2.0
// The engine's overhead over llama.cpp: replies through LlamaEngine and through a bare loop over the library,
// in one process with the same model and settings; and prompt rendering.
//
// The model is generated, replies endlessly, and reads about 5 MB of weights per token.
// ORVANE_BENCHMARK_MODEL names another file, whose replies may end early: compare tokens per second.
#include "Inference/Llama/LlamaEngine.h"
#include "Inference/Llama/LlamaHandles.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Inference/Llama/LlamaLimits.h"
#include "Inference/Llama/LlamaLog.h"
#include "Inference/Llama/LlamaPrompt.h"
#include "Inference/TinyModel.h"
#include "ReplyClock.h"
#include "Support/Awaited.h"

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <llama.h>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int replyTokens = 100;

struct SamplerDeleter
{
    void operator()(llama_sampler *sampler) const { llama_sampler_free(sampler); }
};

// A conversation after `steps` steps, with a system prompt of realistic length.
QList<ChatMessage> conversation(int steps)
{
    QList<ChatMessage> messages = {
        {ChatMessage::Role::System, u"A rule for the assistant. "_s.repeated(30)},
        {ChatMessage::Role::User, u"User: Open the editor\nState: nothing is open"_s}};
    for (int i = 0; i < steps; ++i) {
        messages.append({ChatMessage::Role::Assistant, u"{\"action\":\"open_app\",\"app\":\"Editor\"}"_s});
        messages.append({ChatMessage::Role::User, u"Result: Opened Editor.\nState: Frontmost app: Editor"_s});
    }
    return messages;
}

// The model file used by all benchmarks.
QString modelPath()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const QString given = qEnvironmentVariable("ORVANE_BENCHMARK_MODEL");
        if (!given.isEmpty())
            return given;
        TinyModel model;
        model.reply({TinyModel::byteToken('a'), TinyModel::byteToken('b')});
        model.follow(TinyModel::byteToken('b'), TinyModel::byteToken('a'));
        model.setHeadSize(1024);
        const QString made = folder.filePath(u"model.gguf"_s);
        model.write(made);
        return made;
    }();
    return path;
}

// A minimal program with llama.cpp that gives the same reply.
class BareLoop
{
public:
    BareLoop()
    {
        llama_model_params modelParameters = llama_model_default_params();
        modelParameters.n_gpu_layers = LlamaLimits::gpuLayers;
        m_model.reset(
            llama_model_load_from_file(QFile::encodeName(modelPath()).constData(), modelParameters));
        llama_context_params contextParameters = llama_context_default_params();
        contextParameters.n_ctx = LlamaEngine::contextSize;
        contextParameters.n_batch = LlamaLimits::batchSize;
        m_context.reset(llama_init_from_model(m_model.get(), contextParameters));
        m_prompt = LlamaPrompt::render(conversation(0), m_model.get(), {}).toUtf8();
    }

    ReplyClock reply()
    {
        const llama_vocab *const vocab = llama_model_get_vocab(m_model.get());
        std::vector<llama_token> tokens(static_cast<size_t>(m_prompt.size()) + 16);
        tokens.resize(static_cast<size_t>(llama_tokenize(vocab, m_prompt.constData(),
                                                         static_cast<qint32>(m_prompt.size()), tokens.data(),
                                                         static_cast<qint32>(tokens.size()), true, true)));
        llama_memory_clear(llama_get_memory(m_context.get()), true);
        for (size_t start = 0; start < tokens.size(); start += LlamaLimits::batchSize) {
            const size_t count = std::min<size_t>(tokens.size() - start, LlamaLimits::batchSize);
            llama_decode(m_context.get(), llama_batch_get_one(&tokens[start], static_cast<qint32>(count)));
        }
        return sampleReply(vocab);
    }

private:
    ReplyClock sampleReply(const llama_vocab *vocab)
    {
        const std::unique_ptr<llama_sampler, SamplerDeleter> sampler(
            llama_sampler_chain_init(llama_sampler_chain_default_params()));
        llama_sampler_chain_add(sampler.get(), llama_sampler_init_top_k(40));
        llama_sampler_chain_add(sampler.get(), llama_sampler_init_temp(0.2F));
        llama_sampler_chain_add(sampler.get(),
                                llama_sampler_init_dist(QRandomGenerator::system()->generate()));
        char piece[64];
        QByteArray text;
        ReplyClock clock;
        for (;;) {
            llama_token token = llama_sampler_sample(sampler.get(), m_context.get(), -1);
            clock.token();
            if (llama_vocab_is_eog(vocab, token) || clock.tokens() == replyTokens)
                return clock;
            text.append(piece,
                        std::max(0, llama_token_to_piece(vocab, token, piece, sizeof piece, 0, false)));
            llama_decode(m_context.get(), llama_batch_get_one(&token, 1));
        }
    }

    LlamaModel m_model;
    LlamaContext m_context;
    QByteArray m_prompt;
};

// The engine, called as by the agent: from the main thread, through the event loop.
class LoadedEngine
{
public:
    LoadedEngine() { Awaited::result(m_engine.load(modelPath())); }
    ~LoadedEngine() { m_engine.unload(); }

    ReplyClock reply()
    {
        ReplyClock clock;
        Awaited::result(
            m_engine.generate(conversation(0), replyTokens, [&clock](const QString &) { clock.token(); }));
        return clock;
    }

private:
    LlamaEngine m_engine;
};

template <typename Replier>
void replyAlone(benchmark::State &state)
{
    Replier replier;
    qint64 tokens = 0;
    for ([[maybe_unused]] auto round : state) {
        const ReplyClock clock = replier.reply();
        state.SetIterationTime(clock.seconds());
        tokens += clock.tokens() - 1;
    }
    state.SetItemsProcessed(tokens);
}

// Alternates between the two so that other load affects both. `engine_to_bare` is the median ratio of their
// times per token; 1 means no overhead.
void engineAgainstBareLoop(benchmark::State &state)
{
    BareLoop bare;
    LoadedEngine engine;
    std::vector<double> ratios;
    for ([[maybe_unused]] auto round : state) {
        const double bareSeconds = bare.reply().secondsPerToken();
        ratios.push_back(engine.reply().secondsPerToken() / bareSeconds);
    }
    std::nth_element(ratios.begin(), ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2),
                     ratios.end());
    state.counters["engine_to_bare"] = ratios[ratios.size() / 2];
}

void promptRendering(benchmark::State &state)
{
    const LlamaModel model(
        llama_model_load_from_file(QFile::encodeName(modelPath()).constData(), llama_model_default_params()));
    const ControlTokens controlTokens = LlamaPrompt::controlTokens(model.get());
    const QList<ChatMessage> messages = conversation(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(LlamaPrompt::render(messages, model.get(), controlTokens));
}

BENCHMARK(engineAgainstBareLoop)->Iterations(21)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(replyAlone<BareLoop>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(replyAlone<LoadedEngine>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(promptRendering)->Arg(0)->Arg(11)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    LlamaLog::keep(LlamaLog::Kept::Errors);
    LlamaLibrary::initialise();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

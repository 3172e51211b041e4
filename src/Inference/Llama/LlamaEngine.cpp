// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaEngine.h"

#include "Inference/InferenceError.h"
#include "Inference/Llama/GgufFile.h"
#include "Inference/Llama/LlamaGeneration.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Inference/Llama/LlamaLimits.h"
#include "Inference/Llama/LlamaPrompt.h"
#include "Inference/Llama/ModelMemory.h"

#include <QFile>
#include <QLoggingCategory>

#include <llama.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(engineLog, "orvane.engine")

} // namespace

void LlamaModelDeleter::operator()(llama_model *model) const
{
    llama_model_free(model);
}

void LlamaContextDeleter::operator()(llama_context *context) const
{
    llama_free(context);
}

LlamaEngine::LlamaEngine(QList<ChatMessage> beginning, MemorySource freeMemory)
    : m_beginning(std::move(beginning)), m_freeMemory(std::move(freeMemory))
{
    LlamaLibrary::prepareEnvironment();
    m_queue = std::make_unique<SerialQueue>(u"llama.engine"_s);
}

LlamaEngine::~LlamaEngine()
{
    m_end.request_stop();
    m_queue->finish();
    // A model still loaded is leaked to the end of the process: llama.cpp must not be called on this thread.
    static_cast<void>(m_ctx.release());
    static_cast<void>(m_model.release());
}

bool LlamaEngine::isLoaded() const
{
    const std::lock_guard guard(m_lock);
    return m_loaded;
}

QCoro::Task<void> LlamaEngine::load(QString path)
{
    const auto job = [this, path] { loadModel(path); };
    co_await m_queue->run(job);
}

void LlamaEngine::unload()
{
    m_queue->post([this] { freeAll(); });
}

QCoro::Task<QString> LlamaEngine::generate(QList<ChatMessage> messages, int maxTokens,
                                           std::function<void(QString)> onToken)
{
    const auto job = [this, messages, maxTokens, onToken] { return run(messages, maxTokens, onToken); };
    co_return co_await m_queue->run(job);
}

void LlamaEngine::loadModel(const QString &path)
{
    freeAll();
    LlamaLibrary::initialise();
    const GgufFile::Verdict verdict = GgufFile::examine(path);
    if (verdict != GgufFile::Verdict::Plausible) {
        qCWarning(engineLog).noquote() << "Not loaded:" << path << GgufFile::explanation(verdict);
        throw InferenceError(InferenceError::Code::LoadFailed);
    }
    requireMemory(path);

    llama_model_params modelParameters = llama_model_default_params();
    modelParameters.n_gpu_layers = LlamaLimits::gpuLayers;
    // Quitting must not wait until gigabytes are read.
    modelParameters.progress_callback = [](float, void *end) {
        return !static_cast<std::stop_source *>(end)->stop_requested();
    };
    modelParameters.progress_callback_user_data = &m_end;
    LlamaModel model(llama_model_load_from_file(QFile::encodeName(path).constData(), modelParameters));
    if (!model)
        throw InferenceError(InferenceError::Code::LoadFailed);

    llama_context_params contextParameters = llama_context_default_params();
    contextParameters.n_ctx = contextSize;
    contextParameters.n_batch = LlamaLimits::batchSize;
    LlamaContext context(llama_init_from_model(model.get(), contextParameters));
    if (!context)
        throw InferenceError(InferenceError::Code::ContextFailed);

    // Quitting interrupts a running llama_decode, too.
    const auto hasEnded = [](void *end) { return static_cast<std::stop_source *>(end)->stop_requested(); };
    llama_set_abort_callback(context.get(), hasEnded, &m_end);

    m_controlTokens = LlamaPrompt::controlTokens(model.get());
    m_model = std::move(model);
    m_ctx = std::move(context);
    setLoaded(true);
    if (!m_beginning.isEmpty())
        m_queue->post([this] { evaluateAhead(); });
}

// A machine that swaps answers neither this program nor others.
void LlamaEngine::requireMemory(const QString &path) const
{
    const qint64 needed = ModelMemory::needed(path, contextSize, LlamaLimits::batchSize);
    const std::optional<qint64> free = m_freeMemory();
    if (!free || *free >= needed)
        return;
    qCWarning(engineLog) << "Not loaded: the model takes" << needed << "bytes, and" << *free << "are free.";
    throw InferenceError(InferenceError::Code::TooLittleMemory);
}

void LlamaEngine::freeAll()
{
    m_isEvaluatingAhead = false;
    m_promptCache.reset();
    m_ctx.reset();
    m_model.reset();
    m_controlTokens = {};
    setLoaded(false);
}

QString LlamaEngine::run(const QList<ChatMessage> &messages, int maxTokens,
                         const std::function<void(QString)> &onToken)
{
    const llama_vocab *const loaded = vocab();
    if (!loaded)
        throw InferenceError(InferenceError::Code::NotLoaded);

    std::vector<qint32> tokens = prompt(messages);
    if (std::exchange(m_isEvaluatingAhead, false))
        m_promptCache.keep();
    m_queue->post([this] { keepPrompt(); });
    // Cancelling the awaiting task has no effect here: a generation runs to its end unless the engine is
    // destroyed.
    return LlamaGeneration::run(m_ctx.get(), loaded, m_promptCache, std::move(tokens), maxTokens, onToken,
                                m_end.get_token());
}

const llama_vocab *LlamaEngine::vocab() const
{
    if (!m_model || !m_ctx)
        return nullptr;
    const llama_vocab *const own = llama_model_get_vocab(m_model.get());
    return llama_vocab_type(own) == LLAMA_VOCAB_TYPE_NONE ? nullptr : own;
}

std::vector<qint32> LlamaEngine::prompt(const QList<ChatMessage> &messages) const
{
    const QString text = LlamaPrompt::render(messages, m_model.get(), m_controlTokens);
    return LlamaPrompt::tokenized(vocab(), text);
}

void LlamaEngine::evaluateAhead()
{
    if (!vocab())
        return;
    runSpeculatively([this] {
        m_promptCache.begin(m_ctx.get(), ContextFitting::fitted(prompt(m_beginning), 0));
        m_isEvaluatingAhead = true;
        m_queue->post([this] { evaluateAheadChunk(); });
    });
}

// Re-posts itself behind other queued jobs, so that nothing waits for more than one chunk.
void LlamaEngine::evaluateAheadChunk()
{
    if (!m_isEvaluatingAhead || m_end.stop_requested())
        return;
    runSpeculatively([this] {
        if (m_promptCache.needsTrial())
            m_promptCache.tryOut();
        else
            m_promptCache.evaluateChunk();
        if (m_promptCache.isEvaluated() || !m_promptCache.canReuse())
            keepPrompt();
        else
            m_queue->post([this] { evaluateAheadChunk(); });
    });
}

// Runs after the reply is delivered, while the action is carried out.
void LlamaEngine::keepPrompt()
{
    m_isEvaluatingAhead = false;
    if (!m_ctx || m_end.stop_requested())
        return;
    runSpeculatively([this] {
        m_promptCache.keep();
        if (m_promptCache.needsTrial())
            m_promptCache.tryOut();
    });
}

// Speculative work may fail, also for lack of memory; the next prompt is then evaluated in full.
void LlamaEngine::runSpeculatively(const std::function<void()> &work)
{
    try {
        return work();
    } catch (const InferenceError &) {
        // A request for a reply will report the same error.
    } catch (const std::exception &error) {
        qCWarning(engineLog, "What was done ahead of need is dropped: %s", error.what());
    }
    m_isEvaluatingAhead = false;
    m_promptCache.reset();
}

void LlamaEngine::setLoaded(bool loaded)
{
    const std::lock_guard guard(m_lock);
    m_loaded = loaded;
}

// SPDX-License-Identifier: Apache-2.0
#include "Models/ModelManager.h"

#include "Base/LocalizedError.h"
#include "Base/Text.h"
#include "Inference/InferenceError.h"
#include "Inference/Llama/GgufFile.h"
#include "Models/Download/DownloadName.h"
#include "Models/FileMove.h"

#include <QFile>
#include <QPointer>
#include <QPromise>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString selectedModelKey = u"selectedModel"_s;

// Used for progress if the server does not announce a size.
constexpr qint64 assumedSize = 1'000'000'000;

constexpr int firstFailureStatus = 400;

// A file that the engine failed to load.
struct FailedFile
{
    std::optional<StoredModel::Identity> identity;
    bool isUnusable = false; // for any engine
};

FailedFile examineFailed(const QString &path)
{
    // Take the identity first, so that a file replaced meanwhile is not mistaken for this one.
    const std::optional<StoredModel::Identity> identity = StoredModel::identity(path);
    return {identity, StoredModel::examine(path) == StoredModel::Condition::Unusable};
}

} // namespace

ModelManager::ModelManager(std::unique_ptr<InferenceEngine> engine, std::unique_ptr<DownloadSession> session,
                           const ModelStorage &storage, QObject *parent)
    : QObject(parent), m_storage(storage), m_settings(storage.settingsFile, QSettings::IniFormat),
      m_selected(LocalModel::withIdentifier(m_settings.value(selectedModelKey).toString())),
      m_engine(std::move(engine)), m_session(std::move(session))
{
    m_session->setDelegate(this);
    refresh();
}

ModelManager::~ModelManager()
{
    // End the callbacks while the members they use still exist.
    m_session.reset();
}

void ModelManager::refresh()
{
    setState(hasFile() ? State::ready() : State::needsDownload());
}

bool ModelManager::hasFile() const
{
    const std::optional<StoredModel::Identity> file = StoredModel::identity(path(m_selected));
    return file && file != m_unusable;
}

void ModelManager::select(const LocalModel &model)
{
    if (model == m_selected)
        return;
    cancelTask();
    m_engine->unload();
    m_unloading = true;
    ++m_selection;
    setSelected(model);
    m_settings.setValue(selectedModelKey, model.id);
    refresh();
    if (m_state.kind == State::Kind::Ready)
        QMetaObject::invokeMethod(
            this, [this] { loadIfNeeded(); }, Qt::QueuedConnection);
}

void ModelManager::download()
{
    if (m_task)
        return;
    setState(State::downloading(0.0));
    m_task = m_session->start(
        {m_selected.url, m_selected.sizeMB * 1'000'000, VerifiedFile::named(m_selected.fileName)});
}

void ModelManager::cancelDownload()
{
    cancelTask();
    refresh();
}

QCoro::Task<void> ModelManager::loadIfNeeded()
{
    if (m_engine->isLoaded() && !m_unloading) {
        setState(State::loaded());
        co_return;
    }
    const QPointer<ModelManager> self(this);
    if (m_state.kind == State::Kind::Loading) {
        // The model may be switched meanwhile; wait for that load, too.
        while (self && m_state.kind == State::Kind::Loading) {
            const QFuture<void> end = m_loadEnd;
            co_await end;
        }
        co_return;
    }
    if (m_state.kind != State::Kind::Ready && m_state.kind != State::Kind::Loaded)
        co_return;
    // Destroyed with this coroutine, which finishes the future that other calls await.
    QPromise<void> loading;
    loading.start();
    m_loadEnd = loading.future();
    setState(State::loading());

    const quint64 selection = m_selection;
    const QString file = path(m_selected);
    State outcome = State::loaded();
    bool isRefused = false;
    try {
        co_await m_engine->load(file);
    } catch (const InferenceError &error) {
        const bool lacksMemory = error.code() == InferenceError::Code::TooLittleMemory;
        outcome = State::failed(error.errorDescription() + (lacksMemory ? smallerModelHint() : QString()));
        isRefused = error.code() == InferenceError::Code::LoadFailed;
    } catch (const LocalizedError &error) {
        outcome = State::failed(error.errorDescription());
    } catch (const std::exception &error) {
        outcome = State::failed(Text::cleaned(QString::fromLocal8Bit(error.what())));
    }
    if (self && selection == m_selection && outcome.kind == State::Kind::Failed)
        co_await examineFailure(file, isRefused);
    if (!self || selection != m_selection)
        co_return;
    m_unloading = false;
    setState(outcome);
}

void ModelManager::release()
{
    if (m_state.kind != State::Kind::Loaded)
        return;
    m_engine->unload();
    m_unloading = true;
}

// " … takes less." if the catalog has a smaller model.
QString ModelManager::smallerModelHint() const
{
    const QList<LocalModel> &models = LocalModel::catalog();
    const auto smallest =
        std::min_element(models.begin(), models.end(),
                         [](const auto &left, const auto &right) { return left.sizeMB < right.sizeMB; });
    return *smallest == m_selected ? QString() : u" %1 takes less."_s.arg(smallest->name);
}

// Remembers whether the failure is the file's own fault. A file that looks like a model gets a second chance,
// since the load may have failed for another reason.
QCoro::Task<void> ModelManager::examineFailure(QString path, bool isRefused)
{
    const QPointer<ModelManager> self(this);
    if (!m_files)
        m_files = std::make_unique<SerialQueue>(u"models.files"_s);
    const auto look = [path] { return examineFailed(path); };
    const QFuture<FailedFile> looking = m_files->run(look);
    const FailedFile file = co_await looking;
    if (!self)
        co_return;
    const bool isRefusedAgain = isRefused && file.identity && file.identity == m_refused;
    m_refused = isRefused ? file.identity : std::nullopt;
    m_unusable = file.isUnusable || isRefusedAgain ? file.identity : std::nullopt;
}

void ModelManager::downloadProgressed(quint64 task, qint64 written, qint64 expected)
{
    const auto divisor = static_cast<double>(expected > 0 ? expected : assumedSize);
    const double progress = std::min(static_cast<double>(written) / divisor, 1.0);
    const auto report = [this, task, progress] {
        // Ignore callbacks of a cancelled or finished download.
        if (m_task == task)
            setState(State::downloading(progress));
    };
    QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
}

void ModelManager::downloadFinished(const FinishedDownload &download)
{
    const quint64 task = download.task;
    const QString message = published(download);
    QMetaObject::invokeMethod(
        this, [this, task, message] { takeFinished(task, message); }, Qt::QueuedConnection);
}

void ModelManager::downloadEnded(quint64 task, const std::optional<DownloadError> &error)
{
    if (!error || error->code == DownloadError::cancelled)
        return;
    const QString message = error->message;
    QMetaObject::invokeMethod(
        this, [this, task, message] { takeFailed(task, message); }, Qt::QueuedConnection);
}

void ModelManager::setState(const State &state)
{
    if (state == m_state)
        return;
    Q_EMIT willChange();
    m_state = state;
    Q_EMIT stateChanged();
}

void ModelManager::setSelected(const LocalModel &model)
{
    Q_EMIT willChange();
    m_selected = model;
    Q_EMIT selectedChanged();
}

void ModelManager::cancelTask()
{
    if (m_task)
        m_session->cancel(*m_task);
    m_task.reset();
}

// Moves a finished, plausible model file into the models folder. Returns an error sentence, or empty. Thread:
// the session's.
QString ModelManager::published(const FinishedDownload &download) const
{
    if (download.httpStatus >= firstFailureStatus)
        return u"Download failed (HTTP %1)."_s.arg(*download.httpStatus);
    const GgufFile::Verdict verdict = GgufFile::examine(download.temporaryFile);
    if (verdict != GgufFile::Verdict::Plausible) {
        // Unusable, so the next download must start over.
        QFile::remove(download.temporaryFile);
        return u"The download is no usable model. "_s + GgufFile::explanation(verdict);
    }
    const QString destination = directory() + u'/' + downloadName(download.originalUrl);
    const std::error_code error = moveReplacing(download.temporaryFile, destination);
    if (!error)
        return {};
    const QString reason = Text::cleaned(QString::fromLocal8Bit(error.message().c_str()));
    return u"Couldn't move the download into the models folder: %1."_s.arg(reason);
}

void ModelManager::takeFinished(quint64 task, const QString &message)
{
    const bool cancelled = m_task != task;
    // A file finished before the cancellation is kept; everything else of a cancelled download is ignored.
    const bool idle = m_state.kind == State::Kind::NeedsDownload || m_state.kind == State::Kind::Ready;
    if (cancelled && (m_task || !idle || !message.isEmpty()))
        return;
    m_task.reset();
    if (!message.isEmpty()) {
        setState(State::failed(message));
        return;
    }
    refresh();
    loadIfNeeded();
}

void ModelManager::takeFailed(quint64 task, const QString &message)
{
    if (m_task != task)
        return;
    m_task.reset();
    setState(State::failed(message));
}

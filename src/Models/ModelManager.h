// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"
#include "Inference/InferenceEngine.h"
#include "Models/Download/DownloadSession.h"
#include "Models/LocalModel.h"
#include "Models/ModelStorage.h"
#include "Models/StoredModel.h"

#include <QCoroTask>
#include <QObject>
#include <QSettings>

#include <memory>
#include <optional>

// Downloads and loads language models: the selected catalog entry, the presence of its file, the one download
// that may be running, and the engine. Thread: main; session callbacks compute on the session's thread and
// post their results. Never throws: failures become the state `Failed`.
class ModelManager : public QObject, private DownloadDelegate
{
    Q_OBJECT

public:
    // State of the selected model.
    struct State
    {
        enum class Kind { NeedsDownload, Downloading, Ready, Loading, Loaded, Failed };

        Kind kind = Kind::NeedsDownload;
        double progress = 0.0; // 0.0 to 1.0, for `Downloading`
        QString message;       // user-visible text, for `Failed`

        static State needsDownload() { return {}; }
        static State downloading(double progress) { return {Kind::Downloading, progress, {}}; }
        static State ready() { return {Kind::Ready, 0.0, {}}; }
        static State loading() { return {Kind::Loading, 0.0, {}}; }
        static State loaded() { return {Kind::Loaded, 0.0, {}}; }
        static State failed(const QString &message) { return {Kind::Failed, 0.0, message}; }

        friend bool operator==(const State &, const State &) = default;
    };

    // Restores the stored choice; the state is then `Ready` or `NeedsDownload`.
    ModelManager(std::unique_ptr<InferenceEngine> engine, std::unique_ptr<DownloadSession> session,
                 const ModelStorage &storage, QObject *parent = nullptr);
    // Ends a running download; its partial file is kept.
    ~ModelManager() override;

    State state() const { return m_state; }
    LocalModel selected() const { return m_selected; }
    InferenceEngine &engine() const { return *m_engine; }

    // The models folder; created if missing.
    QString directory() const { return m_storage.modelsDirectory(); }

    // The path of a model's file.
    QString path(const LocalModel &model) const { return directory() + u'/' + model.fileName; }

    // Sets the state from the presence of the selected model's file. A file that failed to load and is not a
    // usable model, or that the engine refused twice, counts as missing until it changes; it is kept until a
    // download replaces it.
    void refresh();

    // Selects another catalog entry: cancels the download, unloads the engine and stores the choice. If the
    // model's file exists, it is loaded on the next event loop iteration. Does nothing for the current
    // selection.
    void select(const LocalModel &model);

    // Starts downloading the selected model, unless a download is running.
    void download();

    // Cancels a running download and calls `refresh`.
    void cancelDownload();

    // Loads the selected model if its file exists and the engine is empty. A call during a load only waits
    // for it to end.
    QCoro::Task<void> loadIfNeeded();

    // Frees the memory of a loaded model. The state stays `Loaded`; `loadIfNeeded` loads the model again. Must
    // not be called while the engine generates a reply.
    void release();

Q_SIGNALS:
    // Emitted before each change of `state` or `selected`.
    void willChange();
    // Emitted after the change.
    void stateChanged();
    void selectedChanged();

private:
    void downloadProgressed(quint64 task, qint64 written, qint64 expected) override;
    void downloadFinished(const FinishedDownload &download) override;
    void downloadEnded(quint64 task, const std::optional<DownloadError> &error) override;

    void setState(const State &state);
    void setSelected(const LocalModel &model);
    void cancelTask();
    bool hasFile() const;
    QString smallerModelHint() const;
    QCoro::Task<void> examineFailure(QString path, bool isRefused);
    QString published(const FinishedDownload &download) const;
    void takeFinished(quint64 task, const QString &message);
    void takeFailed(quint64 task, const QString &message);

    const ModelStorage m_storage;
    QSettings m_settings;
    State m_state;
    LocalModel m_selected;
    std::unique_ptr<InferenceEngine> m_engine;
    std::unique_ptr<DownloadSession> m_session;
    std::optional<quint64> m_task;
    // Incremented with each selection; results of a load begun under an older value are ignored.
    quint64 m_selection = 0;
    // The engine unloads asynchronously and reports itself loaded until then.
    bool m_unloading = false;
    // Finishes with the latest load.
    QFuture<void> m_loadEnd;
    // The file that the engine refused last, and the file known to be unusable.
    std::optional<StoredModel::Identity> m_refused;
    std::optional<StoredModel::Identity> m_unusable;
    // Runs file checks; created on demand.
    std::unique_ptr<SerialQueue> m_files;
};

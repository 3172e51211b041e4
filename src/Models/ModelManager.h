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

// Gets a language model onto the machine and into memory: which catalog entry is selected, whether its file
// is present, the one download that may be in flight, and the engine. Every operation is called on the main
// thread; only the session's callbacks come on the session's thread, compute there, and hand their result to
// the main thread. Nothing is thrown to a caller: each failure becomes the state `failed`.
class ModelManager : public QObject, private DownloadDelegate
{
    Q_OBJECT

public:
    // Where the selected model stands.
    struct State
    {
        enum class Kind { NeedsDownload, Downloading, Ready, Loading, Loaded, Failed };

        Kind kind = Kind::NeedsDownload;
        double progress = 0.0; // 0.0 to 1.0, of `downloading`
        QString message;       // of `failed`, as the user sees it

        static State needsDownload() { return {}; }
        static State downloading(double progress) { return {Kind::Downloading, progress, {}}; }
        static State ready() { return {Kind::Ready, 0.0, {}}; }
        static State loading() { return {Kind::Loading, 0.0, {}}; }
        static State loaded() { return {Kind::Loaded, 0.0, {}}; }
        static State failed(const QString &message) { return {Kind::Failed, 0.0, message}; }

        friend bool operator==(const State &, const State &) = default;
    };

    // Reads the persisted choice and looks for the model's file, so the state is `ready` or `needsDownload`.
    ModelManager(std::unique_ptr<InferenceEngine> engine, std::unique_ptr<DownloadSession> session,
                 const ModelStorage &storage, QObject *parent = nullptr);
    // Ends a download in flight; its partial file stays for the next start.
    ~ModelManager() override;

    State state() const { return m_state; }
    LocalModel selected() const { return m_selected; }
    InferenceEngine &engine() const { return *m_engine; }

    // The models folder; each call makes sure that it exists.
    QString directory() const { return m_storage.modelsDirectory(); }

    // Where the file of a model belongs.
    QString path(const LocalModel &model) const { return directory() + u'/' + model.fileName; }

    // Derives the state anew from the presence of the selected model's file, whatever it was before. A file
    // that is no usable model, or that the engine refused twice, counts as missing once its load has failed,
    // until it is another one; it stays where it is until a download replaces it.
    void refresh();

    // Switches to another catalog entry: cancels the download, empties the engine, remembers the choice, and
    // loads the model on the next turn of the event loop if its file is there. The selected one: does
    // nothing.
    void select(const LocalModel &model);

    // Starts downloading the selected model, unless a download is in flight.
    void download();

    // Cancels the download in flight, if any, and looks at the file again.
    void cancelDownload();

    // Loads the selected model into the engine if its file is there and the engine is empty. While a load
    // runs, another call changes nothing, and ends when the load does.
    QCoro::Task<void> loadIfNeeded();

Q_SIGNALS:
    // Before each change of `state` or `selected`.
    void willChange();
    // After the change.
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
    QCoro::Task<void> lookForTheFault(QString path, bool isRefused);
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
    // Counts the changes of selection: a load that began under another selection has no say any more.
    quint64 m_selection = 0;
    // The engine empties itself in its own time, and says that it is loaded until then.
    bool m_unloading = false;
    // Finished when the load that began last has ended.
    QFuture<void> m_loadEnd;
    // The file that the engine would not load last, and the one whose own fault that is.
    std::optional<StoredModel::Identity> m_refused;
    std::optional<StoredModel::Identity> m_unusable;
    // Where files are looked into; made when one is.
    std::unique_ptr<SerialQueue> m_files;
};

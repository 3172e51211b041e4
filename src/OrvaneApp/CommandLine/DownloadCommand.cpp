// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DownloadCommand.h"

#include "Models/ProgressText.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int barWidth = 30;

} // namespace

DownloadCommand::DownloadCommand(ModelManager &models, Terminal &terminal, QObject *parent)
    : QObject(parent), m_models(models), m_terminal(terminal)
{
}

void DownloadCommand::start()
{
    const LocalModel model = m_models.selected();
    const StoredModel::Condition condition = StoredModel::examine(m_models.path(model));
    if (condition == StoredModel::Condition::Plausible) {
        m_terminal.line(u"%1 is already on this machine."_s.arg(model.name));
        end(ExitStatus::done);
        return;
    }
    if (condition == StoredModel::Condition::Unusable)
        m_terminal.line(u"The file that is here can't be used; it will be replaced."_s);
    connect(&m_models, &ModelManager::stateChanged, this, &DownloadCommand::showState);
    m_terminal.line(u"Downloading %1 (~%2 MB)"_s.arg(model.name).arg(model.sizeMB));
    m_models.download();
}

void DownloadCommand::interrupt()
{
    if (m_hasEnded)
        return;
    disconnect(&m_models, nullptr, this, nullptr);
    m_terminal.hideProgress();
    if (m_models.state().kind == ModelManager::State::Kind::Downloading) {
        m_models.cancelDownload();
        m_terminal.line(u"Stopped. The same command goes on where it was."_s);
    }
    end(ExitStatus::endedOtherwise);
}

void DownloadCommand::showState()
{
    using Kind = ModelManager::State::Kind;
    const ModelManager::State state = m_models.state();
    switch (state.kind) {
    case Kind::Downloading:
        showProgress(state.progress);
        break;
    case Kind::Ready:
    case Kind::Loading:
        m_terminal.showProgress(u"Trying it out…"_s);
        break;
    case Kind::Loaded:
        m_terminal.hideProgress();
        m_terminal.line(u"✓ %1 is ready."_s.arg(m_models.selected().name), Terminal::Style::Good);
        end(ExitStatus::done);
        break;
    case Kind::Failed:
        m_terminal.hideProgress();
        m_terminal.error(state.message);
        end(ExitStatus::endedOtherwise);
        break;
    case Kind::NeedsDownload:
        break;
    }
}

void DownloadCommand::showProgress(double progress)
{
    const qint64 sizeMB = m_models.selected().sizeMB;
    m_terminal.showProgress(bar(progress, barWidth, sizeMB));
    const int tenth = static_cast<int>(progress * 10);
    if (m_terminal.isInteractive() || tenth <= m_lastTenth)
        return;
    m_lastTenth = tenth;
    m_terminal.line(downloadProgressText(progress, sizeMB));
}

void DownloadCommand::end(int exitStatus)
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    Q_EMIT finished(exitStatus);
}

QString DownloadCommand::bar(double progress, int width, qint64 sizeMB)
{
    const int filled = std::clamp(static_cast<int>(progress * width), 0, width);
    return u'[' + QString(filled, u'#') + QString(width - filled, u'-') + u"] "_s +
           downloadProgressText(progress, sizeMB);
}

// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/SetupViewModel.h"

#include "Base/PlatformWords.h"
#include "Models/ProgressText.h"

using namespace Qt::StringLiterals;

using Kind = ModelManager::State::Kind;

SetupViewModel::SetupViewModel(ModelManager &models, QObject *parent) : QObject(parent), m_models(models)
{
    connect(&models, &ModelManager::stateChanged, this, &SetupViewModel::stateChanged);
    connect(&models, &ModelManager::selectedChanged, this, &SetupViewModel::selectedModelChanged);
}

QString SetupViewModel::explanation() const
{
    return PlatformWords::current().setupExplanation;
}

QStringList SetupViewModel::choices() const
{
    QStringList result;
    for (const LocalModel &model : LocalModel::catalog())
        result.append(model.name + u" — "_s + model.detail);
    return result;
}

int SetupViewModel::selectedModel() const
{
    return static_cast<int>(LocalModel::catalog().indexOf(m_models.selected()));
}

SetupViewModel::Step SetupViewModel::step() const
{
    switch (m_models.state().kind) {
    case Kind::NeedsDownload:
        return NeedsDownload;
    case Kind::Downloading:
        return Downloading;
    case Kind::Ready:
    case Kind::Loading:
        return Loading;
    case Kind::Failed:
        return Failed;
    case Kind::Loaded:
        return Done;
    }
    Q_UNREACHABLE();
}

QString SetupViewModel::downloadLabel() const
{
    return u"Download "_s + m_models.selected().name;
}

double SetupViewModel::progress() const
{
    return m_models.state().progress;
}

QString SetupViewModel::progressText() const
{
    return downloadProgressText(progress(), m_models.selected().sizeMB);
}

QString SetupViewModel::message() const
{
    return m_models.state().message;
}

void SetupViewModel::select(int choice)
{
    m_models.select(LocalModel::catalog().at(choice));
}

void SetupViewModel::download()
{
    m_models.download();
}

void SetupViewModel::cancel()
{
    m_models.cancelDownload();
}

void SetupViewModel::tryAgain()
{
    m_models.refresh();
    if (m_models.state().kind == Kind::Ready)
        m_loading = m_models.loadIfNeeded();
    else
        m_models.download();
}

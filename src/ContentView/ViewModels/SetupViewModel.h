// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

// What the setup card shows and does: the choice of a model, its download, and what went wrong. Main thread;
// the model manager is not owned and outlives this object.
class SetupViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the content view model")
    Q_PROPERTY(QString explanation READ explanation CONSTANT)
    Q_PROPERTY(QStringList choices READ choices CONSTANT)
    Q_PROPERTY(int selectedModel READ selectedModel NOTIFY selectedModelChanged)
    Q_PROPERTY(Step step READ step NOTIFY stateChanged)
    Q_PROPERTY(QString downloadLabel READ downloadLabel NOTIFY selectedModelChanged)
    Q_PROPERTY(double progress READ progress NOTIFY stateChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY stateChanged)
    Q_PROPERTY(QString message READ message NOTIFY stateChanged)

public:
    enum Step { NeedsDownload, Downloading, Loading, Failed, Done };
    Q_ENUM(Step)

    explicit SetupViewModel(ModelManager &models, QObject *parent = nullptr);

    QString explanation() const;
    // The catalog, in its order.
    QStringList choices() const;
    int selectedModel() const; // an index of `choices`

    Step step() const;
    QString downloadLabel() const;
    double progress() const; // 0.0 to 1.0, of `Downloading`
    QString progressText() const;
    QString message() const; // of `Failed`

    Q_INVOKABLE void select(int choice);
    Q_INVOKABLE void download();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void tryAgain();

Q_SIGNALS:
    void stateChanged();
    void selectedModelChanged();

private:
    ModelManager &m_models;
    QCoro::Task<void> m_loading;
};

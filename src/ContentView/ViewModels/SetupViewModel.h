// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

// State and commands of the setup card: model choice, download, failure. Thread: main. The model manager is
// not owned and must outlive this object.
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
    // The catalog, in order.
    QStringList choices() const;
    int selectedModel() const; // index into `choices`

    Step step() const;
    QString downloadLabel() const;
    double progress() const; // 0.0 to 1.0, for `Downloading`
    QString progressText() const;
    QString message() const; // for `Failed`

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

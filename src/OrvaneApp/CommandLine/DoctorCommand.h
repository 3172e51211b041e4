// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/DoctorReport.h"
#include "OrvaneApp/CommandLine/Terminal.h"

#include <QCoroTask>
#include <QObject>

#include <functional>

// `orvane doctor`: checks the desktop, the model file and llama.cpp concurrently, and prints a report.
// Thread: main; nothing is owned.
class DoctorCommand : public QObject
{
    Q_OBJECT

public:
    // `describeLlama` is called on its own thread.
    DoctorCommand(const ModelManager &models, Diagnosis &diagnosis,
                  std::function<LlamaLibrary::Description()> describeLlama, Terminal &terminal,
                  QObject *parent = nullptr);
    ~DoctorCommand() override;

    // Asynchronous; ends with `finished`. Call once.
    void start(DoctorReport::Format format);

    // Stops waiting.
    void interrupt();

Q_SIGNALS:
    void finished(int exitStatus);

private:
    QCoro::Task<void> examine(DoctorReport::Format format);

    const ModelManager &m_models;
    Diagnosis &m_diagnosis;
    std::function<LlamaLibrary::Description()> m_describeLlama;
    Terminal &m_terminal;
    QCoro::Task<void> m_examining;
};

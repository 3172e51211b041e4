// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Inference/Llama/GgufFile.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Models/LocalModel.h"

#include <QCoroTask>

#include <functional>
#include <optional>

// Checks what planning needs apart from the desktop: the model file and llama.cpp. Thread: main, which does
// not block on the disk or a graphics driver; no answer within two seconds is reported as broken.
namespace ReadinessChecks {

inline const QString modelIdentifier = QStringLiteral("model");

// Checks the selected model's file at `path` without loading it.
QCoro::Task<DiagnosticCheck> model(LocalModel model, QString path);

QCoro::Task<DiagnosticCheck> engine(std::function<LlamaLibrary::Description()> describe);

// Interpret the results; nothing means a timeout. Pure.
struct ModelFile
{
    bool exists = false;
    qint64 bytes = 0;
    GgufFile::Verdict verdict = GgufFile::Verdict::Unreadable;
};
DiagnosticCheck modelCheck(const LocalModel &model, const QString &path,
                           const std::optional<ModelFile> &file);
DiagnosticCheck engineCheck(const std::optional<LlamaLibrary::Description> &description);

} // namespace ReadinessChecks

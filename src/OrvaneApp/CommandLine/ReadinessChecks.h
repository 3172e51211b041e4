// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Inference/Llama/GgufFile.h"
#include "Inference/Llama/LlamaLibrary.h"
#include "Models/LocalModel.h"

#include <QCoroTask>

#include <functional>
#include <optional>

// What planning needs, apart from the desktop: a model file, and llama.cpp to run it. Main thread, which
// waits for neither the disk nor a graphics driver; what does not answer within two seconds is a finding.
namespace ReadinessChecks {

inline const QString modelIdentifier = QStringLiteral("model");

// The selected model, whose file belongs at `path`. The file is looked at, not loaded.
QCoro::Task<DiagnosticCheck> model(LocalModel model, QString path);

QCoro::Task<DiagnosticCheck> engine(std::function<LlamaLibrary::Description()> describe);

// What each answer means; without one there was none in time. Pure functions.
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

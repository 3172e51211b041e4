// SPDX-License-Identifier: Apache-2.0
#include "Inference/LlamaLog.h"

#include <QLoggingCategory>
#include <QString>

#include <llama.h>

namespace {

Q_LOGGING_CATEGORY(llamaLog, "orvane.llama")

void passErrors(ggml_log_level level, const char *text, void *)
{
    if (level == GGML_LOG_LEVEL_ERROR)
        qCWarning(llamaLog).noquote() << QString::fromUtf8(text).trimmed();
}

} // namespace

void LlamaLog::keepErrorsOnly()
{
    llama_log_set(passErrors, nullptr);
}

void LlamaLog::keepNothing()
{
    llama_log_set([](ggml_log_level, const char *, void *) {}, nullptr);
}

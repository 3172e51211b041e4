// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaLog.h"

#include <QLoggingCategory>
#include <QString>

#include <llama.h>

#include <atomic>
#include <cstdio>
#include <mutex>

namespace {

using LlamaLog::Kept;

Q_LOGGING_CATEGORY(llamaLog, "orvane.llama")

std::atomic<Kept> keptMessages = Kept::Everything;

void pass(ggml_log_level level, const char *text, void *)
{
    const Kept kept = keptMessages;
    if (kept == Kept::Everything)
        std::fputs(text, stderr);
    else if (kept == Kept::Errors && level == GGML_LOG_LEVEL_ERROR)
        qCWarning(llamaLog).noquote() << QString::fromUtf8(text).trimmed();
}

} // namespace

void LlamaLog::keep(Kept kept)
{
    static std::once_flag taken;
    keptMessages = kept;
    std::call_once(taken, [] { llama_log_set(pass, nullptr); });
}

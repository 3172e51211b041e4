// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/RealModels.h"

#include "Agent/SystemPrompt.h"
#include "Inference/Llama/LlamaEngine.h"
#include "Inference/Llama/LlamaLog.h"
#include "Models/Download/HttpDownloadSession.h"

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<DownloadSession> downloadSession(const ModelStorage &storage)
{
    const QString mirror = qEnvironmentVariable("ORVANE_MODEL_MIRROR");
    const TransferOptions options{.downloadsDirectory = storage.downloadsDirectory(),
                                  .freeSpace = &HttpDownloadSession::freeSpace,
                                  .mirror = mirror.isEmpty() ? std::nullopt : std::optional(QUrl(mirror))};
    return std::make_unique<HttpDownloadSession>(options);
}

QList<ChatMessage> beginningOfEveryTask()
{
    return {{ChatMessage::Role::System, SystemPrompt::text()}};
}

} // namespace

RealModels::RealModels()
    : m_manager(std::make_unique<LlamaEngine>(beginningOfEveryTask()), downloadSession(m_storage), m_storage)
{
}

RealModels::~RealModels()
{
    LlamaLog::keep(LlamaLog::Kept::Nothing);
    m_manager.engine().unload();
}

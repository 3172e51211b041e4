// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QList>
#include <QString>

#include <functional>

struct llama_chat_message;

// Renders a conversation as a prompt. Pure except for calling `Apply`; any thread.
namespace PromptTemplate {

// Renders `count` messages and the opening of the assistant's turn into `buffer` of `size` bytes. Returns the
// bytes required (possibly more than `size`), or a negative number if the template is not supported:
// llama_chat_apply_template with the template bound.
using Apply = std::function<qint32(const llama_chat_message *chat, size_t count, char *buffer, qint32 size)>;

// The prompt; falls back to ChatML if `apply` fails. Never throws: lack of memory or a conversation over a
// gigabyte aborts.
QString render(const QList<ChatMessage> &messages, const Apply &apply) noexcept;

// Buffer size for the first call of `apply`: twice the contents' UTF-8 bytes plus 64 for each message's
// markers.
qint32 bufferSize(const QList<ChatMessage> &messages);

// Rendering for models without a chat template.
QString chatML(const QList<ChatMessage> &messages);

} // namespace PromptTemplate

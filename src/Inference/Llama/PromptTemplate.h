// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inference/ChatMessage.h"

#include <QList>
#include <QString>

#include <functional>

struct llama_chat_message;

// Turns a conversation into the one text that a model is fed. Pure but for the call of `Apply`; any thread.
namespace PromptTemplate {

// Renders `count` messages into `buffer` of `size` bytes, the opening of an assistant's turn at the end.
// Gives the number of bytes that the whole rendering needs (it may exceed `size`), or a negative number when
// no template could be applied. This is llama_chat_apply_template with its template already given.
using Apply = std::function<qint32(const llama_chat_message *chat, size_t count, char *buffer, qint32 size)>;

// The prompt of this conversation; ChatML when `apply` cannot render it. Never fails: what makes it
// impossible (no memory, a conversation of more than a gigabyte) ends the process.
QString render(const QList<ChatMessage> &messages, const Apply &apply) noexcept;

// The bytes that are offered to the first call of `apply`: twice the content's UTF-8 and 64 for each
// message's markers.
qint32 bufferSize(const QList<ChatMessage> &messages);

// The rendering for models without a template of their own.
QString chatML(const QList<ChatMessage> &messages);

} // namespace PromptTemplate

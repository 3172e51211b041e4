// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/PromptTemplate.h"

#include "Inference/Llama/LibraryCount.h"
#include "Inference/Utf8.h"

#include <llama.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Free
{
    void operator()(char *text) const { std::free(text); }
};
using OwnedCString = std::unique_ptr<char, Free>;

OwnedCString copied(const QString &text)
{
    OwnedCString copy(strdup(text.toUtf8().constData()));
    if (!copy)
        qFatal("No memory for a chat message");
    return copy;
}

// The conversation in llama.cpp's form; owns the strings.
class Chat
{
public:
    explicit Chat(const QList<ChatMessage> &messages)
    {
        for (const ChatMessage &message : messages) {
            const OwnedCString &role = m_texts.emplace_back(copied(ChatMessage::rawValue(message.role)));
            const char *const rolePointer = role.get();
            const OwnedCString &content = m_texts.emplace_back(copied(message.content));
            m_messages.push_back({rolePointer, content.get()});
        }
    }

    const llama_chat_message *data() const { return m_messages.data(); }
    size_t size() const { return m_messages.size(); }

private:
    std::vector<OwnedCString> m_texts;
    std::vector<llama_chat_message> m_messages;
};

constexpr qint64 markerBytes = 64;

} // namespace

QString PromptTemplate::render(const QList<ChatMessage> &messages, const Apply &apply) noexcept
{
    const Chat chat(messages);
    QByteArray buffer(bufferSize(messages), '\0');
    qint32 length = apply(chat.data(), chat.size(), buffer.data(), libraryCount(buffer.size()));
    if (length > buffer.size()) {
        buffer.fill('\0', libraryCount(qint64(length) + 1));
        length = apply(chat.data(), chat.size(), buffer.data(), libraryCount(buffer.size()));
    }
    if (length < 0)
        return chatML(messages);
    return Utf8::repaired(QByteArrayView(buffer).first(std::min<qsizetype>(length, buffer.size())));
}

qint32 PromptTemplate::bufferSize(const QList<ChatMessage> &messages)
{
    qint64 bytes = 0;
    for (const ChatMessage &message : messages)
        bytes += message.content.toUtf8().size() + markerBytes;
    return libraryCount(2 * bytes);
}

QString PromptTemplate::chatML(const QList<ChatMessage> &messages)
{
    QString prompt;
    for (const ChatMessage &message : messages) {
        prompt += "<|im_start|>"_L1 + ChatMessage::rawValue(message.role) + u'\n' + message.content +
                  "<|im_end|>\n"_L1;
    }
    return prompt + "<|im_start|>assistant\n"_L1;
}

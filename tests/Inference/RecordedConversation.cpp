// SPDX-License-Identifier: Apache-2.0
#include "Inference/RecordedConversation.h"

#include "Agent/SystemPrompt.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

QList<ChatMessage> RecordedConversation::read(int steps)
{
    QFile file(QStringLiteral(ORVANE_CONVERSATIONS "/%1-steps.json").arg(steps));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no conversation of %d steps", steps);
    QList<ChatMessage> conversation = {{ChatMessage::Role::System, SystemPrompt::text()}};
    const QJsonArray messages = QJsonDocument::fromJson(file.readAll()).array();
    for (const QJsonValue &message : messages) {
        conversation.append({ChatMessage::roleFromRawValue(message["role"_L1].toString()).value(),
                             message["content"_L1].toString()});
    }
    return conversation;
}

QList<QList<ChatMessage>> RecordedConversation::prompts(const QList<ChatMessage> &conversation)
{
    QList<QList<ChatMessage>> prompts;
    for (qsizetype count = 1; count <= conversation.size(); ++count) {
        if (conversation[count - 1].role == ChatMessage::Role::User)
            prompts.append(conversation.first(count));
    }
    return prompts;
}

QList<QString> RecordedConversation::texts(const QList<ChatMessage> &conversation)
{
    QList<QString> texts;
    for (const ChatMessage &message : conversation)
        texts.append(message.content);
    return texts;
}

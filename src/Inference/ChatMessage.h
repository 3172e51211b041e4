// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// One message of the conversation with the model. A plain value; content of any length, line breaks included.
struct ChatMessage
{
    enum class Role { System, User, Assistant };

    // "system", "user", "assistant"; from text, exactly these three and nothing else. Orvane itself only
    // writes them; whoever reads a stored conversation needs the way back.
    static QString rawValue(Role role);
    static std::optional<Role> roleFromRawValue(const QString &text);

    Role role = Role::User;
    QString content;

    friend bool operator==(const ChatMessage &, const ChatMessage &) = default;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// One message of a conversation with the model. A plain value.
struct ChatMessage
{
    enum class Role { System, User, Assistant };

    // Role names: "system", "user", "assistant". Any other text has no role.
    static QString rawValue(Role role);
    static std::optional<Role> roleFromRawValue(const QString &text);

    Role role = Role::User;
    QString content;

    friend bool operator==(const ChatMessage &, const ChatMessage &) = default;
};

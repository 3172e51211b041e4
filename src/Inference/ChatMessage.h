// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// One message of a conversation with the model. A plain value.
struct ChatMessage
{
    enum class Role { System, User, Assistant };

    // Role names: "system", "user", "assistant". Any other text has no role. Orvane itself only writes them;
    // readers of a stored conversation need the inverse.
    static QString rawValue(Role role);
    static std::optional<Role> roleFromRawValue(const QString &text);

    Role role = Role::User;
    QString content;

    friend bool operator==(const ChatMessage &, const ChatMessage &) = default;
};

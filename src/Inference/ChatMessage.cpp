// SPDX-License-Identifier: Apache-2.0
#include "Inference/ChatMessage.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Role = ChatMessage::Role;

const std::array<std::pair<Role, QString>, 3> roleNames = {{
    {Role::System, u"system"_s},
    {Role::User, u"user"_s},
    {Role::Assistant, u"assistant"_s},
}};

} // namespace

QString ChatMessage::rawValue(Role role)
{
    for (const auto &[known, name] : roleNames) {
        if (known == role)
            return name;
    }
    Q_UNREACHABLE();
}

std::optional<ChatMessage::Role> ChatMessage::roleFromRawValue(const QString &text)
{
    for (const auto &[role, name] : roleNames) {
        if (name == text)
            return role;
    }
    return std::nullopt;
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QUuid>

#include <optional>

// One step requested by the model: the name and arguments of an action. An immutable value created by
// `parse`, usable from any thread.
struct AgentAction
{
    QUuid id;                    // new for each parse
    QString name;                // lower case, such as "open_app"
    QMap<QString, QString> args; // unchanged; numbers and lists as text

    // Parses the first JSON object in the reply, ignoring any text around it. Returns nothing if there is no
    // complete, strictly valid object that names an action. Accepts unknown names and keys. Never throws.
    static std::optional<AgentAction> parse(const QString &text);

    // The argument, trimmed; nothing if it is missing or blank.
    std::optional<QString> arg(const QString &key) const;

    // The action's label. Quotes the arguments unchanged; the view must mark invisible characters.
    QString title() const;
};

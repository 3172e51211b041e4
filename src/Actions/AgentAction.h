// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>
#include <QUuid>

#include <optional>

// One step that the model asks for: the action's name and its arguments. A plain value, made by `parse` and
// never changed afterwards; usable on any thread.
struct AgentAction
{
    QUuid id;                    // new with every successful parse
    QString name;                // lower-cased, "open_app"
    QMap<QString, QString> args; // keys and values as the model wrote them; numbers and lists as text

    // The first JSON object in the model's reply, whatever stands around it. Nothing when the reply holds no
    // complete, strictly valid object that names an action. Unknown names and keys are accepted. Never
    // throws.
    static std::optional<AgentAction> parse(const QString &text);

    // The argument without white space at both ends; one that is missing or blank is absent.
    std::optional<QString> arg(const QString &key) const;

    // The label of the action, with the arguments as the model wrote them: whoever shows it marks what cannot
    // be seen in it.
    QString title() const;
};

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptCommand.h"

#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QStringList>

// The messages that a script composes with `make new outgoing message` and `make new to recipient`. At the
// script's end they are opened in the mail program, where the user sends them. Thread: main.
class MailDrafts
{
public:
    // Returns nothing for other commands. Throws ScriptError, also for `send`.
    std::optional<ScriptValue> perform(const ScriptCommand &command);

    // Throws ActionError or PlatformError.
    QCoro::Task<void> open(Desktop desktop) const;

private:
    struct Draft
    {
        QString application;
        QString subject;
        QString content;
        QHash<QString, QStringList> recipients; // the addresses, by class: "to recipient"

        QString address() const; // of the scheme mailto
    };

    ScriptValue compose(const ScriptCommand &command);
    void addRecipient(const QString &kind, const ScriptCommand &command);
    std::optional<ScriptValue> getOrSet(const ScriptCommand &command);
    Draft *draft(const ScriptValue &object);

    QList<Draft> m_drafts;
};

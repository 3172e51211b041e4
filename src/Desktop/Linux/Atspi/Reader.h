// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// What is read of one element; its texts are cleaned.
struct AtspiReading
{
    AtspiReference object;
    AtspiRole parentRole = AtspiRole::Invalid;

    const AtspiCacheItem *cached = nullptr; // what the cache holds of it; null where that left it out
    AtspiRole role = AtspiRole::Invalid;
    QString axRole;
    QString name;
    QString description;
    QString value;
    QString help;
    QList<AtspiReference> children;
};

// Reads many elements of one application in one go: first the structure, then, of the elements with an AX
// role only (nobody looks at the others' texts), one kind of text after the other. The value is read of text
// fields (never of a password field); the description, a static text's value and the help each only where no
// text before it says anything, for the label is the first of them. What the cache and the outline hold is
// not asked again.
//
// Main thread; must stay alive while `read` is awaited.
class AtspiReader
{
public:
    // Of each reading, `object` and `parentRole` are given. The outline grows by what is read.
    AtspiReader(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
                std::shared_ptr<AtspiOutline> outline, QList<AtspiReading> readings);

    // An element that has vanished stays as it was given. Throws PlatformError as AtspiApplication does.
    QCoro::Task<void> read();
    const QList<AtspiReading> &readings() const { return m_readings; }

    // Only so much of a long text is asked for; in the protocol's characters.
    static constexpr int longestText = 1000;

private:
    // The call that asks for a text, none where it is not wanted.
    using Question = std::function<std::optional<QDBusMessage>(const AtspiReading &)>;
    using Answer = std::function<QString(const QDBusMessage &)>;

    QCoro::Task<void> outline(QList<qsizetype> incomplete);
    QCoro::Task<void> readStructure();
    QCoro::Task<void> readContents();
    QCoro::Task<void> readNumbers();
    QCoro::Task<void> readTexts(QString AtspiReading::*text, Question question, Answer answer);
    QList<qsizetype> useCache();
    bool knowsChildren(const AtspiCacheItem &item) const;
    bool isPlainText(const AtspiReading &reading) const;
    bool speaksByItsText(const AtspiReading &reading) const;

    std::shared_ptr<AtspiApplication> m_application;
    std::shared_ptr<const AtspiCache> m_cache;
    std::shared_ptr<AtspiOutline> m_outline;
    QList<AtspiReading> m_readings;
};

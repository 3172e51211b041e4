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

// What is read from one element. Texts are cleaned.
struct AtspiReading
{
    AtspiReference object;
    AtspiRole parentRole = AtspiRole::Invalid;

    const AtspiCacheItem *cached = nullptr; // null if not in the cache
    AtspiRole role = AtspiRole::Invalid;
    QString axRole;
    QString name;
    QString description;
    QString value;
    QString help;
    QList<AtspiReference> children;
};

// Reads a batch of elements of one application: first the structure, then, for elements with an AX role
// (texts of others are never used), one kind of text after another. The value is read for text fields, except
// password fields. The description, a static text's value and the help are each read only if all previous
// texts are empty, because the first non-empty one is the label. Uses the cache and the outline instead of
// calls where possible.
//
// Must stay alive while `read` is awaited. Thread: main.
class AtspiReader
{
public:
    // `object` and `parentRole` of each reading must be set. The outline is extended while reading.
    AtspiReader(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
                std::shared_ptr<AtspiOutline> outline, QList<AtspiReading> readings);

    // The reading of an element that no longer exists stays unchanged. Throws as AtspiApplication::exchange
    // does.
    QCoro::Task<void> read();
    const QList<AtspiReading> &readings() const { return m_readings; }

    // Longer texts are truncated; in the protocol's characters.
    static constexpr int longestText = 1000;

private:
    // The call that reads a text, or nothing if it isn't needed.
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
    bool needsTextContent(const AtspiReading &reading) const;

    std::shared_ptr<AtspiApplication> m_application;
    std::shared_ptr<const AtspiCache> m_cache;
    std::shared_ptr<AtspiOutline> m_outline;
    QList<AtspiReading> m_readings;
};

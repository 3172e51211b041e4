// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Recording/RecordingJournal.h"

#include <QMap>

// One element of a tree built from plain data.
struct RecordedElement
{
    QString role;
    std::optional<QString> title;
    std::optional<QString> description = std::nullopt;
    std::optional<QString> value = std::nullopt;
    std::optional<QString> help = std::nullopt;
    QList<AccessibilityElement> children = {}; // positions in the tree
    bool respondsToPress = true;
};

// A tree as a list of elements; the first is the application's own.
struct RecordedTree
{
    QList<RecordedElement> elements{{QStringLiteral("AXApplication"), std::nullopt}};
    std::optional<AccessibilityElement> frontWindow = std::nullopt;

    // Appends the element as the last child of `parent` and gives its position.
    AccessibilityElement add(AccessibilityElement parent, const RecordedElement &element);
};

// Accessibility in memory.
class RecordingAccessibility : public Accessibility
{
public:
    explicit RecordingAccessibility(RecordingJournal &journal) : m_journal(journal) {}

    bool trusted = true;
    bool trustGivenByUser = true;     // else asking is enough
    int prompts = 0;                  // how often the user was asked for the permission
    QMap<qint64, RecordedTree> trees; // by process; an application without one has an empty tree
    int requests = 0;                 // reads of any number of elements
    qsizetype elementsRead = 0;

    QCoro::Task<bool> isProcessTrusted() override;
    bool isTrustGivenByUser() const override { return trustGivenByUser; }
    QCoro::Task<void> requestTrust() override;
    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(qint64 processIdentifier) override;

private:
    RecordingJournal &m_journal;
};

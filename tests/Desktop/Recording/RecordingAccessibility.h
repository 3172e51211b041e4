// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Recording/RecordingJournal.h"

#include <QMap>

// An element of a recorded tree.
struct RecordedElement
{
    QString role;
    std::optional<QString> title;
    std::optional<QString> description = std::nullopt;
    std::optional<QString> value = std::nullopt;
    std::optional<QString> help = std::nullopt;
    QList<AccessibilityElement> children = {}; // indexes into the tree
    bool respondsToPress = true;
};

// A tree as a list of elements. The first is the application itself.
struct RecordedTree
{
    QList<RecordedElement> elements{{QStringLiteral("AXApplication"), std::nullopt}};
    std::optional<AccessibilityElement> frontWindow = std::nullopt;

    // Appends the element as the last child of `parent` and returns its index.
    AccessibilityElement add(AccessibilityElement parent, const RecordedElement &element);
};

// An in-memory accessibility service.
class RecordingAccessibility : public Accessibility
{
public:
    explicit RecordingAccessibility(RecordingJournal &journal) : m_journal(journal) {}

    bool trusted = true;
    bool trustGivenByUser = true;     // if false, a request is granted at once
    int prompts = 0;                  // number of permission requests
    QMap<qint64, RecordedTree> trees; // by process; other applications have an empty tree
    int requests = 0;                 // reads of any number of elements
    qsizetype elementsRead = 0;

    QCoro::Task<bool> isProcessTrusted() override;
    bool isTrustGivenByUser() const override { return trustGivenByUser; }
    QCoro::Task<void> requestTrust() override;
    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(RunningApplication application) override;

private:
    RecordingJournal &m_journal;
};

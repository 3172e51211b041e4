// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingAccessibility.h"

#include "Base/Text.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A snapshot of a recorded tree, for one walk.
class RecordingTree : public AccessibilityTree
{
public:
    RecordingTree(RecordedTree tree, RecordingAccessibility &owner, RecordingJournal &journal)
        : m_tree(std::move(tree)), m_owner(owner), m_journal(journal)
    {
    }

    AccessibilityElement root() const override { return 0; }
    std::optional<AccessibilityElement> frontWindow() const override { return m_tree.frontWindow; }

    QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) override
    {
        co_await m_journal.begin(RecordedOperation::ReadElements);
        m_owner.requests += 1;
        m_owner.elementsRead += elements.size();
        QList<AccessibilityAttributes> attributes;
        attributes.reserve(elements.size());
        for (const AccessibilityElement element : std::as_const(elements))
            attributes.append(attributesOf(element));
        co_return attributes;
    }

    QCoro::Task<bool> press(AccessibilityElement element) override
    {
        co_await m_journal.begin(RecordedOperation::Press);
        const RecordedElement &target = m_tree.elements.at(element);
        const QString name = target.title.value_or(target.description.value_or(QString()));
        m_journal.note(u"press %1 “%2”"_s.arg(target.role, name));
        co_return target.respondsToPress;
    }

private:
    AccessibilityAttributes attributesOf(AccessibilityElement element) const
    {
        const RecordedElement &source = m_tree.elements.at(element);
        return {source.role,
                Text::cleaned(source.title),
                Text::cleaned(source.description),
                Text::cleaned(source.value),
                Text::cleaned(source.help),
                source.children};
    }

    RecordedTree m_tree;
    RecordingAccessibility &m_owner;
    RecordingJournal &m_journal;
};

} // namespace

AccessibilityElement RecordedTree::add(AccessibilityElement parent, const RecordedElement &element)
{
    const auto position = static_cast<AccessibilityElement>(elements.size());
    elements.append(element);
    elements[parent].children.append(position);
    return position;
}

QCoro::Task<bool> RecordingAccessibility::isProcessTrusted()
{
    co_await m_journal.begin(RecordedOperation::IsProcessTrusted);
    co_return trusted;
}

QCoro::Task<void> RecordingAccessibility::requestTrust()
{
    co_await m_journal.begin(RecordedOperation::RequestTrust);
    m_journal.note(u"ask for the Accessibility permission"_s);
    prompts += 1;
    trusted = trusted || !trustGivenByUser;
}

QCoro::Task<std::shared_ptr<AccessibilityTree>>
RecordingAccessibility::applicationTree(RunningApplication application)
{
    co_await m_journal.begin(RecordedOperation::ApplicationTree);
    const std::shared_ptr<AccessibilityTree> tree =
        std::make_shared<RecordingTree>(trees.value(application.processIdentifier), *this, m_journal);
    co_return tree;
}

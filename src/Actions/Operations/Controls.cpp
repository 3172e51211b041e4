// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Controls.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/AccessibilityWalk.h"
#include "Actions/Trust.h"
#include "Base/PlatformWords.h"
#include "Base/Text.h"

#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr WalkLimits clickLimits{3000, 11};
constexpr WalkLimits readingLimits{1500, 9};
constexpr qsizetype mostLines = 40;
constexpr qsizetype longestLabel = 50;

const QSet<QString> &clickableRoles()
{
    static const QSet<QString> roles{
        u"AXButton"_s,   u"AXMenuItem"_s, u"AXMenuBarItem"_s, u"AXRadioButton"_s,
        u"AXCheckBox"_s, u"AXLink"_s,     u"AXTab"_s,         u"AXPopUpButton"_s,
    };
    return roles;
}

const QSet<QString> &readableRoles()
{
    static const QSet<QString> roles{
        u"AXButton"_s, u"AXTextField"_s,   u"AXMenuItem"_s, u"AXLink"_s,
        u"AXTab"_s,    u"AXRadioButton"_s, u"AXCheckBox"_s, u"AXStaticText"_s,
    };
    return roles;
}

// Finds the control to press: the first with exactly the wanted label, or else the first that contains it.
// Exact matches in the front window precede those elsewhere at any depth: a dialog's "Close" is not that of
// the window behind it.
class ControlSearch
{
public:
    ControlSearch(const AccessibilityTree &tree, const QString &wanted)
        : m_tree(tree), m_wanted(Text::comparisonKey(wanted))
    {
    }

    WalkStep visit(AccessibilityElement element, const AccessibilityAttributes &attributes)
    {
        const bool isInFront = followFrontWindow(element, attributes);
        if (clickableRoles().contains(attributes.role))
            compare(element, Controls::label(attributes), isInFront);
        return m_exact && (m_isExactInFront || m_aheadInFront.isEmpty()) ? WalkStep::Stop
                                                                         : WalkStep::Continue;
    }

    struct Match
    {
        AccessibilityElement element = 0;
        QString label;
    };
    const std::optional<Match> &match() const { return m_exact ? m_exact : m_partial; }

private:
    // Whether the element is in the front window; tracks the window's unvisited elements.
    bool followFrontWindow(AccessibilityElement element, const AccessibilityAttributes &attributes)
    {
        if (element == m_tree.root() && m_tree.frontWindow())
            m_aheadInFront.insert(*m_tree.frontWindow());
        if (!m_aheadInFront.remove(element))
            return false;
        m_aheadInFront.unite(QSet(attributes.children.cbegin(), attributes.children.cend()));
        return true;
    }

    void compare(AccessibilityElement element, const QString &label, bool isInFront)
    {
        const QString key = Text::comparisonKey(label);
        if (key == m_wanted && (!m_exact || isInFront)) {
            m_exact = Match{element, label};
            m_isExactInFront = isInFront;
        } else if (!m_partial && key.contains(m_wanted)) {
            m_partial = Match{element, label};
        }
    }

    const AccessibilityTree &m_tree;
    QString m_wanted;
    QSet<AccessibilityElement> m_aheadInFront;
    std::optional<Match> m_exact;
    bool m_isExactInFront = false;
    std::optional<Match> m_partial;
};

QCoro::Task<void> requireFrontmost(ActionTarget target, Desktop desktop)
{
    co_await Trust::requireTrust(PlatformWords::current().controlsRefusal, desktop);
    target.requireFound();
    if (!target.frontmost)
        throw ActionError(u"No frontmost app."_s);
}

// Returns "Button: Save", or nothing if the element is not readable.
std::optional<QString> lineFor(const AccessibilityAttributes &element)
{
    const QString label = Controls::label(element);
    if (label.isEmpty() || !readableRoles().contains(element.role))
        return std::nullopt;
    return element.role.mid(2) + u": "_s + Text::firstCharacters(label, longestLabel);
}

} // namespace

std::optional<QString> Controls::attr(const AccessibilityAttributes &element, const QString &name)
{
    if (name == "AXTitle"_L1)
        return element.title;
    if (name == "AXDescription"_L1)
        return element.description;
    if (name == "AXValue"_L1)
        return element.value;
    if (name == "AXHelp"_L1)
        return element.help;
    if (name == "AXRole"_L1 && !element.role.isEmpty())
        return element.role;
    return std::nullopt;
}

QString Controls::label(const AccessibilityAttributes &element)
{
    for (const auto &text : {element.title, element.description, element.value, element.help}) {
        if (text && !text->isEmpty())
            return *text;
    }
    return QString();
}

QList<AccessibilityElement> Controls::children(const AccessibilityAttributes &element)
{
    return element.children;
}

QCoro::Task<std::shared_ptr<AccessibilityTree>> Controls::frontWindowRoot(ActionTarget target,
                                                                          Desktop desktop)
{
    co_await requireFrontmost(target, desktop);
    co_return co_await desktop.accessibility.applicationTree(*target.frontmost);
}

QCoro::Task<std::optional<ActionTarget::Control>>
Controls::findControl(std::shared_ptr<AccessibilityTree> tree, QString wanted)
{
    ControlSearch search(*tree, wanted);
    const WalkVisitor visitor = [&search](AccessibilityElement element,
                                          const AccessibilityAttributes &attributes) {
        return search.visit(element, attributes);
    };
    co_await walkBreadthFirst(tree, clickLimits, visitor);
    if (!search.match())
        co_return std::nullopt;
    co_return ActionTarget::Control{tree, search.match()->element, search.match()->label};
}

QCoro::Task<QString> Controls::click(QString label, ActionTarget target, Desktop desktop)
{
    co_await requireFrontmost(target, desktop);
    if (!target.control)
        throw ActionError(u"Couldn't find a control labelled “%1”."_s.arg(label));
    const bool pressed = co_await target.control->tree->press(target.control->element);
    if (!pressed)
        throw ActionError(u"“%1” didn't respond to a click."_s.arg(label));
    co_return u"Clicked “%1”."_s.arg(label);
}

QCoro::Task<QString> Controls::readUI(ActionTarget target, Desktop desktop)
{
    const std::shared_ptr<AccessibilityTree> tree = co_await frontWindowRoot(target, desktop);
    QStringList lines;
    const WalkVisitor visitor = [&lines](AccessibilityElement, const AccessibilityAttributes &attributes) {
        const std::optional<QString> line = lineFor(attributes);
        if (line && !lines.contains(*line))
            lines.append(*line);
        return lines.size() < mostLines ? WalkStep::Continue : WalkStep::Stop;
    };
    co_await walkBreadthFirst(tree, readingLimits, visitor);
    co_return lines.isEmpty() ? u"No readable controls found."_s : lines.join(u" | "_s);
}

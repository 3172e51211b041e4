// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/ScriptControls.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/AccessibilityWalk.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Controls.h"
#include "Actions/Trust.h"
#include "Base/PlatformWords.h"
#include "Base/Text.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QCoreApplication>
#include <QHash>

using namespace Qt::StringLiterals;

namespace {

constexpr WalkLimits limits{3000, 11};

QString roleOf(const QString &className)
{
    static const QHash<QString, QString> roles{
        {u"button"_s, u"AXButton"_s},
        {u"menu item"_s, u"AXMenuItem"_s},
        {u"menu bar item"_s, u"AXMenuBarItem"_s},
        {u"checkbox"_s, u"AXCheckBox"_s},
        {u"radio button"_s, u"AXRadioButton"_s},
        {u"pop up button"_s, u"AXPopUpButton"_s},
    };
    return roles.value(className);
}

bool isProcess(const ScriptObject &object)
{
    return object.name == u"process" || object.name == u"application process";
}

// The control with the wanted role and name or number, below all named containers.
class Search
{
public:
    Search(const AccessibilityTree &tree, const ScriptObject &control)
        : m_tree(tree), m_role(roleOf(control.name)), m_key(control.key)
    {
        const ScriptObject *container = control.container.get();
        for (; container && !isProcess(*container); container = container->container.get()) {
            if (container->key.is<QString>())
                m_containers.append(Text::comparisonKey(container->key.as<QString>()));
            m_isInFrontWindow =
                m_isInFrontWindow || (container->name == u"window" && container->key.isNumber());
        }
    }

    WalkStep visit(AccessibilityElement element, const AccessibilityAttributes &attributes)
    {
        const QString label = Text::comparisonKey(Controls::label(attributes));
        for (const AccessibilityElement child : attributes.children)
            m_parents.insert(child, {element, label});
        if (attributes.role == m_role && isBelowContainers(element) && isWanted(label))
            m_found = element;
        return m_found ? WalkStep::Stop : WalkStep::Continue;
    }

    std::optional<AccessibilityElement> found() const { return m_found; }

private:
    struct Parent
    {
        AccessibilityElement element = 0;
        QString label;
    };

    bool isWanted(const QString &label)
    {
        if (m_key.is<QString>())
            return label == Text::comparisonKey(m_key.as<QString>());
        return m_key.is<qint64>() && ++m_count == m_key.as<qint64>();
    }

    bool isBelowContainers(AccessibilityElement element) const
    {
        QStringList missing = m_containers;
        bool isInFront = !m_isInFrontWindow || !m_tree.frontWindow();
        while (m_parents.contains(element)) {
            const Parent parent = m_parents.value(element);
            missing.removeAll(parent.label);
            element = parent.element;
            isInFront = isInFront || element == *m_tree.frontWindow();
        }
        return missing.isEmpty() && isInFront;
    }

    const AccessibilityTree &m_tree;
    QString m_role;
    ScriptValue m_key;
    QStringList m_containers; // comparison keys
    bool m_isInFrontWindow = false;
    QHash<AccessibilityElement, Parent> m_parents;
    qint64 m_count = 0;
    std::optional<AccessibilityElement> m_found;
};

// The process in which the control is; the frontmost application if none is named.
QCoro::Task<RunningApplication> ownerOf(ScriptValue::Object control, Desktop desktop)
{
    const ScriptObject *process = control.get();
    while (process && !isProcess(*process))
        process = process->container.get();
    std::optional<RunningApplication> owner;
    if (process && process->key.is<QString>()) {
        const QString name = process->key.as<QString>();
        owner = co_await Applications::running(name, desktop);
        if (!owner)
            throw ScriptError(u"“%1” is not running."_s.arg(name), ScriptError::NoSuchObject);
    } else {
        owner = co_await desktop.workspace.frontmostApplication();
        if (!owner)
            throw ScriptError(u"No application is frontmost."_s, ScriptError::NoSuchObject);
    }
    // A script must not answer our own questions.
    if (owner->processIdentifier == QCoreApplication::applicationPid())
        throw ScriptError(u"Scripts can't control this program."_s);
    co_return *owner;
}

} // namespace

QCoro::Task<void> ScriptControls::press(ScriptValue::Object control, Desktop desktop)
{
    co_await Trust::requireTrust(PlatformWords::current().controlsRefusal, desktop);
    const QString described = ScriptCoercion::source(control);
    if (roleOf(control->name).isEmpty())
        throw ScriptError(u"Scripts can't click %1."_s.arg(described), ScriptError::NotUnderstood);
    const RunningApplication owner = co_await ownerOf(control, desktop);
    const std::shared_ptr<AccessibilityTree> tree = co_await desktop.accessibility.applicationTree(owner);
    Search search(*tree, *control);
    const WalkVisitor visitor = [&search](AccessibilityElement element,
                                          const AccessibilityAttributes &attributes) {
        return search.visit(element, attributes);
    };
    co_await walkBreadthFirst(tree, limits, visitor);
    if (!search.found())
        throw ScriptError(u"Can’t get %1."_s.arg(described), ScriptError::NoSuchObject);
    const bool isPressed = co_await tree->press(*search.found());
    if (!isPressed)
        throw ScriptError(u"%1 didn't respond to a click."_s.arg(described));
}

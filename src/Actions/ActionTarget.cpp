// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionTarget.h"

#include "Actions/ActionDefinition.h"
#include "Actions/ActionError.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Controls.h"
#include "Actions/SessionGate.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<std::optional<ActionTarget::Control>> controlIn(RunningApplication application, QString label,
                                                            Desktop desktop)
{
    const std::shared_ptr<AccessibilityTree> tree =
        co_await desktop.accessibility.applicationTree(application);
    co_return co_await Controls::findControl(tree, label);
}

// Finds nothing without the permission; the action itself requests it.
QCoro::Task<std::optional<ActionTarget::Control>> controlFor(AgentAction action, ActionTarget found,
                                                             Desktop desktop)
{
    const std::optional<QString> label = action.arg(u"label"_s);
    if (kindOf(action) != ActionKind::Click || !label || !found.frontmost)
        co_return std::nullopt;
    const bool isTrusted = co_await desktop.accessibility.isProcessTrusted();
    if (!isTrusted)
        co_return std::nullopt;
    co_return co_await controlIn(*found.frontmost, *label, desktop);
}

QCoro::Task<std::optional<RunningApplication>> quittingFor(AgentAction action, Desktop desktop)
{
    const std::optional<QString> name = action.arg(u"app"_s);
    if (kindOf(action) != ActionKind::QuitApp || !name)
        co_return std::nullopt;
    co_return co_await Applications::running(*name, desktop);
}

bool isCalled(const ActionTarget::Control &control, const QString &label)
{
    return Text::equals(control.label, label);
}

} // namespace

QCoro::Task<ActionTarget> ActionTarget::find(AgentAction action, Desktop desktop)
{
    ActionTarget found;
    try {
        co_await SessionGate::requireSessionFor(action, desktop);
        found.quitting = co_await quittingFor(action, desktop);
        const ActionDefinition *definition = definitionOf(action);
        if (definition && definition->needsFocus(action))
            found.frontmost = co_await desktop.workspace.frontmostApplication();
        found.control = co_await controlFor(action, found, desktop);
    } catch (const LocalizedError &) {
        found.failure = std::current_exception();
    }
    co_return found;
}

QCoro::Task<ActionTarget> ActionTarget::findApproved(AgentAction action, ActionTarget judged, Desktop desktop)
{
    if (!judged.frontmost)
        co_return judged;
    co_await Applications::returnTo(*judged.frontmost, desktop);
    ActionTarget now;
    now.frontmost = judged.frontmost;
    now.control = co_await controlFor(action, now, desktop);
    const QString wanted = action.arg(u"label"_s).value_or(QString());
    const bool isSame = !now.control || isCalled(*now.control, wanted) ||
                        (judged.control && isCalled(*now.control, judged.control->label));
    if (!isSame)
        throw ActionError(u"“%1” is another control now, so nothing was pressed."_s.arg(wanted));
    co_return now;
}

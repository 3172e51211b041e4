// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionTarget.h"

#include "Actions/ActionError.h"
#include "Actions/ActionKind.h"
#include "Actions/Executor.h"
#include "Actions/Operations/Accessibility.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Session.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<std::optional<ActionTarget::Control>> controlIn(RunningApplication application, QString label,
                                                            Desktop desktop)
{
    const std::shared_ptr<AccessibilityTree> tree =
        co_await desktop.accessibility.applicationTree(application.processIdentifier);
    co_return co_await Executor::findControl(tree, label);
}

// Without the permission nothing is looked for; the action itself asks for it.
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
    co_return co_await Executor::running(*name, desktop);
}

bool isCalled(const ActionTarget::Control &control, const QString &label)
{
    return Text::equals(control.label, label);
}

} // namespace

QCoro::Task<ActionTarget> Executor::target(AgentAction action, Desktop desktop)
{
    ActionTarget found;
    try {
        co_await requireSessionFor(action, desktop);
        found.quitting = co_await quittingFor(action, desktop);
        if (actsOnFrontmostApplication(action))
            found.frontmost = co_await desktop.workspace.frontmostApplication();
        found.control = co_await controlFor(action, found, desktop);
    } catch (const LocalizedError &) {
        found.failure = std::current_exception();
    }
    co_return found;
}

QCoro::Task<ActionTarget> Executor::approvedTarget(AgentAction action, ActionTarget judged, Desktop desktop)
{
    if (!judged.frontmost)
        co_return judged;
    co_await returnTo(*judged.frontmost, desktop);
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

// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/WebActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Keyboard.h"
#include "Actions/Operations/Web.h"
#include "Actions/Operations/WebAddress.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> WebActions::openURL(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString url = Arguments::required(action, u"url"_s, u"url"_s);
    co_return co_await Executor::openURL(url, action.arg(u"app"_s), desktop);
}

QString WebActions::openURLTitle(const AgentAction &action)
{
    QString address = Arguments::shown(action, u"url"_s);
    address.remove("https://"_L1).remove("http://"_L1);
    return u"Navigating to "_s + Text::trimmed(address, u"/");
}

QCoro::Task<QString> WebActions::webSearch(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString query = Arguments::required(action, u"query"_s, u"query"_s);
    const QString address = Executor::searchAddress(query);
    co_return co_await Executor::openURL(address, action.arg(u"app"_s), desktop);
}

QString WebActions::webSearchTitle(const AgentAction &action)
{
    return u"Searching for “%1”"_s.arg(Arguments::shown(action, u"query"_s));
}

QCoro::Task<QString> WebActions::newTab(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<QString> name = action.arg(u"app"_s);
    const QString key = u"t"_s;
    const QStringList modifiers{u"command"_s};
    if (name) {
        co_await Executor::launch(*name, desktop);
        co_await Executor::keystroke(key, modifiers, desktop);
    } else {
        target.requireFound();
        co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    }
    co_return u"Opened a new tab."_s;
}

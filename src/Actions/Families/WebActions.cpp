// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/WebActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Browsing.h"
#include "Actions/Operations/Keys.h"
#include "Actions/Operations/WebAddress.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runOpenURL(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString url = Arguments::required(action, u"url"_s, u"url"_s);
    co_return co_await Browsing::openURL(url, action.arg(u"app"_s), desktop);
}

QString openURLTitle(const AgentAction &action)
{
    QString address = Arguments::shown(action, u"url"_s);
    address.remove("https://"_L1).remove("http://"_L1);
    return u"Navigating to "_s + Text::trimmed(address, u"/");
}

QCoro::Task<QString> runWebSearch(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString query = Arguments::required(action, u"query"_s, u"query"_s);
    const QString address = WebAddress::forSearch(query);
    co_return co_await Browsing::openURL(address, action.arg(u"app"_s), desktop);
}

QString webSearchTitle(const AgentAction &action)
{
    return u"Searching for “%1”"_s.arg(Arguments::shown(action, u"query"_s));
}

QCoro::Task<QString> runNewTab(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<QString> name = action.arg(u"app"_s);
    const QString key = u"t"_s;
    const QStringList modifiers{u"command"_s};
    if (name) {
        co_await Applications::launch(*name, desktop);
        co_await Keys::keystroke(key, modifiers, desktop);
    } else {
        target.requireFound();
        co_await Keys::keystroke(key, modifiers, target.frontmost, desktop);
    }
    co_return u"Opened a new tab."_s;
}

QString newTabTitle(const AgentAction &)
{
    return u"Opening new tab"_s;
}

} // namespace

constinit const ActionDefinition WebActions::openUrl{
    .name = u"open_url",
    .title = &openURLTitle,
    .run = &runOpenURL,
};

constinit const ActionDefinition WebActions::webSearch{
    .name = u"web_search",
    .title = &webSearchTitle,
    .run = &runWebSearch,
};

constinit const ActionDefinition WebActions::newTab{
    .name = u"new_tab",
    .title = &newTabTitle,
    .run = &runNewTab,
    .focus = ActionDefinition::Focus::NeededUnlessAppIsNamed,
};

// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/LogEntryAppearance.h"

#include "ContentView/ViewModels/ShownText.h"

using namespace Qt::StringLiterals;

using Kind = LogEntry::Kind;

QString LogEntryAppearance::shownText(const LogEntry &entry)
{
    return entry.kind == Kind::success ? ShownText::lines(entry.text) : ShownText::line(entry.text);
}

LogEntryAppearance::Role LogEntryAppearance::textRole(const LogEntry &entry)
{
    if (entry.kind == Kind::success)
        return Primary;
    if (entry.kind == Kind::failure)
        return Bad;
    return entry.running ? Primary : Secondary;
}

QString LogEntryAppearance::symbol(LogEntry::Kind kind)
{
    switch (kind) {
    case Kind::step:
        return u"checkmark"_s;
    case Kind::success:
        return u"checkmark.circle.fill"_s;
    case Kind::failure:
        return u"xmark.circle.fill"_s;
    case Kind::info:
        return u"info.circle"_s;
    case Kind::confirm:
        return u"hand.raised.fill"_s;
    }
    Q_UNREACHABLE();
}

LogEntryAppearance::Role LogEntryAppearance::symbolRole(LogEntry::Kind kind)
{
    switch (kind) {
    case Kind::success:
        return Good;
    case Kind::failure:
        return Bad;
    case Kind::confirm:
        return Warning;
    case Kind::step:
    case Kind::info:
        return Secondary;
    }
    Q_UNREACHABLE();
}

QString LogEntryAppearance::spoken(const LogEntry &entry)
{
    if (entry.running)
        return u"running"_s;
    switch (entry.kind) {
    case Kind::step:
        return u"carried out"_s;
    case Kind::success:
        return u"done"_s;
    case Kind::failure:
        return u"failed"_s;
    case Kind::info:
        return u"note"_s;
    case Kind::confirm:
        return u"waits for your approval"_s;
    }
    Q_UNREACHABLE();
}

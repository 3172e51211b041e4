// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/LogEntryAppearance.h"

#include "ContentView/ViewModels/ShownText.h"

using namespace Qt::StringLiterals;

using Kind = LogEntry::Kind;

QString LogEntryAppearance::shownText(const LogEntry &entry)
{
    return entry.kind == Kind::Success ? ShownText::lines(entry.text) : ShownText::line(entry.text);
}

LogEntryAppearance::Role LogEntryAppearance::textRole(const LogEntry &entry)
{
    if (entry.kind == Kind::Success)
        return Primary;
    if (entry.kind == Kind::Failure)
        return Bad;
    return entry.running ? Primary : Secondary;
}

QString LogEntryAppearance::symbol(LogEntry::Kind kind)
{
    switch (kind) {
    case Kind::Step:
        return u"checkmark"_s;
    case Kind::Success:
        return u"checkmark.circle.fill"_s;
    case Kind::Failure:
        return u"xmark.circle.fill"_s;
    case Kind::Info:
        return u"info.circle"_s;
    case Kind::Confirm:
        return u"hand.raised.fill"_s;
    }
    Q_UNREACHABLE();
}

LogEntryAppearance::Role LogEntryAppearance::symbolRole(LogEntry::Kind kind)
{
    switch (kind) {
    case Kind::Success:
        return Good;
    case Kind::Failure:
        return Bad;
    case Kind::Confirm:
        return Warning;
    case Kind::Step:
    case Kind::Info:
        return Secondary;
    }
    Q_UNREACHABLE();
}

QString LogEntryAppearance::spoken(const LogEntry &entry)
{
    if (entry.running)
        return u"running"_s;
    switch (entry.kind) {
    case Kind::Step:
        return u"carried out"_s;
    case Kind::Success:
        return u"done"_s;
    case Kind::Failure:
        return u"failed"_s;
    case Kind::Info:
        return u"note"_s;
    case Kind::Confirm:
        return u"waits for your approval"_s;
    }
    Q_UNREACHABLE();
}

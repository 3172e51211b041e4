// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacScripting.h"

#include "Base/Text.h"

#import <Foundation/Foundation.h>

namespace {

std::optional<QString> text(id value)
{
    if (![value isKindOfClass:NSString.class])
        return std::nullopt;
    NSString *string = value;
    return Text::cleaned(QString::fromNSString(string));
}

ScriptOutcome outcomeOf(const QString &source)
{
    ScriptOutcome outcome;
    NSAppleScript *script = [[NSAppleScript alloc] initWithSource:source.toNSString()];
    outcome.created = script != nil;
    if (!script)
        return outcome;
    NSDictionary<NSString *, id> *error = nil;
    NSAppleEventDescriptor *result = [script executeAndReturnError:&error];
    if (error)
        outcome.error = text(error[NSAppleScriptErrorMessage]);
    else
        outcome.text = text(result.stringValue);
    return outcome;
}

} // namespace

QCoro::Task<ScriptOutcome> MacScripting::run(QString source)
{
    co_return outcomeOf(source);
}

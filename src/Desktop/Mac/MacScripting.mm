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
    NSAppleScript *script = [[NSAppleScript alloc] initWithSource:source.toNSString()];
    if (!script)
        return {ScriptOutcome::Ending::NotCreated, std::nullopt};
    NSDictionary<NSString *, id> *error = nil;
    NSAppleEventDescriptor *result = [script executeAndReturnError:&error];
    if (error)
        return {ScriptOutcome::Ending::Failed, text(error[NSAppleScriptErrorMessage])};
    return {ScriptOutcome::Ending::Succeeded, text(result.stringValue)};
}

} // namespace

QCoro::Task<ScriptOutcome> MacScripting::run(QString source, ScriptHost &)
{
    co_return outcomeOf(source);
}

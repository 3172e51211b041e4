// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/EntryCommand.h"

namespace {

struct Span
{
    qsizetype start = 0;
    qsizetype end = 0; // one past the last character, including a closing quote
};

// The first word at or after `position`; double quotes may enclose blanks.
Span wordAt(const QString &command, qsizetype position)
{
    while (position < command.size() && command[position].isSpace())
        ++position;
    Span word{position, position};
    bool isQuoted = false;
    while (word.end < command.size() && (isQuoted || !command[word.end].isSpace())) {
        if (command[word.end] == u'"')
            isQuoted = !isQuoted;
        ++word.end;
    }
    return word;
}

Span programSpan(const QString &command)
{
    const auto text = [&command](const Span &word) { return command.mid(word.start, word.end - word.start); };
    Span word = wordAt(command, 0);
    if (text(word).section(u'/', -1) != u"env")
        return word;
    do
        word = wordAt(command, word.end);
    while (text(word).contains(u'=') || text(word).startsWith(u'-'));
    return word;
}

} // namespace

QString EntryCommand::program(const QString &command)
{
    const Span word = programSpan(command);
    return command.mid(word.start, word.end - word.start).remove(u'"');
}

QString EntryCommand::withArgument(const QString &command, const QString &argument)
{
    return QString(command).insert(programSpan(command).end, u' ' + argument);
}

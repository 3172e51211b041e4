// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptVocabulary.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

using Direct = ScriptCommandForm::Direct;
using Phrases = QHash<QString, ScriptPhrase>;

const QList<ScriptCommandForm> &commands()
{
    static const QList<ScriptCommandForm> forms{
        // The language
        {u"count"_s, Direct::Operand, {}},
        {u"get"_s, Direct::Value, {}},
        {u"log"_s, Direct::Value, {}},
        // Standard additions
        {u"current date"_s, Direct::None, {}},
        {u"delay"_s, Direct::Value, {}},
        {u"beep"_s, Direct::Value, {}},
        {u"round"_s, Direct::Value, {u"rounding"_s}},
        {u"random number"_s, Direct::Value, {u"from"_s, u"to"_s, u"with seed"_s}},
        {u"offset"_s, Direct::None, {u"of"_s, u"in"_s}},
        {u"ascii character"_s, Direct::Operand, {}},
        {u"ascii number"_s, Direct::Operand, {}},
        {u"path to"_s, Direct::Operand, {u"from"_s}},
        {u"open location"_s, Direct::Value, {u"error reporting"_s}},
        {u"the clipboard"_s, Direct::None, {}},
        {u"set the clipboard to"_s, Direct::Value, {}},
        {u"clipboard info"_s, Direct::None, {u"for"_s}},
        {u"display notification"_s, Direct::Value, {u"with title"_s, u"subtitle"_s, u"sound name"_s}},
        {u"display dialog"_s,
         Direct::Value,
         {u"default answer"_s, u"hidden answer"_s, u"buttons"_s, u"default button"_s, u"cancel button"_s,
          u"with title"_s, u"with icon"_s, u"giving up after"_s}},
        {u"display alert"_s,
         Direct::Value,
         {u"message"_s, u"as"_s, u"buttons"_s, u"default button"_s, u"cancel button"_s,
          u"giving up after"_s}},
        {u"choose from list"_s,
         Direct::Value,
         {u"with title"_s, u"with prompt"_s, u"default items"_s, u"ok button name"_s, u"cancel button name"_s,
          u"multiple selections allowed"_s, u"empty selection allowed"_s}},
        {u"choose file"_s, Direct::None, {u"with prompt"_s, u"of type"_s, u"default location"_s}},
        {u"choose folder"_s, Direct::None, {u"with prompt"_s, u"default location"_s}},
        {u"say"_s, Direct::Value, {u"using"_s, u"speaking rate"_s, u"waiting until completion"_s}},
        {u"set volume"_s,
         Direct::Value,
         {u"output volume"_s, u"input volume"_s, u"alert volume"_s, u"output muted"_s}},
        {u"get volume settings"_s, Direct::None, {}},
        {u"system info"_s, Direct::None, {}},
        {u"do shell script"_s,
         Direct::Value,
         {u"as"_s, u"administrator privileges"_s, u"user name"_s, u"password"_s}},
        {u"run script"_s, Direct::Value, {u"with parameters"_s, u"in"_s}},
        {u"load script"_s, Direct::Value, {}},
        {u"do javascript"_s, Direct::Value, {u"in"_s}},
        {u"execute"_s, Direct::Object, {u"javascript"_s}},
        {u"do script"_s, Direct::Value, {u"in"_s}},
        // Every application
        {u"activate"_s, Direct::Object, {}},
        {u"launch"_s, Direct::Object, {}},
        {u"run"_s, Direct::Object, {}},
        {u"reopen"_s, Direct::Object, {}},
        {u"quit"_s, Direct::Object, {u"saving"_s}},
        {u"open"_s, Direct::Object, {u"using"_s}},
        {u"close"_s, Direct::Object, {u"saving"_s, u"saving in"_s}},
        {u"save"_s, Direct::Object, {u"in"_s, u"as"_s}},
        {u"print"_s, Direct::Object, {}},
        {u"make"_s, Direct::None, {u"new"_s, u"at"_s, u"with properties"_s, u"with data"_s, u"to"_s}},
        {u"delete"_s, Direct::Object, {}},
        {u"move"_s, Direct::Object, {u"to"_s, u"replacing"_s}},
        {u"duplicate"_s, Direct::Object, {u"to"_s, u"replacing"_s}},
        {u"exists"_s, Direct::Object, {}},
        {u"reveal"_s, Direct::Object, {}},
        {u"select"_s, Direct::Object, {}},
        {u"empty"_s, Direct::Object, {}},
        // System Events
        {u"keystroke"_s, Direct::Value, {u"using"_s}},
        {u"key code"_s, Direct::Value, {u"using"_s}},
        {u"key down"_s, Direct::Value, {}},
        {u"key up"_s, Direct::Value, {}},
        {u"click"_s, Direct::Object, {u"at"_s}},
        {u"perform"_s, Direct::Object, {}},
        // Mail
        {u"send"_s, Direct::Object, {}},
        // Media players
        {u"play"_s, Direct::Object, {}},
        {u"pause"_s, Direct::Object, {}},
        {u"playpause"_s, Direct::Object, {}},
        {u"stop"_s, Direct::Object, {}},
        {u"next track"_s, Direct::None, {}},
        {u"previous track"_s, Direct::None, {}},
        {u"back track"_s, Direct::None, {}},
    };
    return forms;
}

// Singular; the plural has an "s" unless it follows.
constexpr const char *const classes[] = {
    "item",
    "character",
    "word",
    "paragraph",
    "text item",
    "text:text",
    "string",
    "integer",
    "real",
    "number",
    "boolean",
    "list",
    "record",
    "date",
    "class:classes",
    "constant",
    "reference",
    "script",
    "unicode text",
    "handler",
    "alias:aliases",
    "file",
    "folder",
    "disk",
    "container",
    "document file",
    "application file",
    "posix file",
    "document",
    "window",
    "tab",
    "process:processes",
    "application process:application processes",
    "menu bar",
    "menu bar item",
    "menu",
    "menu item",
    "button",
    "checkbox:checkboxes",
    "radio button",
    "pop up button",
    "text field",
    "text area",
    "static text",
    "ui element",
    "group",
    "toolbar",
    "sheet",
    "scroll area",
    "table",
    "row",
    "tab group",
    "track",
    "playlist",
    "source",
    "account",
    "message",
    "outgoing message",
    "recipient",
    "to recipient",
    "cc recipient",
    "bcc recipient",
    "note",
    "bookmark",
    "url",
    "login item",
};

constexpr const char *const properties[] = {
    "length",
    "contents",
    "rest",
    "reverse",
    "quoted form",
    "posix path",
    "text item delimiters",
    "id",
    "name",
    "year",
    "month",
    "day",
    "weekday",
    "hours",
    "minutes",
    "seconds",
    "time",
    "date string",
    "short date string",
    "time string",
    "beginning",
    "end",
    "version",
    "frontmost",
    "visible",
    "running",
    "title",
    "enabled",
    "selected",
    "value",
    "position",
    "size",
    "bounds",
    "index",
    "kind",
    "name extension",
    "modification date",
    "creation date",
    "current track",
    "player state",
    "player position",
    "sound volume",
    "mute",
    "muted",
    "shuffling",
    "artist",
    "album",
    "duration",
    "output volume",
    "input volume",
    "alert volume",
    "output muted",
    "desktop",
    "home",
    "startup disk",
    "trash",
    "selection",
    "current tab",
    "active tab",
    "properties",
    "comment",
    "displayed name",
    "short name",
    "unix id",
    "bundle identifier",
    "description",
    "role",
    "minimized",
    "miniaturized",
    "zoomed",
    "button returned",
    "text returned",
    "gave up",
    "application support",
    "subject",
    "content",
    "address",
    "appearance preferences",
    "dark mode",
    "desktop picture",
    "current desktop",
    "picture",
};

constexpr const char *const constants[] = {
    "yes",
    "no",
    "ask",
    "up",
    "down",
    "toward zero",
    "to nearest",
    "as taught in school",
    "command down",
    "shift down",
    "option down",
    "control down",
    "critical",
    "informational",
    "warning",
    "playing",
    "paused",
    "stopped",
    "desktop folder",
    "documents folder",
    "downloads folder",
    "home folder",
    "applications folder",
    "movies folder",
    "music folder",
    "pictures folder",
    "public folder",
    "library folder",
    "temporary items",
    "temporary items folder",
    "application support folder",
    "preferences folder",
    "utilities folder",
    "trash folder",
    "user domain",
    "system domain",
    "local domain",
    "january",
    "february",
    "march",
    "april",
    "may",
    "june",
    "july",
    "august",
    "september",
    "october",
    "november",
    "december",
    "sunday",
    "monday",
    "tuesday",
    "wednesday",
    "thursday",
    "friday",
    "saturday",
};

// Months and weekdays are written with a capital.
QString constantName(const QString &words)
{
    static const QStringList lowerCase{u"yes"_s, u"no"_s, u"ask"_s, u"up"_s, u"down"_s};
    const bool isName =
        words.endsWith(u"day"_s) || words.endsWith(u"ber"_s) || words.endsWith(u"uary"_s) ||
        QStringList{u"march"_s, u"april"_s, u"may"_s, u"june"_s, u"july"_s, u"august"_s}.contains(words);
    return isName ? words.left(1).toUpper() + words.mid(1) : words;
}

void addWords(Phrases &phrases)
{
    for (const char *const words : properties) {
        const QString name = QString::fromLatin1(words);
        phrases.insert(name, {ScriptPhrase::Kind::Property, name, {}});
    }
    for (const char *const words : constants) {
        const QString name = QString::fromLatin1(words);
        phrases.insert(name, {ScriptPhrase::Kind::Constant, name, ScriptConstant{constantName(name)}});
    }
    const QHash<QString, ScriptValue> values{
        {u"true"_s, true},
        {u"false"_s, false},
        {u"missing value"_s, {}},
        {u"pi"_s, std::numbers::pi},
        {u"tab"_s, u"\t"_s},
        {u"space"_s, u" "_s},
        {u"return"_s, u"\r"_s},
        {u"linefeed"_s, u"\n"_s},
        {u"quote"_s, u"\""_s},
        {u"minutes"_s, qint64(60)},
        {u"hours"_s, qint64(3600)},
        {u"days"_s, qint64(86400)},
        {u"weeks"_s, qint64(604800)},
    };
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        phrases.insert(value.key(), {ScriptPhrase::Kind::Constant, value.key(), value.value()});
}

void addClasses(Phrases &phrases)
{
    for (const char *const entry : classes) {
        const QStringList forms = QString::fromLatin1(entry).split(u':');
        const QString singular = forms.first();
        const QString plural = forms.size() > 1 ? forms.last() : singular + u's';
        phrases.insert(plural, {ScriptPhrase::Kind::Classes, singular, {}});
        // "tab" is also a character.
        const ScriptValue value = phrases.value(singular).value;
        phrases.insert(singular, {ScriptPhrase::Kind::Class, singular, value});
    }
}

Phrases allPhrases()
{
    Phrases phrases;
    addWords(phrases);
    addClasses(phrases);
    // "desktop" alone is the folder.
    phrases.insert(u"desktops"_s, {ScriptPhrase::Kind::Classes, u"desktop"_s, {}});
    for (const ScriptCommandForm &form : commands())
        phrases.insert(form.name, {ScriptPhrase::Kind::Command, form.name, {}});
    for (auto phrase = phrases.begin(); phrase != phrases.end(); ++phrase)
        phrase->words = static_cast<int>(phrase.key().count(u' ')) + 1;
    return phrases;
}

QHash<QString, ScriptOperator> comparisons()
{
    using Operator = ScriptOperator;
    const QList<std::pair<Operator, QStringList>> synonyms{
        {Operator::Equal,
         {u"="_s, u"is"_s, u"is equal"_s, u"is equal to"_s, u"equals"_s, u"equal"_s, u"equal to"_s}},
        {Operator::NotEqual,
         {u"≠"_s, u"/="_s, u"is not"_s, u"isn't"_s, u"is not equal"_s, u"is not equal to"_s, u"isn't equal"_s,
          u"isn't equal to"_s, u"does not equal"_s, u"doesn't equal"_s}},
        {Operator::Less,
         {u"<"_s, u"is less than"_s, u"less than"_s, u"comes before"_s, u"is not greater than or equal to"_s,
          u"isn't greater than or equal to"_s}},
        {Operator::LessOrEqual,
         {u"≤"_s, u"<="_s, u"is less than or equal"_s, u"is less than or equal to"_s,
          u"less than or equal to"_s, u"is not greater than"_s, u"isn't greater than"_s,
          u"does not come after"_s, u"doesn't come after"_s}},
        {Operator::Greater,
         {u">"_s, u"is greater than"_s, u"greater than"_s, u"comes after"_s,
          u"is not less than or equal to"_s, u"isn't less than or equal to"_s}},
        {Operator::GreaterOrEqual,
         {u"≥"_s, u">="_s, u"is greater than or equal"_s, u"is greater than or equal to"_s,
          u"greater than or equal to"_s, u"is not less than"_s, u"isn't less than"_s,
          u"does not come before"_s, u"doesn't come before"_s}},
        {Operator::StartsWith, {u"starts with"_s, u"start with"_s, u"begins with"_s, u"begin with"_s}},
        {Operator::EndsWith, {u"ends with"_s, u"end with"_s}},
        {Operator::Contains, {u"contains"_s, u"contain"_s}},
        {Operator::DoesNotContain, {u"does not contain"_s, u"doesn't contain"_s}},
        {Operator::IsIn, {u"is in"_s, u"is contained by"_s}},
        {Operator::IsNotIn,
         {u"is not in"_s, u"isn't in"_s, u"is not contained by"_s, u"isn't contained by"_s}},
    };
    QHash<QString, Operator> table;
    for (const auto &[operation, forms] : synonyms) {
        for (const QString &form : forms)
            table.insert(form, operation);
    }
    return table;
}

} // namespace

const ScriptPhrase *ScriptVocabulary::phrase(const QString &words)
{
    static const Phrases phrases = allPhrases();
    const auto found = phrases.constFind(words);
    return found == phrases.constEnd() ? nullptr : &*found;
}

const ScriptCommandForm &ScriptVocabulary::commandForm(const QString &name)
{
    const QList<ScriptCommandForm> &forms = commands();
    return *std::find_if(forms.begin(), forms.end(),
                         [&name](const ScriptCommandForm &form) { return form.name == name; });
}

std::optional<ScriptOperator> ScriptVocabulary::comparison(const QString &words)
{
    static const QHash<QString, ScriptOperator> table = comparisons();
    const auto found = table.constFind(words);
    return found == table.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<int> ScriptVocabulary::ordinal(const QString &word)
{
    static const QStringList names{u"first"_s, u"second"_s,  u"third"_s,  u"fourth"_s, u"fifth"_s,
                                   u"sixth"_s, u"seventh"_s, u"eighth"_s, u"ninth"_s,  u"tenth"_s};
    if (word == "last"_L1 || word == "back"_L1)
        return -1;
    if (word == "front"_L1)
        return 1;
    if (names.contains(word))
        return static_cast<int>(names.indexOf(word)) + 1;
    if (word.isEmpty() || !word.front().isDigit())
        return std::nullopt;
    return word.chopped(2).toInt();
}

bool ScriptVocabulary::isReserved(const QString &word)
{
    static const QSet<QString> words{
        u"and"_s,    u"as"_s,      u"considering"_s, u"contain"_s, u"contains"_s, u"copy"_s,   u"div"_s,
        u"does"_s,   u"doesn't"_s, u"else"_s,        u"end"_s,     u"equal"_s,    u"equals"_s, u"every"_s,
        u"exit"_s,   u"false"_s,   u"from"_s,        u"given"_s,   u"global"_s,   u"if"_s,     u"ignoring"_s,
        u"in"_s,     u"into"_s,    u"is"_s,          u"isn't"_s,   u"it"_s,       u"its"_s,    u"local"_s,
        u"me"_s,     u"mod"_s,     u"my"_s,          u"not"_s,     u"of"_s,       u"on"_s,     u"or"_s,
        u"repeat"_s, u"return"_s,  u"set"_s,         u"tell"_s,    u"the"_s,      u"then"_s,   u"through"_s,
        u"thru"_s,   u"to"_s,      u"true"_s,        u"try"_s,     u"until"_s,    u"where"_s,  u"while"_s,
        u"whose"_s,  u"with"_s,    u"without"_s,     u"times"_s,   u"starts"_s,   u"begins"_s, u"ends"_s,
        u"comes"_s,  u"by"_s,      u"result"_s};
    return words.contains(word);
}

const QStringList &ScriptVocabulary::prepositions()
{
    static const QStringList words{
        u"about"_s, u"above"_s,  u"against"_s,    u"apart from"_s, u"around"_s,  u"aside from"_s,
        u"at"_s,    u"below"_s,  u"beneath"_s,    u"beside"_s,     u"between"_s, u"by"_s,
        u"for"_s,   u"from"_s,   u"instead of"_s, u"into"_s,       u"of"_s,      u"on"_s,
        u"onto"_s,  u"out of"_s, u"over"_s,       u"since"_s,      u"thru"_s,    u"through"_s,
        u"under"_s, u"to"_s,     u"in"_s,         u"with"_s};
    return words;
}

// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Language/ScriptVocabulary.h"

#include "Scripting/Language/ScriptWords.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

using Phrases = QHash<QString, ScriptPhrase>;

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
    for (const char *const words : ScriptWords::properties()) {
        const QString name = QString::fromLatin1(words);
        phrases.insert(name, {ScriptPhrase::Kind::Property, name, {}});
    }
    for (const char *const words : ScriptWords::constants()) {
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
    for (const char *const entry : ScriptWords::classes()) {
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
    for (const ScriptCommandForm &form : ScriptWords::commands())
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
    const QList<ScriptCommandForm> &forms = ScriptWords::commands();
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

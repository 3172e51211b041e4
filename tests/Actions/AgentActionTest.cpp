// SPDX-License-Identifier: Apache-2.0
#include "Actions/AgentAction.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Arguments = QMap<QString, QString>;

class AgentActionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void repliesWithAnAction_data();
    void repliesWithAnAction();
    void repliesWithoutAnAction_data();
    void repliesWithoutAnAction();
    void argumentsAreFlattenedToText_data();
    void argumentsAreFlattenedToText();
    void everyParseMakesANewIdentity();
    void argumentsAreTrimmedWhenRead_data();
    void argumentsAreTrimmedWhenRead();
    void storedArgumentsAreNotTrimmed();
    void hostileNestingIsRefusedQuietly_data();
    void hostileNestingIsRefusedQuietly();
    void nestingWithinReasonIsAccepted();
    void nestingHasALimit();
};

void AgentActionTest::repliesWithAnAction_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Arguments>("args");

    const Arguments none;
    const Arguments ok{{u"message"_s, u"ok"_s}};
    const Arguments safari{{u"app"_s, u"Safari"_s}};
    QTest::newRow("prose around the object")
        << uR"(Sure! Here it is: {"action":"done","message":"ok"} Hope that helps)"_s << u"done"_s << ok;
    QTest::newRow("a fenced code block")
        << u"```json\n{\"action\":\"done\",\"message\":\"ok\"}\n```"_s << u"done"_s << ok;
    QTest::newRow("a closing brace inside a string") << uR"({"action":"type_text","text":"a } b"})"_s
                                                     << u"type_text"_s << Arguments{{u"text"_s, u"a } b"_s}};
    QTest::newRow("an escaped quote and an opening brace inside a string")
        << uR"({"action":"type_text","text":"say \"{ now"} {"action":"done"})"_s << u"type_text"_s
        << Arguments{{u"text"_s, u"say \"{ now"_s}};
    QTest::newRow("an escaped backslash closes its string")
        << uR"({"action":"type_text","text":"a\\"} "})"_s << u"type_text"_s
        << Arguments{{u"text"_s, u"a\\"_s}};
    QTest::newRow("two objects, of which the first is used")
        << uR"({"action":"new_tab"} {"action":"done","message":"ok"})"_s << u"new_tab"_s << none;
    QTest::newRow("the name is lower-cased") << uR"({"action":"DONE"})"_s << u"done"_s << none;
    QTest::newRow("the name is not trimmed") << uR"({"action":" Done "})"_s << u" done "_s << none;
    QTest::newRow("an unknown action")
        << uR"({"action":"fly","to":"x"})"_s << u"fly"_s << Arguments{{u"to"_s, u"x"_s}};
    QTest::newRow("named by \"name\"")
        << uR"({"name":"open_app","app":"Safari"})"_s << u"open_app"_s << safari;
    QTest::newRow("named by \"tool\", with parameters")
        << uR"({"tool":"open_app","parameters":{"app":"Safari"}})"_s << u"open_app"_s << safari;
    QTest::newRow("\"name\" comes before \"tool\"")
        << uR"({"tool":"click","name":"done"})"_s << u"done"_s << none;
    QTest::newRow("\"action\" comes before both")
        << uR"({"tool":"a","action":"done"})"_s << u"done"_s << none;
    QTest::newRow("a new folder's name is an argument")
        << uR"({"action":"create_folder","name":"Projects","in":"Desktop"})"_s << u"create_folder"_s
        << Arguments{{u"name"_s, u"Projects"_s}, {u"in"_s, u"Desktop"_s}};
    QTest::newRow("nested arguments")
        << uR"({"action":"open_app","args":{"app":"Safari"}})"_s << u"open_app"_s << safari;
    QTest::newRow("the outer value wins over the nested one")
        << uR"({"action":"open_app","app":"Safari","args":{"app":"Finder"}})"_s << u"open_app"_s << safari;
    QTest::newRow("only \"args\" is merged, not \"parameters\" as well")
        << uR"({"action":"open_app","parameters":{"x":"1"},"args":{"app":"Safari"}})"_s << u"open_app"_s
        << safari;
    QTest::newRow("\"parameters\" is merged where \"args\" is no object")
        << uR"({"action":"open_app","args":"a","parameters":{"app":"Safari"}})"_s << u"open_app"_s
        << Arguments{{u"args"_s, u"a"_s}, {u"app"_s, u"Safari"_s}};
    QTest::newRow("what is nested under the merged object's own key is dropped")
        << uR"({"action":"open_app","args":{"args":"a","app":"Safari"}})"_s << u"open_app"_s << safari;
    QTest::newRow("a nested action does not rename the step")
        << uR"({"action":"open_app","args":{"action":"trash","tool":"trash","app":"Safari"}})"_s
        << u"open_app"_s << safari;
    QTest::newRow("keys keep their case and their blanks")
        << uR"({"action":"x"," App ":"1","app":"2"})"_s << u"x"_s
        << Arguments{{u" App "_s, u"1"_s}, {u"app"_s, u"2"_s}};
    QTest::newRow("text in any script, raw and escaped")
        << uR"({"action":"x","a":"日本 é 👩‍🚀","b":"\u00e9\ud83d\ude80"})"_s << u"x"_s
        << Arguments{{u"a"_s, u"日本 é 👩‍🚀"_s}, {u"b"_s, u"é🚀"_s}};
    QTest::newRow("the last of two equal keys counts")
        << uR"({"action":"open_app","app":"Finder","app":"Safari"})"_s << u"open_app"_s << safari;
}

void AgentActionTest::repliesWithAnAction()
{
    QFETCH(QString, reply);
    const std::optional<AgentAction> action = AgentAction::parse(reply);
    QVERIFY(action);
    QTEST(action->name, "name");
    QTEST(action->args, "args");
    QVERIFY(!action->id.isNull());
}

void AgentActionTest::repliesWithoutAnAction_data()
{
    QTest::addColumn<QString>("reply");

    QTest::newRow("nothing at all") << QString();
    QTest::newRow("prose only") << u"I can't do that."_s;
    QTest::newRow("truncated") << uR"({"action":"done")"_s;
    QTest::newRow("truncated inside a string") << uR"({"action":"do}ne)"_s;
    QTest::newRow("truncated after a backslash") << uR"({"action":"\)"_s;
    QTest::newRow("an outer object that never closes") << uR"({ {"action":"done"})"_s;
    QTest::newRow("an empty object") << u"{}"_s;
    QTest::newRow("a list") << u"[1, 2]"_s;
    QTest::newRow("keys in another letter case") << uR"({"Action":"done"})"_s;
    QTest::newRow("no key that names an action") << uR"({"app":"Safari"})"_s;
    QTest::newRow("the action is a number, whatever \"name\" says") << uR"({"action":5,"name":"done"})"_s;
    QTest::newRow("the action is null") << uR"({"action":null,"name":"done"})"_s;
    QTest::newRow("\"name\" is no text, whatever \"tool\" says") << uR"({"name":[],"tool":"done"})"_s;
    QTest::newRow("the action stands in the nested object only") << uR"({"args":{"action":"done"}})"_s;
    QTest::newRow("single quotes") << u"{'action':'done'}"_s;
    QTest::newRow("a trailing comma") << uR"({"action":"done",})"_s;
    QTest::newRow("a comment") << uR"({"action":"done"/* yes */})"_s;
    QTest::newRow("a key without quotes") << uR"({action:"done"})"_s;
    QTest::newRow("a raw line break in a string") << u"{\"action\":\"do\nne\"}"_s;
    QTest::newRow("a number with a leading zero") << uR"({"action":"x","n":01})"_s;
    QTest::newRow("not a number") << uR"({"action":"x","n":NaN})"_s;
    QTest::newRow("a number beyond all bounds") << uR"({"action":"x","n":1e999})"_s;
    QTest::newRow("an escaped lone surrogate") << uR"({"action":"x","t":"\ud800"})"_s;
    QTest::newRow("a raw lone surrogate") << u"{\"action\":\""_s + QChar(0xD800) + u"\"}"_s;
    QTest::newRow("an unknown escape") << uR"({"action":"x","t":"\q"})"_s;
    QTest::newRow("a broken first object before a good one") << uR"({oops} {"action":"done"})"_s;
}

void AgentActionTest::repliesWithoutAnAction()
{
    QFETCH(QString, reply);
    QVERIFY(!AgentAction::parse(reply));
}

void AgentActionTest::argumentsAreFlattenedToText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("whole number") << u"3"_s << u"3"_s;
    QTest::newRow("negative number") << u"-12"_s << u"-12"_s;
    QTest::newRow("zero without a sign") << u"-0"_s << u"0"_s;
    QTest::newRow("fractional zero without a sign") << u"-0.0"_s << u"0"_s;
    QTest::newRow("whole number written with a fraction") << u"1.0"_s << u"1"_s;
    QTest::newRow("whole number written with an exponent") << u"2e3"_s << u"2000"_s;
    QTest::newRow("fraction") << u"2.5"_s << u"2.5"_s;
    QTest::newRow("shortest form of a fraction") << u"0.1"_s << u"0.1"_s;
    QTest::newRow("negative fraction") << u"-0.75"_s << u"-0.75"_s;
    QTest::newRow("largest signed number") << u"9223372036854775807"_s << u"9223372036854775807"_s;
    QTest::newRow("largest unsigned number") << u"18446744073709551615"_s << u"18446744073709551615"_s;
    QTest::newRow("beyond that") << u"100000000000000000000"_s << u"100000000000000000000"_s;
    QTest::newRow("a huge number stays short") << u"1e300"_s << u"1e+300"_s;
    QTest::newRow("true") << u"true"_s << u"1"_s;
    QTest::newRow("false") << u"false"_s << u"0"_s;
    QTest::newRow("list of texts") << uR"(["command","shift"])"_s << u"command+shift"_s;
    QTest::newRow("list of one text") << uR"(["command"])"_s << u"command"_s;
    QTest::newRow("empty list") << u"[]"_s << u""_s;
    QTest::newRow("list with a number is dropped") << uR"(["command",1])"_s << QString();
    QTest::newRow("list of lists is dropped") << u"[[]]"_s << QString();
    QTest::newRow("object is dropped") << uR"({"a":"b"})"_s << QString();
    QTest::newRow("null is dropped") << u"null"_s << QString();
}

void AgentActionTest::argumentsAreFlattenedToText()
{
    QFETCH(QString, value);
    QFETCH(QString, text);
    const auto action = AgentAction::parse(uR"({"action":"x","n":%1,"last":"kept"})"_s.arg(value));
    QVERIFY(action);
    QCOMPARE(action->args.contains(u"n"_s), !text.isNull());
    QCOMPARE(action->args.value(u"n"_s), text);
    QCOMPARE(action->args.value(u"last"_s), u"kept"_s);
}

void AgentActionTest::everyParseMakesANewIdentity()
{
    const QString reply = uR"({"action":"x","n":3,"f":true})"_s;
    const auto first = AgentAction::parse(reply);
    const auto second = AgentAction::parse(reply);
    QVERIFY(first && second);
    QVERIFY(first->id != second->id);
    QCOMPARE(first->args, (Arguments{{u"n"_s, u"3"_s}, {u"f"_s, u"1"_s}}));
}

void AgentActionTest::argumentsAreTrimmedWhenRead_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<std::optional<QString>>("read");

    QTest::newRow("blank") << u"  "_s << std::optional<QString>();
    QTest::newRow("empty") << u""_s << std::optional<QString>();
    QTest::newRow("line breaks and tabs only") << u"\n\t\r\n"_s << std::optional<QString>();
    QTest::newRow("white space at both ends") << u" \n Safari \t"_s << std::optional(u"Safari"_s);
    QTest::newRow("white space inside") << u"a  b\nc"_s << std::optional(u"a  b\nc"_s);
}

void AgentActionTest::argumentsAreTrimmedWhenRead()
{
    QFETCH(QString, stored);
    QFETCH(std::optional<QString>, read);
    const AgentAction action{QUuid(), u"open_app"_s, {{u"app"_s, stored}}};
    QCOMPARE(action.arg(u"app"_s), read);
    QCOMPARE(action.arg(u"App"_s), std::optional<QString>());
}

void AgentActionTest::storedArgumentsAreNotTrimmed()
{
    const auto action = AgentAction::parse(uR"({"action":"type_text","text":"  "})"_s);
    QVERIFY(action);
    QCOMPARE(action->args.value(u"text"_s), u"  "_s);
}

void AgentActionTest::hostileNestingIsRefusedQuietly_data()
{
    QTest::addColumn<QString>("reply");

    const qsizetype deep = 200'000;
    QTest::newRow("lists") << u"{\"action\":\"x\",\"a\":"_s + QString(deep, u'[') + QString(deep, u']') +
                                  u'}';
    QTest::newRow("lists that never close") << u"{\"action\":\"x\",\"a\":"_s + QString(deep, u'[') + u'}';
    QTest::newRow("objects") << u"{\"action\":\"x\",\"a\":"_s + u"{\"a\":"_s.repeated(deep) + u'1' +
                                    QString(deep, u'}') + u'}';
    QTest::newRow("braces") << QString(deep, u'{');
    QTest::newRow("balanced braces") << QString(deep, u'{') + QString(deep, u'}');
}

void AgentActionTest::hostileNestingIsRefusedQuietly()
{
    QFETCH(QString, reply);
    QVERIFY(!AgentAction::parse(reply));
}

void AgentActionTest::nestingHasALimit()
{
    const auto nested = [](qsizetype depth) {
        return AgentAction::parse(uR"({"action":"x","a":"b","deep":)"_s + QString(depth, u'[') +
                                  QString(depth, u']') + u'}');
    };
    const std::optional<AgentAction> deepest = nested(512);
    QVERIFY(deepest);
    QCOMPARE(deepest->args, (QMap<QString, QString>{{u"a"_s, u"b"_s}}));
    QVERIFY(!nested(513));
}

void AgentActionTest::nestingWithinReasonIsAccepted()
{
    const QString deepList = QString(100, u'[') + QString(100, u']');
    const auto action = AgentAction::parse(uR"({"action":"x","args":{"a":%1,"b":"c"}})"_s.arg(deepList));
    QVERIFY(action);
    QCOMPARE(action->args, (Arguments{{u"b"_s, u"c"_s}}));
}

QTEST_GUILESS_MAIN(AgentActionTest)
#include "AgentActionTest.moc"

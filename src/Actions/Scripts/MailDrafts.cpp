// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/MailDrafts.h"

#include "Actions/Operations/Applications.h"
#include "Actions/Scripts/ScriptItems.h"
#include "Scripting/ScriptError.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString messageClass = u"outgoing message"_s;
const QString toClass = u"to recipient"_s;
const QString copyClass = u"cc recipient"_s;
const QString blindCopyClass = u"bcc recipient"_s;

// The class of what is to be made.
QString madeClass(const ScriptCommand &command)
{
    return command.name == u"make" ? ScriptCoercion::text(command.parameter(u"new"_s), {}).value_or(QString())
                                   : QString();
}

// The text of a property in `with properties`; empty if it isn't there.
QString propertyOf(const ScriptCommand &command, const QString &name)
{
    const ScriptValue properties = command.parameter(u"with properties"_s);
    if (!properties.is<ScriptValue::Record>())
        return {};
    const ScriptValue *value = properties.as<ScriptValue::Record>()->find(name);
    return value ? ScriptItems::textOf(*value) : QString();
}

QString encoded(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString encoded(const QStringList &addresses)
{
    QStringList all;
    for (const QString &address : addresses)
        all.append(QString::fromLatin1(QUrl::toPercentEncoding(address, "@")));
    return all.join(u',');
}

// Line breaks as the scheme wants them.
QString encodedLines(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return encoded(text.replace(u'\n', u"\r\n"_s));
}

} // namespace

QString MailDrafts::Draft::address() const
{
    QStringList fields;
    const auto add = [&fields](const QString &name, const QString &value) {
        if (!value.isEmpty())
            fields.append(name + u'=' + value);
    };
    add(u"cc"_s, encoded(recipients.value(copyClass)));
    add(u"bcc"_s, encoded(recipients.value(blindCopyClass)));
    add(u"subject"_s, encoded(subject));
    add(u"body"_s, encodedLines(content));
    const QString start = u"mailto:"_s + encoded(recipients.value(toClass));
    return fields.isEmpty() ? start : start + u'?' + fields.join(u'&');
}

std::optional<ScriptValue> MailDrafts::perform(const ScriptCommand &command)
{
    const QString made = madeClass(command);
    if (made == messageClass)
        return compose(command);
    if (made == toClass || made == copyClass || made == blindCopyClass) {
        addRecipient(made, command);
        return ScriptValue();
    }
    if (command.name == u"send")
        throw ScriptError(u"Scripts can't send messages; without “send”, the message is opened in the mail "
                          "program, where you can send it."_s);
    return getOrSet(command);
}

ScriptValue MailDrafts::compose(const ScriptCommand &command)
{
    m_drafts.append(
        {*command.application, propertyOf(command, u"subject"_s), propertyOf(command, u"content"_s), {}});
    ScriptObject object;
    object.kind = ScriptObject::Kind::Element;
    object.name = messageClass;
    object.form = ScriptObject::Form::Identifier;
    object.key = qint64(m_drafts.size());
    object.container = ScriptObject::application(*command.application).as<ScriptValue::Object>();
    object.isValue = true;
    return std::make_shared<const ScriptObject>(object);
}

// The recipient of the message that is told, or of `at end of to recipients of` one.
void MailDrafts::addRecipient(const QString &kind, const ScriptCommand &command)
{
    Draft *const at = draft(command.parameter(u"at"_s));
    Draft *const wanted = at ? at : draft(command.target);
    if (!wanted)
        throw ScriptError(u"Can’t get outgoing message."_s, ScriptError::NoSuchObject);
    const QString address = propertyOf(command, u"address"_s).trimmed();
    if (!address.contains(u'@'))
        throw ScriptError(u"“%1” is no mail address."_s.arg(address));
    wanted->recipients[kind].append(address);
}

std::optional<ScriptValue> MailDrafts::getOrSet(const ScriptCommand &command)
{
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    const bool isProperty = object && object->kind == ScriptObject::Kind::Property;
    Draft *const owner = isProperty ? draft(object->container) : nullptr;
    if (!owner || (object->name != u"subject" && object->name != u"content" && object->name != u"visible"))
        return std::nullopt;
    // Every message is shown.
    if (object->name == u"visible")
        return command.name == u"get" ? ScriptValue(true) : ScriptValue();
    QString &text = object->name == u"subject" ? owner->subject : owner->content;
    if (command.name == u"get")
        return ScriptValue(text);
    text = ScriptItems::textOf(command.parameter(u"to"_s));
    return ScriptValue();
}

// The message that the object is, or is in; null if it is another object.
MailDrafts::Draft *MailDrafts::draft(const ScriptValue &object)
{
    if (!object.is<ScriptValue::Object>())
        return nullptr;
    for (ScriptValue::Object part = object.as<ScriptValue::Object>(); part; part = part->container) {
        if (part->name == messageClass && part->key.is<qint64>())
            return &m_drafts[part->key.as<qint64>() - 1];
    }
    return nullptr;
}

QCoro::Task<void> MailDrafts::open(Desktop desktop) const
{
    const QList<Draft> drafts = m_drafts;
    for (const Draft &draft : drafts) {
        const ApplicationBundle program = co_await Applications::foundApplication(draft.application, desktop);
        co_await desktop.workspace.open(draft.address(), program);
    }
}

// SPDX-License-Identifier: Apache-2.0
#include "applications/support/GnomeQuestions.h"

#include "applications/support/AccessibleProgram.h"
#include "applications/support/ActionRunner.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString keysTitle = u"Remote Desktop"_s;
const QString hotKeyTitle = u"Add Keyboard Shortcuts"_s;

// Presses the control of the question as a screen reader does, once it can be pressed. False on timeout.
bool press(AccessibleProgram &question, const QString &name)
{
    const auto isPressed = [&] {
        for (const AccessibleElement &element : question.elements()) {
            if (element.name == name && element.has(AccessibleElement::State::Sensitive) &&
                question.press(element))
                return true;
        }
        return false;
    };
    return QTest::qWaitFor(isPressed, PrivateDesktop::patience);
}

} // namespace

bool GnomeQuestions::isAskedForKeys()
{
    return Screen::showsTitle(keysTitle);
}

void GnomeQuestions::answerForKeys(Decision decision)
{
    AccessibleProgram question(PrivateDesktop::processesWith("xdg-desktop-portal-gnome").value(0));
    if (decision == Decision::Refuse)
        press(question, u"Cancel"_s);
    else if (press(question, u"Allow Remote Interaction"_s))
        press(question, u"Share"_s);
}

bool GnomeQuestions::isAskedForHotKey()
{
    return Screen::showsTitle(hotKeyTitle);
}

void GnomeQuestions::answerForHotKey(Decision decision)
{
    AccessibleProgram question(PrivateDesktop::processesWith("global-shortcuts-provider").value(0));
    press(question, decision == Decision::Allow ? u"Add"_s : u"Cancel"_s);
}

void GnomeQuestions::allowKeys()
{
    if (!PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s))
        qFatal("no application for the first key has opened");
    QTimer watching;
    QObject::connect(&watching, &QTimer::timeout, &watching, [&watching] {
        if (!isAskedForKeys())
            return;
        watching.stop();
        answerForKeys(Decision::Allow);
    });
    watching.start(200);
    ActionRunner hands;
    const Outcome outcome = hands.perform("press_key", {{"key", u"escape"_s}});
    if (outcome.hasFailed || !PrivateDesktop::clear())
        qFatal("keys could not be allowed: %s", qPrintable(outcome.line));
}

void GnomeQuestions::presetPictures()
{
    const QString service = u"org.freedesktop.impl.portal.PermissionStore"_s;
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, u"/org/freedesktop/impl/portal/PermissionStore"_s, service, u"SetPermission"_s);
    call.setArguments(
        {u"screenshot"_s, true, u"screenshot"_s, u"org.orvane.Orvane"_s, QStringList{u"yes"_s}});
    const QDBusMessage answer = QDBusConnection::sessionBus().call(call);
    if (answer.type() == QDBusMessage::ErrorMessage)
        qFatal("screenshots could not be allowed: %s", qPrintable(answer.errorMessage()));
}

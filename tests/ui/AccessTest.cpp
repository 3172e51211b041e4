// SPDX-License-Identifier: Apache-2.0
// The permission to operate other applications: missing, granted from the window, and granted elsewhere.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace {

const QString banner = u"Grant Accessibility access"_s;

// Sets one of the desktop's accessibility switches.
void setSwitch(const QString &name, bool on)
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                       u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
    call.setArguments({u"org.a11y.Status"_s, name, QVariant::fromValue(QDBusVariant(on))});
    QVERIFY(QDBusConnection::sessionBus().call(call).type() == QDBusMessage::ReplyMessage);
}

bool isAccessOn()
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                       u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setArguments({u"org.a11y.Status"_s, u"IsEnabled"_s});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    return reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

// The text in the editor's only window.
QString textOfEditor()
{
    const QList<qint64> processes = PrivateDesktop::processesWith("mousepad");
    AccessibleProgram editor(processes.isEmpty() ? 0 : processes.constFirst());
    for (const AccessibleElement &element : editor.elements()) {
        if (element.role == Role::field)
            return editor.contents(element);
    }
    return {};
}

} // namespace

class UiAccessTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withAccessThereIsNoBanner();
    void theBannerGrantsAccess();
    void theFirstTaskGrantsItself();
    void theBannerGoesWhenAccessWasGrantedElsewhere();
};

// A screen reader's switch keeps the window readable for the test while the other one is off.
void UiAccessTest::init()
{
    setSwitch(u"ScreenReaderEnabled"_s, true);
    setSwitch(u"IsEnabled"_s, true);
    startAfresh();
}

void UiAccessTest::withAccessThereIsNoBanner()
{
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"On-device"_s));
    QVERIFY(!orvane().shows(Role::button, banner));
}

void UiAccessTest::theBannerGrantsAccess()
{
    setSwitch(u"IsEnabled"_s, false);
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().press(Role::button, banner));
    VERIFY_SOON(isAccessOn());
    QVERIFY(orvane().waitForNone(Role::button, banner));
}

void UiAccessTest::theFirstTaskGrantsItself()
{
    setSwitch(u"IsEnabled"_s, false);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    ScriptedModel::writeAnswering(R"({"action":"type_text","text":"At the first go"})", orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::button, banner));
    // Pressed, not typed: the test's own typing would switch access on.
    QVERIFY(orvane().press(Role::button, u"Take a screenshot and save it to Downloads"_s));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    QVERIFY(!isAccessOn());
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Stopped: the same step was repeated."_s));
    QVERIFY2(orvane().shows(Role::label, u"Typing “At the first go”"_s), qPrintable(orvane().described()));
    QVERIFY(orvane().shows(
        Role::label, u"Switched on accessibility, so that Orvane can read and operate applications."_s));
    QVERIFY(orvane().waitForNone(Role::button, banner));
    QVERIFY(isAccessOn());
    VERIFY_SOON(textOfEditor() == u"At the first go"_s);
}

void UiAccessTest::theBannerGoesWhenAccessWasGrantedElsewhere()
{
    setSwitch(u"IsEnabled"_s, false);
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::button, banner));
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(orvane().waitForInactive());
    setSwitch(u"IsEnabled"_s, true);
    QVERIFY(orvane().window());
    Screen::requestFocus(orvane().window()->identifier);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForNone(Role::button, banner));
}

QTEST_GUILESS_MAIN(UiAccessTest)
#include "AccessTest.moc"

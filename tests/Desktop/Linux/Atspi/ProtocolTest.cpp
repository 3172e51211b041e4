// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Protocol.h"

#include <QDBusError>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QDBusMessage question()
{
    return QDBusMessage::createMethodCall(u":1.7"_s, u"/element"_s, u"org.a11y.atspi.Accessible"_s,
                                          u"GetState"_s);
}

} // namespace

class AtspiProtocolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRoleHasItsAxName_data();
    void everyRoleHasItsAxName();
    void otherRolesHaveNoAxName();
    void aMenuIsAMenuBarItemOnlyInAMenuBar();
    void anErrorYieldsNoState();
    void aMalformedReplyYieldsNoState();
    void otherRepliesYieldNoAddress();
    void everyStateIsOneBit();
};

void AtspiProtocolTest::everyRoleHasItsAxName_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("axRole");
    // Numbers as in the protocol.
    QTest::newRow("push button") << 43 << u"AXButton"_s;
    QTest::newRow("toggle button") << 62 << u"AXButton"_s;
    QTest::newRow("menu item") << 35 << u"AXMenuItem"_s;
    QTest::newRow("check menu item") << 8 << u"AXMenuItem"_s;
    QTest::newRow("radio menu item") << 45 << u"AXMenuItem"_s;
    QTest::newRow("radio button") << 44 << u"AXRadioButton"_s;
    QTest::newRow("check box") << 7 << u"AXCheckBox"_s;
    QTest::newRow("switch") << 130 << u"AXCheckBox"_s;
    QTest::newRow("link") << 88 << u"AXLink"_s;
    QTest::newRow("page tab") << 37 << u"AXTab"_s;
    QTest::newRow("combo box") << 11 << u"AXPopUpButton"_s;
    QTest::newRow("entry") << 79 << u"AXTextField"_s;
    QTest::newRow("password text") << 40 << u"AXTextField"_s;
    QTest::newRow("text") << 61 << u"AXTextField"_s;
    QTest::newRow("spin button") << 52 << u"AXTextField"_s;
    QTest::newRow("label") << 29 << u"AXStaticText"_s;
    QTest::newRow("static") << 116 << u"AXStaticText"_s;
    QTest::newRow("heading") << 83 << u"AXStaticText"_s;
    QTest::newRow("paragraph") << 73 << u"AXStaticText"_s;
}

void AtspiProtocolTest::everyRoleHasItsAxName()
{
    QFETCH(int, number);
    QFETCH(QString, axRole);
    QCOMPARE(Atspi::axRole(static_cast<AtspiRole>(number), AtspiRole::Invalid), axRole);
}

void AtspiProtocolTest::otherRolesHaveNoAxName()
{
    // Invalid, frame, filler, panel, table cell, application, list item, and an unassigned number.
    for (const int number : {0, 23, 20, 39, 56, 75, 32, 100'000})
        QCOMPARE(Atspi::axRole(static_cast<AtspiRole>(number), AtspiRole::Invalid), QString());
}

void AtspiProtocolTest::aMenuIsAMenuBarItemOnlyInAMenuBar()
{
    QCOMPARE(Atspi::axRole(AtspiRole::Menu, AtspiRole::MenuBar), u"AXMenuBarItem"_s);
    QCOMPARE(Atspi::axRole(AtspiRole::Menu, AtspiRole::Menu), QString());
    QCOMPARE(Atspi::axRole(AtspiRole::MenuItem, AtspiRole::MenuBar), u"AXMenuItem"_s);
}

void AtspiProtocolTest::anErrorYieldsNoState()
{
    const QDBusMessage reply = question().createErrorReply(QDBusError::UnknownObject, u"It is gone."_s);
    QVERIFY(!Atspi::hasState(reply, AtspiState::Showing));
}

void AtspiProtocolTest::aMalformedReplyYieldsNoState()
{
    const QDBusMessage reply = question().createReply(QVariantList{u"showing"_s});
    QVERIFY(!Atspi::hasState(reply, AtspiState::Showing));
}

void AtspiProtocolTest::otherRepliesYieldNoAddress()
{
    const QDBusMessage error = question().createErrorReply(QDBusError::UnknownMethod, u"None."_s);
    QCOMPARE(Atspi::documentAddress(error), std::nullopt);
    const QDBusMessage malformed = question().createReply(QVariantList{u"https://example.org"_s});
    QCOMPARE(Atspi::documentAddress(malformed), std::nullopt);
}

void AtspiProtocolTest::everyStateIsOneBit()
{
    QCOMPARE(Atspi::bitSet(QList<AtspiState>(), 2), (QList<int>{0, 0}));
    QCOMPARE(Atspi::bitSet(QList{AtspiState::Focused}, 2), (QList<int>{1 << 12, 0}));
    QCOMPARE(Atspi::bitSet(QList{AtspiState::Focused, AtspiState::Selected}, 2),
             (QList<int>{1 << 12 | 1 << 23, 0}));
}

QTEST_GUILESS_MAIN(AtspiProtocolTest)
#include "ProtocolTest.moc"

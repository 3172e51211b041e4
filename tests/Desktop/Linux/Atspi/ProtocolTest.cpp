// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Roles.h"

#include <QTest>

using namespace Qt::StringLiterals;

class AtspiProtocolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRoleHasItsAxName_data();
    void everyRoleHasItsAxName();
    void rolesWithoutAMeaningHereHaveNoAxName();
    void aMenuIsAnItemOfTheMenuBarOnlyInOne();
    void thePressIsFoundByName_data();
    void thePressIsFoundByName();
};

void AtspiProtocolTest::everyRoleHasItsAxName_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("axRole");
    // The numbers are those of the protocol.
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

void AtspiProtocolTest::rolesWithoutAMeaningHereHaveNoAxName()
{
    // Invalid, frame, filler, panel, table cell, application, list item, a number that no version has yet.
    for (const int number : {0, 23, 20, 39, 56, 75, 32, 100'000})
        QCOMPARE(Atspi::axRole(static_cast<AtspiRole>(number), AtspiRole::Invalid), QString());
}

void AtspiProtocolTest::aMenuIsAnItemOfTheMenuBarOnlyInOne()
{
    QCOMPARE(Atspi::axRole(AtspiRole::Menu, AtspiRole::MenuBar), QStringLiteral("AXMenuBarItem"));
    QCOMPARE(Atspi::axRole(AtspiRole::Menu, AtspiRole::Menu), QString());
    QCOMPARE(Atspi::axRole(AtspiRole::MenuItem, AtspiRole::MenuBar), QStringLiteral("AXMenuItem"));
}

void AtspiProtocolTest::thePressIsFoundByName_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("position");
    QTest::newRow("press") << QStringList{u"press"_s} << 0;
    QTest::newRow("any letter case") << QStringList{u"Press"_s} << 0;
    QTest::newRow("not the first") << QStringList{u"SetFocus"_s, u"ShowMenu"_s, u"Press"_s} << 2;
    QTest::newRow("the most telling of several") << QStringList{u"toggle"_s, u"CLICK"_s} << 1;
    QTest::newRow("activate") << QStringList{u"expand or contract"_s, u"activate"_s} << 1;
    QTest::newRow("toggle") << QStringList{u"Toggle"_s} << 0;
    QTest::newRow("check") << QStringList{u"check"_s} << 0;
    QTest::newRow("a ticked box") << QStringList{u"uncheck"_s} << 0;
    QTest::newRow("open") << QStringList{u"open"_s} << 0;
    QTest::newRow("select") << QStringList{u"select"_s} << 0;
    QTest::newRow("jump") << QStringList{u"jump"_s} << 0;
    QTest::newRow("a menu of Qt") << QStringList{u"ShowMenu"_s} << 0;
    QTest::newRow("a list of Qt") << QStringList{u"ShowMenu"_s, u"Press"_s} << 1;
    QTest::newRow("a context menu is no press") << QStringList{u"showContextMenu"_s} << -1;
    QTest::newRow("only the whole name") << QStringList{u"link.open"_s, u"clipboard.select"_s} << -1;
    QTest::newRow("nothing that presses") << QStringList{u"SetFocus"_s, u"Increase"_s} << -1;
    QTest::newRow("no action") << QStringList{} << -1;
}

void AtspiProtocolTest::thePressIsFoundByName()
{
    QFETCH(QStringList, names);
    QFETCH(int, position);
    QCOMPARE(Atspi::pressAction(names), position);
}

QTEST_GUILESS_MAIN(AtspiProtocolTest)
#include "ProtocolTest.moc"

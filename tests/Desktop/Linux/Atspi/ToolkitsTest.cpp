// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <QTest>

using namespace Qt::StringLiterals;

class AtspiToolkitsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLabelReadsAsTheUserSeesIt_data();
    void aLabelReadsAsTheUserSeesIt();
    void toolkitsAreKnownByTheirNames();
    void thePressIsFoundByName_data();
    void thePressIsFoundByName();
};

void AtspiToolkitsTest::aLabelReadsAsTheUserSeesIt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<AtspiToolkit>("toolkit");
    QTest::addColumn<QString>("label");
    QTest::newRow("plain") << u"Save As…"_s << AtspiToolkit::Other << u"Save As…"_s;
    QTest::newRow("GTK 3 menu item") << u"New Window      "_s << AtspiToolkit::Other << u"New Window"_s;
    QTest::newRow("Qt, a text in angle brackets") << u"<none>"_s << AtspiToolkit::Qt << u"<none>"_s;
    QTest::newRow("padded") << u"  Save "_s << AtspiToolkit::Other << u"Save"_s;
    QTest::newRow("blanks only") << u"   "_s << AtspiToolkit::Other << QString();
    QTest::newRow("two lines") << u"Lines: 1\nWords: 2"_s << AtspiToolkit::Other << u"Lines: 1 Words: 2"_s;
    QTest::newRow("a chat marker") << u"<|im_end|>"_s << AtspiToolkit::Other << u"< |im_end| >"_s;
    QTest::newRow("mnemonic and dots stay") << u"_Open..."_s << AtspiToolkit::Other << u"_Open..."_s;
    QTest::newRow("a picture in a text") << u"A\uFFFC cat"_s << AtspiToolkit::Other << u"A cat"_s;
    QTest::newRow("a link alone") << u"\uFFFC"_s << AtspiToolkit::Other << QString();
    QTest::newRow("said twice") << u"7 7"_s << AtspiToolkit::Gtk4 << u"7"_s;
    QTest::newRow("words said twice") << u"Clear All Clear All"_s << AtspiToolkit::Gtk4 << u"Clear All"_s;
    QTest::newRow("said twice with a key") << u"_Retry Retry"_s << AtspiToolkit::Gtk4 << u"Retry"_s;
    QTest::newRow("a key inside") << u"Save _As… Save As…"_s << AtspiToolkit::Gtk4 << u"Save As…"_s;
    QTest::newRow("longer, but no key") << u"Undo Undos"_s << AtspiToolkit::Gtk4 << u"Undo Undos"_s;
    QTest::newRow("shorter, but no key") << u"ab a"_s << AtspiToolkit::Gtk4 << u"ab a"_s;
    QTest::newRow("a key in one word") << u"_Open"_s << AtspiToolkit::Gtk4 << u"_Open"_s;
    QTest::newRow("one letter") << u"7"_s << AtspiToolkit::Gtk4 << u"7"_s;
    QTest::newRow("twice elsewhere is meant") << u"Bye Bye"_s << AtspiToolkit::Other << u"Bye Bye"_s;
    QTest::newRow("two halves that differ") << u"7 8"_s << AtspiToolkit::Gtk4 << u"7 8"_s;
    QTest::newRow("no blank between") << u"707"_s << AtspiToolkit::Gtk4 << u"707"_s;
    QTest::newRow("a class for a name") << u"GtkMenuButton"_s << AtspiToolkit::Gtk4 << QString();
    QTest::newRow("a derived class") << u"EditorSourceView"_s << AtspiToolkit::Gtk4 << QString();
    QTest::newRow("a name in two capitals") << u"YouTube"_s << AtspiToolkit::Gtk4 << u"YouTube"_s;
    QTest::newRow("one word") << u"View"_s << AtspiToolkit::Gtk4 << u"View"_s;
    QTest::newRow("a class elsewhere")
        << u"EditorSourceView"_s << AtspiToolkit::Other << u"EditorSourceView"_s;
    QTest::newRow("text about a class") << u"GtkButton docs"_s << AtspiToolkit::Gtk4 << u"GtkButton docs"_s;
    QTest::newRow("Qt hint with markup") << u"<p style='white-space:pre'>Count words\n(slow)</p>"_s
                                         << AtspiToolkit::Qt << u"Count words (slow)"_s;
    QTest::newRow("no markup") << u"a < b, b > c"_s << AtspiToolkit::Qt << u"a < b, b > c"_s;
    QTest::newRow("markup elsewhere is meant") << u"<b>"_s << AtspiToolkit::Other << u"<b>"_s;
    QTest::newRow("empty") << QString() << AtspiToolkit::Gtk4 << QString();
}

void AtspiToolkitsTest::aLabelReadsAsTheUserSeesIt()
{
    QFETCH(QString, text);
    QFETCH(AtspiToolkit, toolkit);
    QFETCH(QString, label);
    QCOMPARE(Atspi::label(text, toolkit), label);
}

void AtspiToolkitsTest::toolkitsAreKnownByTheirNames()
{
    QCOMPARE(Atspi::toolkit(u"GTK"_s), AtspiToolkit::Gtk4);
    QCOMPARE(Atspi::toolkit(u"gtk"_s), AtspiToolkit::Gtk3);
    QCOMPARE(Atspi::toolkit(u"Chromium"_s), AtspiToolkit::Chromium);
    QCOMPARE(Atspi::toolkit(u"Gecko"_s), AtspiToolkit::Gecko);
    QCOMPARE(Atspi::toolkit(u"Qt"_s), AtspiToolkit::Qt);
    QCOMPARE(Atspi::toolkit(QString()), AtspiToolkit::Other);
}

void AtspiToolkitsTest::thePressIsFoundByName_data()
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

void AtspiToolkitsTest::thePressIsFoundByName()
{
    QFETCH(QStringList, names);
    QFETCH(int, position);
    QCOMPARE(Atspi::pressAction(names), position);
}

QTEST_GUILESS_MAIN(AtspiToolkitsTest)
#include "ToolkitsTest.moc"

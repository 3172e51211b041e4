// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/Operations/Controls.h"
#include "Base/PlatformWords.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString permissionMissing = u"Error: "_s + PlatformWords::current().controlsRefusal;

// A desktop with one application, which is frontmost, and its tree.
struct ControlsBench : ActionBench
{
    ControlsBench() : application(desktop.workspace.start(u"Editor"_s))
    {
        desktop.workspace.makeFrontmost(application);
        desktop.accessibility.trees.insert(application.processIdentifier, RecordedTree());
    }

    RecordedTree &tree() { return desktop.accessibility.trees[application.processIdentifier]; }
    int add(int parent, const QString &role, const QString &title)
    {
        return tree().add(parent, {role, title});
    }
    QString click(const QString &label)
    {
        return outcome(Executor::run({QUuid(), u"click"_s, {{u"label"_s, label}}}, services()));
    }
    QString readUI() { return outcome(Executor::run({QUuid(), u"read_ui"_s, {}}, services())); }

    RunningApplication application;
};

} // namespace

class AccessibilityActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void labels_data();
    void labels();
    void attributesAreReadByName();
    void anExactLabelBeatsAnEarlierPartialOne();
    void aLaterExactLabelInADeeperLevelWins();
    void theFirstPartialLabelInBreadthFirstOrderIsPressed();
    void anExactLabelInTheWindowInFrontIsPressed_data();
    void anExactLabelInTheWindowInFrontIsPressed();
    void letterCaseAndAccentsDoNotMatter();
    void everyClickableRoleIsPressed_data();
    void everyClickableRoleIsPressed();
    void otherRolesAreNeverPressed_data();
    void otherRolesAreNeverPressed();
    void clickingStopsReadingAtTheExactMatch();
    void clickingExaminesThreeThousandElements();
    void clickingReachesTwelveLevelsBelowTheRoot();
    void aControlThatDoesNotRespondIsAFailure();
    void readableRolesBecomeLines_data();
    void readableRolesBecomeLines();
    void linesAreJoinedAndRepeatedOnesDropped();
    void longLabelsAreCutToFiftyCharacters();
    void atMostFortyLinesAreRead();
    void readingExaminesFifteenHundredElements();
    void readingReachesTenLevelsBelowTheRoot();
    void anEmptyTreeHasNoReadableControls();
    void withoutPermissionBothAskAndFail();
    void withoutAFrontmostApplicationBothFail();
    void thePlatformsErrorsPassThrough_data();
    void thePlatformsErrorsPassThrough();
};

void AccessibilityActionsTest::labels_data()
{
    using Text = std::optional<QString>;
    QTest::addColumn<Text>("title");
    QTest::addColumn<Text>("description");
    QTest::addColumn<Text>("value");
    QTest::addColumn<Text>("help");
    QTest::addColumn<QString>("label");

    const Text none;
    QTest::newRow("the title first") << Text(u"t"_s) << Text(u"d"_s) << Text(u"v"_s) << Text(u"h"_s)
                                     << u"t"_s;
    QTest::newRow("then the description") << none << Text(u"d"_s) << Text(u"v"_s) << Text(u"h"_s) << u"d"_s;
    QTest::newRow("then the value") << Text(u""_s) << none << Text(u"v"_s) << Text(u"h"_s) << u"v"_s;
    QTest::newRow("then the help") << none << Text(u""_s) << none << Text(u"h"_s) << u"h"_s;
    QTest::newRow("else nothing") << none << none << Text(u""_s) << none << u""_s;
}

void AccessibilityActionsTest::labels()
{
    QFETCH(std::optional<QString>, title);
    QFETCH(std::optional<QString>, description);
    QFETCH(std::optional<QString>, value);
    QFETCH(std::optional<QString>, help);
    const AccessibilityAttributes element{u"AXButton"_s, title, description, value, help, {}};
    QTEST(Controls::label(element), "label");
}

void AccessibilityActionsTest::attributesAreReadByName()
{
    const AccessibilityAttributes element{u"AXButton"_s, u"t"_s, u"d"_s, u"v"_s, u"h"_s, {4, 5}};
    QCOMPARE(Controls::attr(element, u"AXRole"_s), std::optional(u"AXButton"_s));
    QCOMPARE(Controls::attr(element, u"AXTitle"_s), std::optional(u"t"_s));
    QCOMPARE(Controls::attr(element, u"AXDescription"_s), std::optional(u"d"_s));
    QCOMPARE(Controls::attr(element, u"AXValue"_s), std::optional(u"v"_s));
    QCOMPARE(Controls::attr(element, u"AXHelp"_s), std::optional(u"h"_s));
    QCOMPARE(Controls::attr(element, u"AXChildren"_s), std::optional<QString>());
    QCOMPARE(Controls::attr(AccessibilityAttributes(), u"AXRole"_s), std::optional<QString>());
    QCOMPARE(Controls::children(element), (QList<AccessibilityElement>{4, 5}));
}

void AccessibilityActionsTest::anExactLabelBeatsAnEarlierPartialOne()
{
    ControlsBench bench;
    bench.add(0, u"AXButton"_s, u"Save As…"_s);
    bench.add(0, u"AXButton"_s, u"Save"_s);
    QCOMPARE(bench.click(u"save"_s), u"Clicked “save”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press AXButton “Save”"_s));
}

void AccessibilityActionsTest::aLaterExactLabelInADeeperLevelWins()
{
    ControlsBench bench;
    const int window = bench.add(0, u"AXWindow"_s, u"Save"_s);
    bench.add(0, u"AXMenuBarItem"_s, u"Save Menu"_s);
    bench.add(bench.add(window, u"AXGroup"_s, u""_s), u"AXButton"_s, u"Save"_s);
    QCOMPARE(bench.click(u"Save"_s), u"Clicked “Save”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press AXButton “Save”"_s));
}

void AccessibilityActionsTest::theFirstPartialLabelInBreadthFirstOrderIsPressed()
{
    ControlsBench bench;
    const int window = bench.add(0, u"AXWindow"_s, u""_s);
    bench.add(window, u"AXButton"_s, u"Save Copy"_s);
    bench.add(0, u"AXMenuItem"_s, u"Don't save"_s);
    bench.add(0, u"AXButton"_s, u"Save As…"_s);
    QCOMPARE(bench.click(u"sav"_s), u"Clicked “sav”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press AXMenuItem “Don't save”"_s));
}

void AccessibilityActionsTest::anExactLabelInTheWindowInFrontIsPressed_data()
{
    QTest::addColumn<QString>("dialogsButton");
    QTest::addColumn<bool>("isDialogKnownInFront");
    QTest::addColumn<QString>("pressed");
    QTest::newRow("deeper than another") << u"Close"_s << true << u"press AXButton “Close”"_s;
    QTest::newRow("only elsewhere") << u"Cancel"_s << true << u"press AXMenuItem “Close”"_s;
    QTest::newRow("only a part in front") << u"Close All"_s << true << u"press AXMenuItem “Close”"_s;
    QTest::newRow("nothing tells what is in front") << u"Close"_s << false << u"press AXMenuItem “Close”"_s;
}

void AccessibilityActionsTest::anExactLabelInTheWindowInFrontIsPressed()
{
    QFETCH(QString, dialogsButton);
    QFETCH(bool, isDialogKnownInFront);
    QFETCH(QString, pressed);
    ControlsBench bench;
    const int dialog = bench.add(0, u"AXWindow"_s, u"Preferences"_s);
    const int window = bench.add(0, u"AXWindow"_s, u"Letter"_s);
    bench.add(window, u"AXMenuItem"_s, u"Close"_s);
    const int pane = bench.add(dialog, u"AXGroup"_s, u""_s);
    const int row = bench.add(pane, u"AXGroup"_s, u""_s);
    bench.add(row, u"AXButton"_s, dialogsButton);
    if (isDialogKnownInFront)
        bench.tree().frontWindow = dialog;
    QCOMPARE(bench.click(u"close"_s), u"Clicked “close”."_s);
    QCOMPARE(bench.journal(), QStringList(pressed));
}

void AccessibilityActionsTest::letterCaseAndAccentsDoNotMatter()
{
    ControlsBench bench;
    bench.add(0, u"AXButton"_s, u"Annuler E\u0301tape"_s);
    bench.add(0, u"AXButton"_s, u"E\u0301tape"_s);
    QCOMPARE(bench.click(u"ÉTAPE"_s), u"Clicked “ÉTAPE”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press AXButton “E\u0301tape”"_s));
}

void AccessibilityActionsTest::everyClickableRoleIsPressed_data()
{
    QTest::addColumn<QString>("role");
    for (const char *role : {"AXButton", "AXMenuItem", "AXMenuBarItem", "AXRadioButton", "AXCheckBox",
                             "AXLink", "AXTab", "AXPopUpButton"})
        QTest::newRow(role) << QString::fromLatin1(role);
}

void AccessibilityActionsTest::everyClickableRoleIsPressed()
{
    QFETCH(QString, role);
    ControlsBench bench;
    bench.add(0, role, u"Go"_s);
    QCOMPARE(bench.click(u"Go"_s), u"Clicked “Go”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press %1 “Go”"_s.arg(role)));
}

void AccessibilityActionsTest::otherRolesAreNeverPressed_data()
{
    QTest::addColumn<QString>("role");
    for (const char *role :
         {"AXStaticText", "AXTextField", "AXWindow", "AXGroup", "AXApplication", "AXImage", ""})
        QTest::newRow(role) << QString::fromLatin1(role);
}

void AccessibilityActionsTest::otherRolesAreNeverPressed()
{
    QFETCH(QString, role);
    ControlsBench bench;
    bench.add(0, role, u"Go"_s);
    QCOMPARE(bench.click(u"Go"_s), u"Error: Couldn't find a control labelled “Go”."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void AccessibilityActionsTest::clickingStopsReadingAtTheExactMatch()
{
    ControlsBench bench;
    const int window = bench.add(0, u"AXWindow"_s, u""_s);
    bench.add(0, u"AXButton"_s, u"Go"_s);
    bench.add(window, u"AXButton"_s, u"Go"_s);
    QCOMPARE(bench.click(u"Go"_s), u"Clicked “Go”."_s);
    QCOMPARE(bench.desktop.accessibility.elementsRead, 3);
}

void AccessibilityActionsTest::clickingExaminesThreeThousandElements()
{
    ControlsBench bench;
    for (int i = 0; i < 2998; ++i)
        bench.add(0, u"AXGroup"_s, u""_s);
    bench.add(0, u"AXButton"_s, u"Last"_s);
    bench.add(0, u"AXButton"_s, u"Beyond"_s);
    QCOMPARE(bench.click(u"Last"_s), u"Clicked “Last”."_s);
    QCOMPARE(bench.click(u"Beyond"_s), u"Error: Couldn't find a control labelled “Beyond”."_s);
}

void AccessibilityActionsTest::clickingReachesTwelveLevelsBelowTheRoot()
{
    ControlsBench bench;
    int last = 0;
    for (int depth = 1; depth <= 13; ++depth)
        last = bench.add(last, u"AXButton"_s, u"Level %1."_s.arg(depth));
    QCOMPARE(bench.click(u"Level 12."_s), u"Clicked “Level 12.”."_s);
    QCOMPARE(bench.click(u"Level 13."_s), u"Error: Couldn't find a control labelled “Level 13.”."_s);
}

void AccessibilityActionsTest::aControlThatDoesNotRespondIsAFailure()
{
    ControlsBench bench;
    const int button = bench.add(0, u"AXButton"_s, u"Go"_s);
    bench.tree().elements[button].respondsToPress = false;
    QCOMPARE(bench.click(u"GO"_s), u"Error: “GO” didn't respond to a click."_s);
}

void AccessibilityActionsTest::readableRolesBecomeLines_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("line");
    const QString nothing = u"No readable controls found."_s;

    QTest::newRow("button") << u"AXButton"_s << u"Button: Go"_s;
    QTest::newRow("text field") << u"AXTextField"_s << u"TextField: Go"_s;
    QTest::newRow("menu item") << u"AXMenuItem"_s << u"MenuItem: Go"_s;
    QTest::newRow("link") << u"AXLink"_s << u"Link: Go"_s;
    QTest::newRow("tab") << u"AXTab"_s << u"Tab: Go"_s;
    QTest::newRow("radio button") << u"AXRadioButton"_s << u"RadioButton: Go"_s;
    QTest::newRow("check box") << u"AXCheckBox"_s << u"CheckBox: Go"_s;
    QTest::newRow("text") << u"AXStaticText"_s << u"StaticText: Go"_s;
    QTest::newRow("menu bar item") << u"AXMenuBarItem"_s << nothing;
    QTest::newRow("pop-up button") << u"AXPopUpButton"_s << nothing;
    QTest::newRow("window") << u"AXWindow"_s << nothing;
    QTest::newRow("no role") << u""_s << nothing;
}

void AccessibilityActionsTest::readableRolesBecomeLines()
{
    QFETCH(QString, role);
    ControlsBench bench;
    bench.add(0, role, u"Go"_s);
    bench.add(0, role, u""_s);
    QTEST(bench.readUI(), "line");
}

void AccessibilityActionsTest::linesAreJoinedAndRepeatedOnesDropped()
{
    ControlsBench bench;
    bench.add(0, u"AXButton"_s, u"Save"_s);
    bench.add(0, u"AXButton"_s, u"Cancel"_s);
    bench.add(0, u"AXTextField"_s, u"Search"_s);
    bench.add(0, u"AXButton"_s, u"Save"_s);
    bench.tree().add(0, {u"AXStaticText"_s, std::nullopt, std::nullopt, u"3 items"_s});
    QCOMPARE(bench.readUI(), u"Button: Save | Button: Cancel | TextField: Search | StaticText: 3 items"_s);
}

void AccessibilityActionsTest::longLabelsAreCutToFiftyCharacters()
{
    ControlsBench bench;
    bench.add(0, u"AXStaticText"_s, QString(50, u'a') + u'b');
    bench.add(0, u"AXButton"_s, u"👨‍👩‍👧‍👦"_s.repeated(51));
    QCOMPARE(bench.readUI(), u"StaticText: %1 | Button: %2"_s.arg(
                                 QString(50, u'a'), u"👨‍👩‍👧‍👦"_s.repeated(50)));
}

void AccessibilityActionsTest::atMostFortyLinesAreRead()
{
    ControlsBench bench;
    for (int i = 1; i <= 45; ++i)
        bench.add(0, u"AXButton"_s, QString::number(i));
    const QStringList lines = bench.readUI().split(u" | "_s);
    QCOMPARE(lines.size(), 40);
    QCOMPARE(lines.last(), u"Button: 40"_s);
}

void AccessibilityActionsTest::readingExaminesFifteenHundredElements()
{
    ControlsBench bench;
    for (int i = 0; i < 1498; ++i)
        bench.add(0, u"AXGroup"_s, u""_s);
    bench.add(0, u"AXButton"_s, u"Last"_s);
    bench.add(0, u"AXButton"_s, u"Beyond"_s);
    QCOMPARE(bench.readUI(), u"Button: Last"_s);
}

void AccessibilityActionsTest::readingReachesTenLevelsBelowTheRoot()
{
    ControlsBench bench;
    int last = 0;
    for (int depth = 1; depth <= 11; ++depth)
        last = bench.add(last, depth < 10 ? u"AXGroup"_s : u"AXButton"_s, QString::number(depth));
    QCOMPARE(bench.readUI(), u"Button: 10"_s);
}

void AccessibilityActionsTest::anEmptyTreeHasNoReadableControls()
{
    ControlsBench bench;
    QCOMPARE(bench.readUI(), u"No readable controls found."_s);
}

void AccessibilityActionsTest::withoutPermissionBothAskAndFail()
{
    ControlsBench bench;
    bench.desktop.accessibility.trusted = false;
    QCOMPARE(bench.click(u"Go"_s), permissionMissing);
    QCOMPARE(bench.readUI(), permissionMissing);
    QCOMPARE(bench.desktop.accessibility.prompts, 2);
    QCOMPARE(bench.desktop.accessibility.requests, 0);
    QCOMPARE(bench.run(uR"({"action":"list_windows"})"_s), u"none"_s);
}

void AccessibilityActionsTest::withoutAFrontmostApplicationBothFail()
{
    ControlsBench bench;
    bench.desktop.workspace.frontmostProcess.reset();
    QCOMPARE(bench.click(u"Go"_s), u"Error: No frontmost app."_s);
    QCOMPARE(bench.readUI(), u"Error: No frontmost app."_s);
    QCOMPARE(bench.desktop.accessibility.prompts, 0);
}

void AccessibilityActionsTest::thePlatformsErrorsPassThrough_data()
{
    QTest::addColumn<int>("operation");

    QTest::newRow("the frontmost application") << static_cast<int>(RecordedOperation::FrontmostApplication);
    QTest::newRow("the tree") << static_cast<int>(RecordedOperation::ApplicationTree);
    QTest::newRow("an element") << static_cast<int>(RecordedOperation::ReadElements);
    QTest::newRow("the press") << static_cast<int>(RecordedOperation::Press);
}

void AccessibilityActionsTest::thePlatformsErrorsPassThrough()
{
    QFETCH(int, operation);
    ControlsBench bench;
    bench.add(0, u"AXButton"_s, u"Go"_s);
    bench.desktop.journal.failures.insert(static_cast<RecordedOperation>(operation), u"Editor hangs."_s);
    QCOMPARE(bench.click(u"Go"_s), u"Error: Editor hangs."_s);
}

QTEST_GUILESS_MAIN(AccessibilityActionsTest)
#include "AccessibilityActionsTest.moc"

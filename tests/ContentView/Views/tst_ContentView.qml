// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 720
    height: 620

    Component {
        id: scene

        ContentView {
            anchors.fill: parent
            content: ContentViewModel {
            }
        }
    }

    ViewTestCase {
        name: "ContentView"
        when: windowShown

        readonly property string placeholder: "Tell your computer what to do…"
        property ContentView view
        property ContentViewModel content

        function init() {
            root.width = 720;
            root.height = 620;
            view = createTemporaryObject(scene, root);
            content = view.content;
            content.focusRequested();
        }

        function field(): Item {
            return named(view, placeholder);
        }

        function ofType(type: string): var {
            return visibleItems(view).filter(item => item.toString().startsWith(type + "_"));
        }

        function run() {
            content.layer = ContentViewModel.History;
            content.turns.add("Quit Mail");
            content.status = "Waiting for approval: Quit Mail";
            content.isRunning = true;
        }

        // The names of the tab stops, until they repeat.
        function tabStops(): var {
            let names = [];
            field().forceActiveFocus(Qt.TabFocusReason);
            do {
                names.push(focused(root).Accessible.name);
                keyClick(Qt.Key_Tab);
            } while (focused(root) !== field() && names.length < 20)
            return names;
        }

        function test_order() {
            const bar = ofType("CommandBar")[0];
            const footer = ofType("Footer")[0];
            const middle = ofType("EmptyState")[0];
            compare(bar.y, 0);
            const divider = visibleItems(view).find(item => item.opacity === 0.4 && item.height === 1);
            tryCompare(divider, "y", bar.height);
            compare(divider.width, view.width);
            compare(middle.mapToItem(view, 0, 0).y, bar.height + 1);
            compare(footer.y, bar.height + 1 + middle.height);
            compare(footer.y + footer.height, view.height);
        }

        function test_anObstacleIsSaidAboveTheMiddle() {
            compare(ofType("ObstacleStrip").length, 0);
            const sentence = "This desktop is out of reach: choose another one.";
            content.obstacle = sentence;
            const strip = ofType("ObstacleStrip")[0];
            const bar = ofType("CommandBar")[0];
            tryCompare(strip, "y", bar.height + 1);
            compare(strip.width, view.width);
            verify(strip.height >= 40);
            const text = named(strip, sentence);
            verify(text.height <= strip.height);
            const middle = ofType("EmptyState")[0];
            compare(middle.mapToItem(view, 0, 0).y, bar.height + 1 + strip.height);
        }

        function test_layers_data() {
            return [{
                    "tag": "setup",
                    "layer": ContentViewModel.Setup,
                    "type": "SetupCard"
                }, {
                    "tag": "empty",
                    "layer": ContentViewModel.Empty,
                    "type": "EmptyState"
                }, {
                    "tag": "history",
                    "layer": ContentViewModel.History,
                    "type": "History"
                }];
        }

        function test_layers(data) {
            content.layer = data.layer;
            for (const type of ["SetupCard", "EmptyState", "History"])
                compare(ofType(type).length, type === data.type ? 1 : 0, type);
        }

        function test_fieldHasTheFocusOnRequest() {
            verify(field().activeFocus);
            named(view, "Send").forceActiveFocus();
            content.focusRequested();
            verify(field().activeFocus);
        }

        function test_suggestionFillsTheFieldAndGivesItFocus() {
            for (let i = 0; i < 4; ++i) {
                content.calls = [];
                click(view, content.suggestions[i]);
                compare(content.calls, ["useSuggestion " + i]);
                compare(field().text, content.suggestions[i]);
                verify(field().activeFocus);
            }
        }

        function test_tabOrder_data() {
            return [{
                    "tag": "empty",
                    "prepare": () => {},
                    "stops": [placeholder, "Send"].concat(["Open Safari and search Google for MacBook Air", "Open Finder and create a folder called Projects", "Take a screenshot and save it to Downloads", "Open my Downloads folder and find the latest PDF"], ["Grant Accessibility access", "Qwen2.5 1.5B"])
                }, {
                    "tag": "history",
                    "prepare": () => {
                        content.layer = ContentViewModel.History;
                        content.turns.add("Open Finder").add("step", "Open Finder", false);
                    },
                    "stops": [placeholder, "Send", "History", "Grant Accessibility access", "Qwen2.5 1.5B"]
                }, {
                    "tag": "download",
                    "prepare": () => content.layer = ContentViewModel.Setup,
                    "stops": [placeholder, "Send", "Model", "Download Qwen2.5 1.5B", "Grant Accessibility access"]
                }, {
                    "tag": "downloading",
                    "prepare": () => {
                        content.layer = ContentViewModel.Setup;
                        content.setup.step = SetupViewModel.Downloading;
                    },
                    "stops": [placeholder, "Send", "Model", "Cancel", "Grant Accessibility access"]
                }, {
                    "tag": "failed",
                    "prepare": () => {
                        content.layer = ContentViewModel.Setup;
                        content.setup.step = SetupViewModel.Failed;
                    },
                    "stops": [placeholder, "Send", "Model", "Try again", "Grant Accessibility access"]
                }];
        }

        function test_tabOrder(data) {
            content.trusted = false;
            data.prepare();
            compare(tabStops(), data.stops);
        }

        function test_everyTabStopShowsThatItHasTheFocus() {
            content.trusted = false;
            const stops = tabStops().length;
            field().forceActiveFocus(Qt.TabFocusReason);
            for (let i = 1; i < stops; ++i) {
                keyClick(Qt.Key_Tab);
                verify(visibleItems(focused(root)).some(item => item.border !== undefined && item.border.width === 2 && item.border.color === Theme.accent), focused(root).Accessible.name);
            }
        }

        function test_everyControlHasANameAndARole_data() {
            return test_tabOrder_data();
        }

        function test_everyControlHasANameAndARole(data) {
            content.trusted = false;
            data.prepare();
            for (const control of controls(view)) {
                verify(control.Accessible.name !== "", control + " has a name");
                verify(control.Accessible.role !== Accessible.NoRole, control + " has a role");
            }
        }

        function test_everyTextIsReadable_data() {
            return test_tabOrder_data();
        }

        function test_everyTextIsReadable(data) {
            data.prepare();
            for (const text of visibleItems(view).filter(item => item.textFormat !== undefined && item.text !== "" && item.text !== placeholder)) {
                compare(text.textFormat, TextEdit.PlainText);
                const named = item => item !== null && (item.Accessible.name === text.text || item.Accessible.description === text.text || named(item.parent));
                verify(named(text), text.text);
            }
        }

        function test_tabReachesTheStopButton() {
            content.trusted = false;
            run();
            verify(!field().enabled);
            keyClick(Qt.Key_Tab);
            compare(focused(root), named(view, "Stop"));
            keyClick(Qt.Key_Tab);
            compare(focused(root), named(view, "History"));
            keyClick(Qt.Key_Tab);
            compare(focused(root), named(view, "Grant Accessibility access"));
        }

        function test_noCardWithoutQuestion() {
            compare(named(view, "Confirm action"), null);
        }

        function test_cardOverTheMiddle() {
            run();
            content.ask("Quit Mail?");
            const card = named(view, "Confirm action");
            verify(card !== null);
            compare(card.width, 420);
            tryCompare(card, "opacity", 1);
            const bar = ofType("CommandBar")[0];
            const footer = ofType("Footer")[0];
            verify(card.mapToItem(view, 0, 0).y > bar.height);
            verify(card.mapToItem(view, 0, card.height).y < footer.y);
            fuzzyCompare(card.mapToItem(view, card.width / 2, 0).x, view.width / 2, 1);
        }

        function test_cardTakesTheFocusAndGivesItBack() {
            run();
            content.ask("Quit Mail?");
            compare(focused(root), named(view, "Confirm action"));
            keyClick(Qt.Key_Return);
            compare(content.calls, ["resolve true"]);
            verify(!named(view, "Confirm action")?.activeFocus);
            content.isRunning = false;
            verify(field().activeFocus);
        }

        function test_cardKeys_data() {
            return [{
                    "tag": "Return",
                    "key": Qt.Key_Return,
                    "call": "resolve true"
                }, {
                    "tag": "Escape",
                    "key": Qt.Key_Escape,
                    "call": "resolve false"
                }];
        }

        function test_cardKeys(data) {
            run();
            keyClick(data.key);
            compare(content.calls, []);
            content.ask("Quit Mail?");
            keyClick(data.key);
            compare(content.calls, [data.call]);
            keyClick(data.key);
            compare(content.calls, [data.call]);
        }

        function test_cardKeysFromElsewhere_data() {
            return test_cardKeys_data();
        }

        function test_cardKeysFromElsewhere(data) {
            content.trusted = false;
            run();
            for (const name of ["Grant Accessibility access", "Stop"]) {
                content.calls = [];
                content.ask("Quit Mail?");
                named(view, name).forceActiveFocus(Qt.TabFocusReason);
                keyClick(data.key);
                compare(content.calls, [data.call]);
            }
        }

        function test_clicksLeaveTheCardTheKeyboard() {
            content.trusted = false;
            run();
            content.ask("Quit Mail?");
            for (const name of ["Grant Accessibility access", "Qwen2.5 1.5B", "On-device"]) {
                click(view, name);
                compare(focused(root), named(view, "Confirm action"), name);
            }
            compare(content.calls, ["grantAccess"]);
        }

        function test_returnAllowsWhileTheQuestionIsSelected() {
            run();
            content.ask("Quit Mail?");
            const question = showing(named(view, "Confirm action"), "Quit Mail?");
            mouseDoubleClickSequence(question, 5, question.height / 2);
            compare(question.selectedText, "Quit");
            keyClick(Qt.Key_Return);
            compare(content.calls, ["resolve true"]);
        }

        function test_aQuestionTakesTheKeyboardFromTheMenu() {
            run();
            view.openMenu();
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Hide") !== null);
            content.ask("Quit Mail?");
            tryVerify(() => named(all, "Hide") === null);
            compare(focused(root), named(view, "Confirm action"));
            keyClick(Qt.Key_Escape);
            compare(content.calls, ["resolve false"]);
        }

        function test_cardFadesWithItsTextAndAnswersOnce() {
            run();
            content.ask("Quit Mail?");
            const card = named(view, "Confirm action");
            tryCompare(card, "opacity", 1);
            const allow = named(view, "Allow");
            mouseClick(allow);
            verify(card.visible);
            compare(card.reason, "Quit Mail?");
            verify(!allow.enabled);
            mouseClick(allow);
            compare(content.calls, ["resolve true"]);
            tryVerify(() => !card.visible);
        }

        function test_secondQuestion() {
            run();
            content.ask("Quit Mail?");
            keyClick(Qt.Key_Return);
            content.ask("Quit Notes?");
            const card = named(view, "Confirm action");
            compare(card.reason, "Quit Notes?");
            compare(focused(root), card);
            keyClick(Qt.Key_Escape);
            compare(content.calls, ["resolve true", "resolve false"]);
        }

        function test_nothingBehindTheCardCanBeUsed() {
            run();
            content.ask("Quit Mail?");
            for (let i = 0; i < 5; ++i) {
                keyClick(Qt.Key_Tab);
                verify(["Cancel", "Allow"].includes(focused(root).Accessible.name));
            }
            verify(!named(view, "History").enabled);
            const card = named(view, "Confirm action");
            mouseClick(card, 30, card.height - 10);
            compare(content.calls, []);
        }

        function test_focusRequestsGoToTheCard() {
            run();
            content.ask("Quit Mail?");
            named(view, "Stop").forceActiveFocus();
            content.focusRequested();
            compare(focused(root), named(view, "Confirm action"));
        }

        function test_stopWhileTheCardIsUp() {
            run();
            content.ask("Quit Mail?");
            click(view, "Stop");
            compare(content.calls, ["stop"]);
        }

        // A task with one selectable line.
        function showHistory(): Item {
            content.layer = ContentViewModel.History;
            content.turns.add("Open Finder").add("success", "Opened Finder.", false);
            tryVerify(() => showing(view, "Opened Finder.") !== null);
            return showing(view, "Opened Finder.");
        }

        function test_aClickOnTheHistoryLeavesTheFieldTheKeyboard() {
            const line = showHistory();
            mouseClick(line, 10, line.height / 2);
            verify(field().activeFocus);
        }

        function test_whatIsTypedAfterSelectingGoesToTheField() {
            const line = showHistory();
            content.input = "Quit";
            mouseDoubleClickSequence(line, 10, line.height / 2);
            compare(line.selectedText, "Opened");
            verify(line.activeFocus);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Escape);
            verify(line.activeFocus);
            keyClick("x");
            verify(field().activeFocus);
            compare(content.input, "Quitx");
            compare(content.calls, []);
        }

        function test_theReplysEndGivesTheFieldTheKeyboard() {
            showHistory();
            content.isRunning = true;
            content.streamPreview = "action open";
            tryVerify(() => showing(view, "action open")?.width > 0);
            const preview = showing(view, "action open");
            preview.select(0, 6);
            verify(preview.activeFocus);
            content.streamPreview = "";
            content.isRunning = false;
            tryVerify(() => field().activeFocus);
        }

        function test_commandsAreNotTyped() {
            const line = showHistory();
            mouseDoubleClickSequence(line, 10, line.height / 2);
            keyClick(Qt.Key_C, Qt.ControlModifier);
            keyClick(Qt.Key_B, Qt.ControlModifier);
            keyClick(Qt.Key_Return);
            compare(content.input, "");
            verify(line.activeFocus);
        }

        function test_nothingIsTypedWhileATaskRuns() {
            const line = showHistory();
            content.isRunning = true;
            mouseDoubleClickSequence(line, 10, line.height / 2);
            keyClick("x");
            compare(content.input, "");
        }

        function test_announcements() {
            const messages = () => visibleItems(view).filter(item => item.Accessible.role === Accessible.AlertMessage);
            compare(messages().length, 0);
            content.announcement = "Open Finder";
            compare(messages().length, 1);
            compare(messages()[0].Accessible.name, "Open Finder");
            let shown = 0;
            messages()[0].visibleChanged.connect(() => ++shown);
            content.announcement = "Quit Mail?";
            compare(messages()[0].Accessible.name, "Quit Mail?");
            compare(shown, 2);
            content.announcement = "";
            compare(messages().length, 0);
        }

        function test_contextMenuByMouse() {
            mouseClick(view, 40, 300, Qt.RightButton);
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Clear History") !== null);
            compare(named(all, "Clear History").keys, "Ctrl+K");
            verify(named(all, "Hide") !== null);
            verify(named(all, "Quit") !== null);
            click(all, "Clear History");
            compare(content.calls, ["clearHistory"]);
            tryVerify(() => named(all, "Clear History") === null);
        }

        function test_rightClickInTheField() {
            content.input = "Open Safari";
            field().select(0, 5);
            const all = root.Window.contentItem;
            mouseClick(field(), 60, field().height / 2, Qt.RightButton);
            for (const name of ["Cut", "Copy", "Paste", "Clear History", "Hide", "Quit"])
                tryVerify(() => named(all, name) !== null);
            tryVerify(() => named(all, "Copy").y > named(all, "Cut").y);
            click(all, "Cut");
            compare(content.input, "Safari");
            tryVerify(() => field().activeFocus);
            mouseClick(field(), 60, field().height / 2, Qt.RightButton);
            tryVerify(() => named(all, "Paste") !== null);
            tryVerify(() => named(all, "Paste").y > named(all, "Copy").y);
            verify(!named(all, "Cut").enabled);
            verify(!named(all, "Copy").enabled);
            click(all, "Paste");
            compare(content.input, "Open Safari");
            tryVerify(() => field().activeFocus);
        }

        function test_rightClickElsewhere() {
            mouseClick(field(), 60, field().height / 2, Qt.RightButton);
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Paste") !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => named(all, "Hide") === null);
            mouseClick(view, 40, 300, Qt.RightButton);
            tryVerify(() => named(all, "Hide") !== null);
            compare(named(all, "Paste"), null);
            compare(named(all, "Clear History").mapToItem(named(all, "Orvane"), 0, 0).y, 5);
            keyClick(Qt.Key_Escape);
        }

        function test_contextMenuByKeys() {
            named(view, "Send").forceActiveFocus(Qt.TabFocusReason);
            view.openMenu();
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Clear History") !== null);
            compare(named(all, "Cut"), null);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(content.calls, ["clearHistory"]);
            tryVerify(() => named(view, "Send").activeFocus);
        }

        function test_fieldsMenuByKeys() {
            content.input = "Open Safari";
            field().select(0, 5);
            view.openMenu();
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Cut") !== null);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(content.input, "Safari");
            tryVerify(() => field().activeFocus);
        }

        function test_contextMenuByScreenReader() {
            let asked = [];
            view.hideRequested.connect(() => asked.push("hide"));
            view.quitRequested.connect(() => asked.push("quit"));
            const all = root.Window.contentItem;
            for (const name of ["Hide", "Quit"]) {
                view.openMenu();
                tryVerify(() => named(all, name) !== null);
                press(all, name);
                tryVerify(() => named(all, name) === null);
            }
            compare(asked, ["hide", "quit"]);
        }

        function test_noClearingWhileRunning() {
            run();
            view.openMenu();
            const all = root.Window.contentItem;
            tryVerify(() => named(all, "Clear History") !== null);
            verify(!named(all, "Clear History").enabled);
            keyClick(Qt.Key_Escape);
        }

        function test_smallestWindow_data() {
            return test_tabOrder_data();
        }

        // At the minimum size nothing overlaps or leaves the window.
        function test_smallestWindow(data) {
            root.width = 640;
            root.height = 460;
            content.trusted = false;
            content.setup.message = "The server could not be found. Check the connection and try again.";
            content.setup.progressText = "37% of ~986 MB";
            data.prepare();
            waitForRendering(view);
            const places = controls(view).map(item => {
                    verifyInside(item, view);
                    const place = item.mapToItem(view, 0, 0);
                    return Qt.rect(place.x, place.y, item.width, item.height);
                });
            for (let i = 0; i < places.length; ++i) {
                for (let j = 0; j < i; ++j) {
                    const a = places[i];
                    const b = places[j];
                    verify(a.x >= b.x + b.width || b.x >= a.x + a.width || a.y >= b.y + b.height || b.y >= a.y + a.height, i + " and " + j);
                }
            }
        }

        function test_smallestWindowWithALongQuestion() {
            root.width = 640;
            root.height = 460;
            run();
            content.ask("Run a custom AppleScript:\n" + "beep\n".repeat(300));
            const card = named(view, "Confirm action");
            tryCompare(card, "height", card.parent.height - 32);
            for (const name of ["Cancel", "Allow"])
                verifyInside(named(view, name), card);
        }

        function test_nothingTicksWhileIdle() {
            content.turns.add("Open Finder").add("success", "Done", false);
            content.layer = ContentViewModel.History;
            compare(spinners(view).length, 0);
        }
    }
}

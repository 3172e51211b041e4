// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 640
    height: 420

    Component {
        id: scene

        DialogCard {
            anchors.centerIn: parent
            width: 440
            height: Math.min(implicitHeight, parent.height - 32)
            dialog: DialogViewModel {
            }
        }
    }

    ViewTestCase {
        name: "DialogCard"
        when: windowShown

        property DialogCard card

        function init() {
            card = createTemporaryObject(scene, root);
        }

        function ask(values: var) {
            card.dialog.ask(values);
            card.takeFocus();
            waitForRendering(card);
        }

        function askForText() {
            ask({
                    "text": "Your name?",
                    "buttons": ["Cancel", "OK"],
                    "defaultButton": 1,
                    "cancelButton": 0,
                    "hasField": true,
                    "initialText": "Ann"
                });
        }

        function askForItems(more: var) {
            ask(Object.assign({
                        "text": "Which one?",
                        "buttons": ["Cancel", "OK"],
                        "defaultButton": 1,
                        "cancelButton": 0,
                        "hasList": true,
                        "items": ["Red", "Green", "Blue"]
                    }, more));
        }

        function test_showsTheQuestion() {
            ask({
                    "title": "Backup",
                    "text": "Go on?",
                    "message": "It takes an hour.",
                    "buttons": ["Later", "No", "Yes"],
                    "defaultButton": 2
                });
            verify(showing(card, "Backup"));
            verify(showing(card, "Go on?\n\nIt takes an hour."));
            compare(named(card, "Yes").prominent, true);
            compare(named(card, "No").prominent, false);
            for (const name of ["Later", "No", "Yes"])
                verifyInside(named(card, name), card);
            compare(card.Accessible.role, Accessible.Dialog);
            compare(card.Accessible.name, "Backup");
            compare(card.Accessible.description, "Go on?\n\nIt takes an hour.");
        }

        function test_saysWhoAsksWithoutATitle() {
            ask({
                    "text": "Go on?",
                    "buttons": ["OK"]
                });
            verify(showing(card, "A script asks"));
        }

        function test_buttons_data() {
            return [{
                    "tag": "Later",
                    "call": "press 0 “” []"
                }, {
                    "tag": "No",
                    "call": "press 1 “” []"
                }, {
                    "tag": "Yes",
                    "call": "press 2 “” []"
                }];
        }

        function test_buttons(row) {
            ask({
                    "text": "Go on?",
                    "buttons": ["Later", "No", "Yes"]
                });
            click(card, row.tag);
            compare(card.dialog.calls, [row.call]);
        }

        function test_keys_data() {
            return [{
                    "tag": "Return presses the default button",
                    "key": Qt.Key_Return,
                    "calls": ["press 1 “Ann” []"]
                }, {
                    "tag": "Escape presses the cancel button",
                    "key": Qt.Key_Escape,
                    "calls": ["press 0 “Ann” []"]
                }];
        }

        function test_keys(row) {
            askForText();
            keyClick(row.key);
            compare(card.dialog.calls, row.calls);
        }

        function test_keysWithoutTheirButtonsDoNothing() {
            ask({
                    "text": "Go on?",
                    "buttons": ["No", "Yes"]
                });
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Escape);
            compare(card.dialog.calls, []);
        }

        function test_typedTextReplacesTheInitialOne() {
            askForText();
            keyClick(Qt.Key_B);
            keyClick(Qt.Key_O);
            keyClick(Qt.Key_B);
            keyClick(Qt.Key_Return);
            compare(card.dialog.calls, ["press 1 “bob” []"]);
        }

        function test_hiddenTextIsNotShown() {
            ask({
                    "text": "Password?",
                    "buttons": ["OK"],
                    "defaultButton": 0,
                    "hasField": true,
                    "initialText": "secret",
                    "hidesText": true
                });
            const field = visibleItems(card).find(item => item.echoMode !== undefined && item.text === "secret");
            compare(field.echoMode, TextInput.Password);
        }

        function test_aChoiceIsNeeded() {
            askForItems({});
            keyClick(Qt.Key_Return);
            compare(card.dialog.calls, []);
            compare(named(card, "OK").enabled, false);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            compare(named(card, "OK").enabled, true);
            keyClick(Qt.Key_Return);
            compare(card.dialog.calls, ["press 1 “” [1]"]);
        }

        function test_noChoiceMayDo() {
            askForItems({
                    "takesNone": true
                });
            keyClick(Qt.Key_Return);
            compare(card.dialog.calls, ["press 1 “” []"]);
        }

        function test_severalChoices() {
            askForItems({
                    "takesSeveral": true,
                    "initiallyChosen": [2]
                });
            click(card, "Red");
            click(card, "Blue");
            click(card, "Green");
            keyClick(Qt.Key_Return);
            compare(card.dialog.calls, ["press 1 “” [0,1]"]);
        }

        function test_aDoubleClickChooses() {
            askForItems({});
            const green = named(card, "Green");
            mouseDoubleClickSequence(green);
            compare(card.dialog.calls, ["press 1 “” [1]"]);
        }

        function test_aLongListStaysInside() {
            askForItems({
                    "items": Array.from({
                            "length": 500
                        }, (_, i) => "Item " + i)
                });
            tryVerify(() => card.height <= root.height);
            verifyInside(named(card, "OK"), card);
        }

        function test_aLongTextScrolls() {
            ask({
                    "text": "A line.\n".repeat(200),
                    "buttons": ["OK"],
                    "defaultButton": 0
                });
            verifyInside(named(card, "OK"), card);
            verify(card.height <= root.height - 32);
        }

        function test_longButtonsStayInside() {
            ask({
                    "text": "Go on?",
                    "buttons": ["A".repeat(60), "B".repeat(60), "C".repeat(60)]
                });
            for (const letter of ["A", "B", "C"])
                verifyInside(named(card, letter.repeat(60)), card);
        }
    }
}

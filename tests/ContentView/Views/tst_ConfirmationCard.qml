// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 640
    height: 340

    Component {
        id: scene

        ConfirmationCard {
            anchors.centerIn: parent
            width: 420
            height: Math.min(implicitHeight, parent.height - 32)
            reason: "Quit Mail? Unsaved changes may be lost."
        }
    }

    SignalSpy {
        id: answered

        signalName: "answered"
    }

    ViewTestCase {
        name: "ConfirmationCard"
        when: windowShown

        property ConfirmationCard card

        function init() {
            card = createTemporaryObject(scene, root);
            answered.target = card;
            answered.clear();
            card.forceActiveFocus();
        }

        function answers(): var {
            let list = [];
            for (let i = 0; i < answered.count; ++i)
                list.push(answered.signalArguments[i][0]);
            return list;
        }

        function test_looks() {
            compare(card.implicitWidth, 420);
            compare(symbols(card, "exclamationmark.shield.fill").length, 1);
            compare(symbols(card, "exclamationmark.shield.fill")[0].tint, Theme.warning);
            const title = showing(card, "Confirm action");
            compare(title.font.pixelSize, 15);
            compare(title.font.weight, Font.DemiBold);
            compare(showing(card, card.reason).font.pixelSize, 13);
            compare(visibleItems(card).filter(item => item.radius === 16 && item.color === Theme.card).length, 1);
        }

        function test_buttonsTrail() {
            const cancel = named(card, "Cancel");
            const allow = named(card, "Allow");
            tryVerify(() => cancel.mapToItem(card, 0, 0).x < allow.mapToItem(card, 0, 0).x);
            verify(cancel.mapToItem(card, 0, 0).x > card.width / 2);
            compare(cancel.prominent, false);
            compare(allow.prominent, true);
        }

        function test_isADialog() {
            compare(card.Accessible.role, Accessible.Dialog);
            compare(card.Accessible.name, "Confirm action");
            compare(card.Accessible.description, card.reason);
        }

        function test_buttons_data() {
            return [{
                    "tag": "Cancel",
                    "allowed": false
                }, {
                    "tag": "Allow",
                    "allowed": true
                }];
        }

        function test_buttons(data) {
            click(card, data.tag);
            press(card, data.tag);
            named(card, data.tag).forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Enter);
            compare(answers(), Array(5).fill(data.allowed));
        }

        function test_keys_data() {
            return [{
                    "tag": "Escape",
                    "key": Qt.Key_Escape,
                    "allowed": false
                }, {
                    "tag": "Return",
                    "key": Qt.Key_Return,
                    "allowed": true
                }, {
                    "tag": "Enter",
                    "key": Qt.Key_Enter,
                    "allowed": true
                }];
        }

        function test_keys(data) {
            keyClick(data.key);
            compare(answers(), [data.allowed]);
        }

        function test_escapeRefusesFromAnywhereInIt() {
            named(card, "Allow").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Escape);
            const reason = showing(card, card.reason);
            reason.forceActiveFocus();
            keyClick(Qt.Key_Escape);
            compare(answers(), [false, false]);
        }

        function test_otherKeysAnswerNothing() {
            for (const key of [Qt.Key_Space, Qt.Key_Y, Qt.Key_A, Qt.Key_Down, Qt.Key_End])
                keyClick(key);
            compare(answers(), []);
        }

        function test_tabGoesRoundItsButtons() {
            for (const name of ["Cancel", "Allow", "Cancel", "Allow"]) {
                keyClick(Qt.Key_Tab);
                compare(focused(root), named(card, name));
                verify(focused(root).visualFocus);
            }
            for (const name of ["Cancel", "Allow"]) {
                keyClick(Qt.Key_Backtab);
                compare(focused(root), named(card, name));
            }
        }

        function test_shortReasonDoesNotScroll() {
            verify(card.height < root.height - 32);
            verifyInside(showing(card, card.reason), card);
        }

        function test_longReasons_data() {
            return [{
                    "tag": "300 lines",
                    "reason": "Run a custom AppleScript:\n" + "tell application \"Finder\" to activate\n".repeat(300)
                }, {
                    "tag": "one long word",
                    "reason": "x".repeat(20000)
                }, {
                    "tag": "right to left",
                    "reason": "هل تريد إنهاء البريد؟ قد تفقد التغييرات غير المحفوظة. ".repeat(100)
                }];
        }

        // The text scrolls inside the card; the buttons stay visible.
        function test_longReasons(data) {
            card.reason = data.reason;
            tryCompare(card, "height", root.height - 32);
            const text = showing(card, data.reason);
            verify(text.contentWidth <= text.width + 1);
            for (const name of ["Confirm action", "Cancel", "Allow"])
                tryVerify(() => named(card, name).mapToItem(card, 0, 0).y + named(card, name).height <= card.height);
            const scroll = text.parent.parent.parent;
            verify(scroll.isScrollable);
            verifyInside(scroll, card);
            verify(scroll.y + scroll.height <= named(card, "Allow").mapToItem(card, 0, 0).y);
            compare(scroll.contentY, 0);
            keyClick(Qt.Key_End);
            compare(scroll.contentY, scroll.contentHeight - scroll.height);
            keyClick(Qt.Key_Home);
            compare(scroll.contentY, 0);
            keyClick(Qt.Key_PageDown);
            verify(scroll.contentY > 0);
            mouseWheel(scroll, 10, 10, 0, 120 * 1000);
            compare(scroll.contentY, 0);
            compare(answers(), []);
        }

        function test_aNewQuestionIsReadFromItsStart() {
            card.reason = "line\n".repeat(300);
            keyClick(Qt.Key_End);
            card.reason = "other line\n".repeat(300);
            compare(showing(card, card.reason).parent.parent.contentY, 0);
        }

        function test_reasonIsNeverMarkup() {
            card.reason = "<b>Run</b> a script";
            compare(showing(card, "<b>Run</b> a script").textFormat, TextEdit.PlainText);
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 640
    height: 100

    Component {
        id: scene

        CommandBar {
            width: root.width
            content: ContentViewModel {
            }
        }
    }

    ViewTestCase {
        name: "CommandBar"
        when: windowShown

        property CommandBar bar
        property Item field

        function init() {
            bar = createTemporaryObject(scene, root);
            bar.focusField();
            field = named(bar, "Tell your computer what to do…");
        }

        function test_leadingSymbol_data() {
            return [{
                    "tag": "idle",
                    "running": false,
                    "symbol": "command"
                }, {
                    "tag": "running",
                    "running": true,
                    "symbol": "sparkles"
                }];
        }

        function test_leadingSymbol(data) {
            bar.content.isRunning = data.running;
            const found = symbols(bar, data.symbol);
            compare(found.length, 1);
            compare(found[0].width, 22);
        }

        function test_fieldLooksPlain() {
            compare(field.font.pixelSize, 24);
            compare(field.font.weight, Font.Normal);
            compare(field.placeholderText, "Tell your computer what to do…");
            compare(field.background, null);
            verify(field.activeFocus);
        }

        function test_typingGoesToTheModel() {
            keyClick("h");
            keyClick("i");
            compare(bar.content.input, "hi");
        }

        function test_theModelsTextIsShown() {
            keyClick("x");
            bar.content.input = "Open Safari";
            compare(field.text, "Open Safari");
            compare(field.cursorPosition, field.text.length);
            bar.content.input = "";
            compare(field.text, "");
        }

        function test_returnSends_data() {
            return [{
                    "tag": "Return",
                    "key": Qt.Key_Return
                }, {
                    "tag": "Enter",
                    "key": Qt.Key_Enter
                }];
        }

        function test_returnSends(data) {
            bar.content.input = "Open Safari";
            keyClick(data.key);
            compare(bar.content.calls, ["send Open Safari"]);
        }

        function test_fieldIsDisabledWhileRunning() {
            bar.content.isRunning = true;
            verify(!field.enabled);
            keyClick(Qt.Key_Return);
            keyClick("x");
            compare(bar.content.calls, []);
            compare(bar.content.input, "");
        }

        function test_fieldHasTheFocusAgainAfterRunning() {
            bar.content.isRunning = true;
            verify(!field.activeFocus);
            bar.content.isRunning = false;
            verify(field.activeFocus);
        }

        function test_submitButton() {
            compare(symbols(bar, "arrow.up.circle.fill").length, 1);
            compare(symbols(bar, "arrow.up.circle.fill")[0].width, 24);
            compare(symbols(bar, "arrow.up.circle.fill")[0].tint, Theme.accent);
            compare(symbols(bar, "stop.circle.fill").length, 0);
            click(bar, "Send");
            compare(bar.content.calls, ["send "]);
        }

        function test_stopButton() {
            bar.content.isRunning = true;
            compare(symbols(bar, "stop.circle.fill").length, 1);
            compare(symbols(bar, "stop.circle.fill")[0].width, 22);
            compare(symbols(bar, "arrow.up.circle.fill").length, 0);
            compare(named(bar, "Stop").help, "Stop");
            click(bar, "Stop");
            compare(bar.content.calls, ["stop"]);
        }

        function test_aScreenReaderCanPressTheButton() {
            press(bar, "Send");
            bar.content.isRunning = true;
            press(bar, "Stop");
            compare(bar.content.calls, ["send ", "stop"]);
        }

        function test_buttonByKeys_data() {
            return [{
                    "tag": "Space",
                    "key": Qt.Key_Space
                }, {
                    "tag": "Return",
                    "key": Qt.Key_Return
                }, {
                    "tag": "Enter",
                    "key": Qt.Key_Enter
                }];
        }

        function test_buttonByKeys(data) {
            keyClick(Qt.Key_Tab);
            compare(focused(root), named(bar, "Send"));
            keyClick(data.key);
            compare(bar.content.calls, ["send "]);
        }

        function test_afterAClickOnAButtonTheFieldHasTheKeyboard_data() {
            return [{
                    "tag": "Send",
                    "runs": false
                }, {
                    "tag": "Stop",
                    "runs": true
                }];
        }

        function test_afterAClickOnAButtonTheFieldHasTheKeyboard(data) {
            bar.content.isRunning = data.runs;
            click(bar, data.tag);
            bar.content.isRunning = !data.runs;
            bar.content.isRunning = false;
            verify(field.activeFocus);
            keyClick("x");
            compare(bar.content.input, "x");
        }

        function test_theKeyThatSendsNeverStops_data() {
            return test_buttonByKeys_data();
        }

        // A second key press after the task has begun is an accident.
        function test_theKeyThatSendsNeverStops(data) {
            test_buttonByKeys(data);
            bar.content.isRunning = true;
            keyClick(data.key);
            compare(bar.content.calls, ["send "]);
            bar.content.isRunning = false;
            verify(field.activeFocus);
        }

        function test_theKeyThatStopsNeverSends() {
            bar.content.isRunning = true;
            keyClick(Qt.Key_Tab);
            compare(focused(root), named(bar, "Stop"));
            keyClick(Qt.Key_Return);
            bar.content.isRunning = false;
            verify(field.activeFocus);
            compare(bar.content.calls, ["stop"]);
        }

        function test_longTextStaysInTheField() {
            bar.content.input = "A task that goes on and on ".repeat(20);
            verifyInside(field, bar);
            verify(field.clip);
            verifyInside(named(bar, "Send"), bar);
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 640
    height: 460

    LogListModel {
        id: lines
    }

    Component {
        id: scene

        TurnView {
            width: root.width
            command: "Open Finder"
            log: lines
            summary: ""
        }
    }

    ViewTestCase {
        name: "TurnView"
        when: windowShown

        property TurnView turn

        function init() {
            lines.clear();
            turn = createTemporaryObject(scene, root);
        }

        function test_heading() {
            const heading = showing(turn, "Open Finder");
            compare(heading.font.pixelSize, 15);
            compare(heading.font.weight, Font.DemiBold);
            compare(heading.color, Theme.primary);
            compare(heading.Accessible.role, Accessible.StaticText);
        }

        function test_kinds_data() {
            return [{
                    "tag": "step",
                    "running": false,
                    "symbol": "checkmark",
                    "tint": "secondary",
                    "color": "secondary",
                    "spoken": "carried out"
                }, {
                    "tag": "success",
                    "running": false,
                    "symbol": "checkmark.circle.fill",
                    "tint": "good",
                    "color": "primary",
                    "spoken": "done"
                }, {
                    "tag": "failure",
                    "running": false,
                    "symbol": "xmark.circle.fill",
                    "tint": "bad",
                    "color": "bad",
                    "spoken": "failed"
                }, {
                    "tag": "info",
                    "running": false,
                    "symbol": "info.circle",
                    "tint": "secondary",
                    "color": "secondary",
                    "spoken": "note"
                }, {
                    "tag": "confirm",
                    "running": false,
                    "symbol": "hand.raised.fill",
                    "tint": "warning",
                    "color": "secondary",
                    "spoken": "waits for your approval"
                }, {
                    "tag": "step",
                    "running": true,
                    "symbol": "",
                    "color": "primary",
                    "spoken": "running"
                }, {
                    "tag": "confirm",
                    "running": true,
                    "symbol": "",
                    "color": "primary",
                    "spoken": "running"
                }];
        }

        function test_kinds(data) {
            lines.add(data.tag, "A line", data.running);
            const line = showing(turn, "A line");
            compare(line.font.pixelSize, 13);
            compare(line.color, Theme[data.color]);
            compare(line.Accessible.role, Accessible.StaticText);
            compare(line.Accessible.name, "A line");
            compare(line.Accessible.description, data.spoken);
            compare(spinners(turn).length, data.running ? 1 : 0);
            const icons = visibleItems(turn).filter(item => item.tint !== undefined);
            compare(icons.length, data.running ? 0 : 1);
            if (!data.running) {
                compare(symbols(turn, data.symbol).length, 1);
                compare(icons[0].tint, Theme[data.tint]);
                compare(icons[0].parent.width, 14);
            }
        }

        function test_aLineChangesInPlace() {
            lines.add("step", "Quit Mail", true);
            lines.change(0, "confirm", "Quit Mail", true);
            compare(spinners(turn).length, 1);
            lines.change(0, "failure", "Quit Mail — you said no", false);
            compare(spinners(turn).length, 0);
            compare(showing(turn, "Quit Mail"), null);
            compare(showing(turn, "Quit Mail — you said no").color, Theme.bad);
        }

        function test_summary() {
            lines.add("failure", "Declined: Quit Mail", false);
            compare(visibleItems(turn).filter(item => item.textFormat !== undefined).length, 2);
            const height = turn.height;
            turn.summary = "I didn't do that, as requested.";
            const summary = showing(turn, "I didn't do that, as requested.");
            compare(summary.font.pixelSize, 13);
            compare(summary.color, Theme.primary);
            compare(summary.textFormat, TextEdit.PlainText);
            compare(summary.Accessible.role, Accessible.StaticText);
            compare(summary.Accessible.name, "I didn't do that, as requested.");
            tryVerify(() => turn.height > height);
            const line = showing(turn, "Declined: Quit Mail");
            verify(summary.mapToItem(turn, 0, 0).y >= line.mapToItem(turn, 0, line.height).y);
            compare(summary.mapToItem(turn, summary.leftPadding, 0).x, line.mapToItem(turn, 0, 0).x);
            verifyInside(summary, turn);
        }

        function test_linesInOrder() {
            for (let i = 0; i < 20; ++i)
                lines.add("step", "Line " + i, false);
            let above = showing(turn, "Open Finder").mapToItem(turn, 0, 0).y;
            for (let i = 0; i < 20; ++i) {
                const line = showing(turn, "Line " + i);
                tryVerify(() => line.mapToItem(turn, 0, 0).y > above);
                above = line.mapToItem(turn, 0, 0).y;
            }
        }

        function test_equalLinesAreTwo() {
            lines.add("step", "Press Return", false);
            lines.add("step", "Press Return", false);
            compare(visibleItems(turn).filter(item => item.textFormat !== undefined && item.text === "Press Return").length, 2);
        }

        function test_textCanBeSelectedAndCopied() {
            lines.add("success", "Created the folder.", false);
            const line = showing(turn, "Created the folder.");
            mouseDoubleClickSequence(line, 10, line.height / 2);
            compare(line.selectedText, "Created");
            verify(line.readOnly);
            keyClick(Qt.Key_X);
            compare(line.text, "Created the folder.");
        }

        function test_textIsNeverMarkup() {
            turn.command = "<b>Bold</b>";
            lines.add("step", "<img src='x'> &amp;", false);
            compare(showing(turn, "<b>Bold</b>").textFormat, TextEdit.PlainText);
            compare(showing(turn, "<img src='x'> &amp;").textFormat, TextEdit.PlainText);
        }

        function test_longTextsWrap_data() {
            return [{
                    "tag": "words",
                    "text": "Find the quarterly report and open it. ".repeat(20)
                }, {
                    "tag": "one word",
                    "text": "x".repeat(2000)
                }, {
                    "tag": "right to left",
                    "text": "افتح مجلد التنزيلات وابحث عن أحدث ملف ".repeat(20)
                }];
        }

        function test_longTextsWrap(data) {
            turn.command = data.text;
            lines.add("step", data.text + "!", false);
            waitForRendering(turn);
            for (const text of [data.text, data.text + "!"]) {
                const item = showing(turn, text);
                verify(item.lineCount > 1);
                verify(item.contentWidth <= item.width + 1);
                verifyInside(item, turn);
            }
        }
    }
}

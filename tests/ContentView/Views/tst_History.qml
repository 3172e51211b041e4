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

        History {
            width: root.width
            height: root.height
            content: ContentViewModel {
                layer: ContentViewModel.History
            }
        }
    }

    ViewTestCase {
        name: "History"
        when: windowShown

        property History history
        property ContentViewModel content

        function init() {
            history = createTemporaryObject(scene, root);
            content = history.content;
        }

        // Turns of very different heights.
        function fill(count: int) {
            for (let i = 0; i < count; ++i) {
                const log = content.turns.add("Task " + i + " and what belongs to it".repeat(i % 7 === 0 ? 20 : 0));
                for (let line = 0; line < i * 7 % 13; ++line)
                    log.add("step", "Line " + line + " of it".repeat(line % 5 === 0 ? 40 : 1), false);
            }
        }

        function endOf(text: string): real {
            const item = showing(history, text);
            return item === null ? Infinity : item.mapToItem(history, 0, item.height).y;
        }

        // The view is at its end, with the text at the bottom.
        function verifyAtEnd(text: string) {
            tryVerify(() => history.view.atYEnd && endOf(text) <= history.height && endOf(text) > history.height - 60, 3000, text + " is at the bottom");
        }

        function scrollToStart() {
            mouseWheel(history, 300, 150, 0, 120 * 10000);
            tryVerify(() => history.view.atYBeginning);
        }

        function test_turnsInOrder() {
            for (const command of ["One", "Two", "Three"])
                content.turns.add(command);
            let above = 0;
            for (const command of ["One", "Two", "Three"]) {
                tryVerify(() => showing(history, command) !== null);
                const y = showing(history, command).mapToItem(history, 0, 0).y;
                verify(y > above);
                above = y;
            }
        }

        function test_liveStatusOnlyWhileRunning() {
            content.turns.add("One");
            content.status = "Thinking…";
            compare(showing(history, "Thinking…"), null);
            content.isRunning = true;
            const status = showing(history, "Thinking…");
            compare(status.font.pixelSize, 13);
            compare(status.font.weight, Font.Medium);
            compare(spinners(history).length, 1);
            tryVerify(() => status.mapToItem(history, 0, 0).y > endOf("One"));
            content.streamPreview = "{\"action\":";
            const preview = showing(history, "{\"action\":");
            compare(preview.font.pixelSize, 11);
            tryVerify(() => preview.mapToItem(history, 0, 0).y >= endOf("Thinking…"));
            content.isRunning = false;
            compare(showing(history, "Thinking…"), null);
            compare(spinners(history).length, 0);
        }

        function test_previewCanBeSelected() {
            content.turns.add("One");
            content.isRunning = true;
            content.streamPreview = "action open";
            const preview = showing(history, "action open");
            tryVerify(() => preview.width > 0 && preview.mapToItem(history, 0, 0).y > endOf("One"));
            mouseDoubleClickSequence(preview, 5, preview.height / 2);
            compare(preview.selectedText, "action");
        }

        function test_selectionSurvivesTheNextPiece_data() {
            return [{
                    "tag": "a word",
                    "select": preview => preview.select(0, 6)
                }, {
                    "tag": "backwards",
                    "select": preview => preview.select(11, 3)
                }, {
                    "tag": "all",
                    "select": preview => preview.selectAll()
                }];
        }

        function test_selectionSurvivesTheNextPiece(data) {
            content.turns.add("One");
            content.isRunning = true;
            content.streamPreview = "action open";
            const preview = showing(history, "action open");
            data.select(preview);
            const selected = preview.selectedText;
            const position = preview.cursorPosition;
            verify(selected !== "");
            content.streamPreview = "action open app";
            content.streamPreview = "action open app\nSafari 🧭";
            compare(preview.text, content.streamPreview);
            compare(preview.selectedText, selected);
            compare(preview.cursorPosition, position);
            content.streamPreview = "";
            compare(preview.text, "");
            content.streamPreview = "other";
            compare(preview.text, "other");
            compare(preview.selectedText, "");
        }

        function test_scrollsToTheNewTurn() {
            fill(30);
            content.turns.add("The last");
            verifyAtEnd("The last");
            content.turns.add("The newest");
            verifyAtEnd("The newest");
        }

        function test_scrollsExactlyWithManyTurns() {
            fill(200);
            content.turns.add("The newest");
            verifyAtEnd("The newest");
            scrollToStart();
            verify(showing(history, "Task 1") !== null || showing(history, "The newest") === null);
            content.isRunning = true;
            content.status = "Thinking…";
            verifyAtEnd("Thinking…");
        }

        function test_scrollsWithEachChange_data() {
            return [{
                    "tag": "status",
                    "change": () => content.status = "Open Finder"
                }, {
                    "tag": "a new line",
                    "change": () => {
                        content.turns.get(29).log.add("step", "Open Finder", true);
                        content.announcement = "Open Finder";
                    }
                }, {
                    "tag": "a new turn",
                    "change": () => content.turns.add("Next")
                }];
        }

        function test_scrollsWithEachChange(data) {
            fill(30);
            content.isRunning = true;
            content.status = "Thinking…";
            verifyAtEnd("Thinking…");
            scrollToStart();
            data.change();
            verifyAtEnd(content.status);
        }

        function test_followsTheGrowingReply() {
            fill(10);
            content.isRunning = true;
            content.status = "Thinking…";
            let reply = "";
            for (let i = 0; i < 60; ++i) {
                reply += "piece of the reply ";
                content.streamPreview = reply;
                wait(5);
            }
            tryVerify(() => history.view.atYEnd);
            verifyAtEnd(reply);
        }

        function test_aReaderIsLeftAloneWhileTheReplyGrows() {
            fill(30);
            content.isRunning = true;
            content.status = "Thinking…";
            verifyAtEnd("Thinking…");
            scrollToStart();
            content.streamPreview = "piece of the reply ".repeat(40);
            wait(300);
            verify(history.view.atYBeginning);
        }

        function test_theScrollBarIsNotFought() {
            fill(30);
            content.turns.add("The last");
            verifyAtEnd("The last");
            tryVerify(() => named(history, "Scroll") !== null);
            const bar = named(history, "Scroll");
            const handle = bar.height * (bar.position + bar.size / 2);
            mousePress(bar, bar.width / 2, handle);
            mouseMove(bar, bar.width / 2, 20);
            tryVerify(() => !history.view.atYEnd);
            const held = history.view.contentY;
            content.turns.add("The newest");
            wait(300);
            fuzzyCompare(history.view.contentY, held, 1);
            mouseRelease(bar, bar.width / 2, 20);
            content.turns.add("The one after");
            verifyAtEnd("The one after");
        }

        function test_growingWindowKeepsTheEndInSight() {
            fill(30);
            content.turns.add("The newest");
            verifyAtEnd("The newest");
            history.height = 200;
            verifyAtEnd("The newest");
            history.height = root.height;
            history.width = 400;
            verifyAtEnd("The newest");
        }

        function test_keys() {
            fill(30);
            content.turns.add("The last");
            verifyAtEnd("The last");
            history.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Home);
            tryVerify(() => history.view.atYBeginning);
            keyClick(Qt.Key_PageDown);
            const page = history.view.contentY;
            keyClick(Qt.Key_Down);
            verify(history.view.contentY > page);
            keyClick(Qt.Key_Up);
            fuzzyCompare(history.view.contentY, page, 1);
            keyClick(Qt.Key_End);
            tryVerify(() => history.view.atYEnd);
        }

        function test_clearing() {
            fill(30);
            content.turns.add("The last");
            verifyAtEnd("The last");
            content.turns.clear();
            tryCompare(history.view, "count", 0);
            content.turns.add("Afresh");
            tryVerify(() => endOf("Afresh") < 60);
        }

        function test_accessible() {
            compare(named(history, "History").Accessible.role, Accessible.List);
        }
    }
}

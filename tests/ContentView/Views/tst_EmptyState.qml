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

        EmptyState {
            width: root.width
            height: root.height
            suggestions: ["Open Safari and search Google for MacBook Air", "Open Finder and create a folder called Projects", "Take a screenshot and save it to Downloads", "Open my Downloads folder and find the latest PDF"]
        }
    }

    SignalSpy {
        id: chosen

        signalName: "chosen"
    }

    ViewTestCase {
        name: "EmptyState"
        when: windowShown

        property EmptyState empty

        function init() {
            empty = createTemporaryObject(scene, root);
            chosen.target = empty;
            chosen.clear();
        }

        function test_caption() {
            const caption = showing(empty, "Try");
            compare(caption.font.pixelSize, 12);
            compare(caption.font.weight, Font.DemiBold);
            compare(caption.font.capitalization, Font.AllUppercase);
            compare(caption.color, Theme.secondary);
        }

        function test_rowsInOrder() {
            let above = showing(empty, "Try").mapToItem(empty, 0, 0).y;
            for (const text of empty.suggestions) {
                const row = showing(empty, text);
                compare(row.font.pixelSize, 13);
                const y = row.mapToItem(empty, 0, 0).y;
                verify(y > above);
                above = y;
            }
            compare(symbols(empty, "arrow.turn.down.right").length, 4);
        }

        function test_rowsAreButtons() {
            for (let i = 0; i < 4; ++i) {
                const text = empty.suggestions[i];
                compare(named(empty, text).Accessible.role, Accessible.Button);
                click(empty, text);
                press(empty, text);
                named(empty, text).forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
                keyClick(Qt.Key_Space);
                compare(chosen.count, 4);
                for (let call = 0; call < 4; ++call)
                    compare(chosen.signalArguments[call][0], i);
                chosen.clear();
            }
        }

        function test_fits() {
            for (const text of empty.suggestions)
                verifyInside(named(empty, text), empty);
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 100
    height: 100

    Component {
        id: scene

        Main {
            content: ContentViewModel {
            }
        }
    }

    ViewTestCase {
        name: "Main"
        when: windowShown

        property Main main

        function init() {
            main = createTemporaryObject(scene, root);
            main.show();
            main.requestActivate();
            tryVerify(() => main.active);
            main.content.focusRequested();
        }

        function field(): Item {
            return named(main.contentItem, "Tell your computer what to do…");
        }

        function test_frame() {
            compare(main.title, "Orvane");
            compare(main.width, 720);
            compare(main.height, 620);
            compare(main.minimumWidth, 640);
            compare(main.minimumHeight, 460);
            verify(main.flags & Qt.FramelessWindowHint);
        }

        function test_isHiddenUntilShown() {
            const other = createTemporaryObject(scene, root);
            verify(!other.visible);
        }

        function test_fieldHasTheFocus() {
            verify(field().activeFocus);
        }

        function test_appearance() {
            compare(Theme.dark, false);
            compare(main.color.a, 1);
            const light = Theme.window.hslLightness;
            main.dark = true;
            compare(Theme.dark, true);
            verify(Theme.window.hslLightness < light);
            main.translucent = true;
            compare(main.color.a, 0);
            verify(Theme.background.a < 1);
            main.translucent = false;
            compare(Theme.background.a, 1);
            main.dark = false;
        }

        function test_clearHistoryByKey() {
            keyClick(Qt.Key_K, Qt.ControlModifier);
            compare(main.content.calls, ["clearHistory"]);
        }

        function test_clearHistoryByKeyKeepsTheTypedText() {
            main.content.input = "Open Safari";
            field().cursorPosition = 0;
            keyClick(Qt.Key_K, Qt.ControlModifier);
            compare(main.content.calls, ["clearHistory"]);
            compare(main.content.input, "Open Safari");
        }

        function test_closeByKey() {
            keyClick(Qt.Key_W, Qt.ControlModifier);
            tryVerify(() => !main.visible);
        }

        function test_menuByKey_data() {
            return [{
                    "tag": "Menu",
                    "key": Qt.Key_Menu,
                    "modifiers": Qt.NoModifier
                }, {
                    "tag": "Shift+F10",
                    "key": Qt.Key_F10,
                    "modifiers": Qt.ShiftModifier
                }];
        }

        function test_menuByKey(data) {
            keyClick(data.key, data.modifiers);
            tryVerify(() => named(main.contentItem, "Clear History") !== null);
            for (let presses = 0; presses < 6 && !named(main.contentItem, "Hide").highlighted; ++presses)
                keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => !main.visible, 1000, "Hide closes");
        }

        function test_edges() {
            const edges = visibleItems(main.contentItem).filter(item => item.edge !== undefined);
            compare(edges.length, 8);
            const at = (x, y) => edges.filter(item => x >= item.x && x < item.x + item.width && y >= item.y && y < item.y + item.height).map(item => item.edge).pop();
            compare(at(2, 300), Qt.LeftEdge);
            compare(at(717, 300), Qt.RightEdge);
            compare(at(300, 2), Qt.TopEdge);
            compare(at(300, 617), Qt.BottomEdge);
            compare(at(2, 2), Qt.LeftEdge | Qt.TopEdge);
            compare(at(717, 2), Qt.RightEdge | Qt.TopEdge);
            compare(at(2, 617), Qt.LeftEdge | Qt.BottomEdge);
            compare(at(717, 617), Qt.RightEdge | Qt.BottomEdge);
            compare(at(300, 300), undefined);
            for (const edge of edges)
                compare(edge.cursorShape, {
                        [Qt.LeftEdge]: Qt.SizeHorCursor,
                        [Qt.RightEdge]: Qt.SizeHorCursor,
                        [Qt.TopEdge]: Qt.SizeVerCursor,
                        [Qt.BottomEdge]: Qt.SizeVerCursor,
                        [Qt.LeftEdge | Qt.TopEdge]: Qt.SizeFDiagCursor,
                        [Qt.RightEdge | Qt.BottomEdge]: Qt.SizeFDiagCursor,
                        [Qt.RightEdge | Qt.TopEdge]: Qt.SizeBDiagCursor,
                        [Qt.LeftEdge | Qt.BottomEdge]: Qt.SizeBDiagCursor
                    }[edge.edge]);
            main.resizable = false;
            compare(visibleItems(main.contentItem).filter(item => item.edge !== undefined).length, 0);
        }

        function test_frameOfTheDesktop() {
            const top = field().mapToItem(main.contentItem, 0, 0).y;
            main.translucent = true;
            main.titleBarHeight = 28;
            compare(field().mapToItem(main.contentItem, 0, 0).y, top + 28);
            compare(visibleItems(main.contentItem).filter(item => item.edge !== undefined).length, 0);
            const background = visibleItems(main.contentItem).find(item => item.radius !== undefined && item.width === main.width);
            compare(background.color.a, 0);
            compare(background.radius, 0);
            compare(background.border.width, 0);
            main.translucent = false;
            compare(background.color.a, 1);
        }

        function test_edgesLeaveTheControlsAlone() {
            main.width = 640;
            main.height = 460;
            main.content.trusted = false;
            main.content.layer = ContentViewModel.History;
            for (let i = 0; i < 60; ++i)
                main.content.turns.add("Task " + i);
            tryVerify(() => named(main.contentItem, "Scroll") !== null);
            waitForRendering(main.contentItem);
            const bars = visibleItems(main.contentItem).filter(item => item.Accessible.name === "Scroll");
            for (const control of controls(main.contentItem).filter(item => item.Accessible.name !== "History").concat(bars)) {
                const place = control.mapToItem(main.contentItem, 0, 0);
                verify(place.x >= 6 && place.x + control.width <= 634, control.Accessible.name);
                verify(place.y >= 6 && place.y + control.height <= 454, control.Accessible.name);
            }
        }
    }
}

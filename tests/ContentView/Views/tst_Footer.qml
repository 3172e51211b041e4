// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

Item {
    id: root

    width: 640
    height: 460

    Component {
        id: scene

        Footer {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            content: ContentViewModel {
            }
        }
    }

    ViewTestCase {
        name: "Footer"
        when: windowShown

        readonly property string grant: "Grant Accessibility access"
        property Footer footer

        function init() {
            footer = createTemporaryObject(scene, root);
        }

        function everything(): Item {
            return root.Window.contentItem;
        }

        function openMenu() {
            click(footer, "Qwen2.5 1.5B");
            tryVerify(() => named(everything(), "Qwen2.5 3B") !== null);
        }

        function test_badge() {
            verify(named(footer, "On-device") !== null);
            compare(symbols(footer, "lock.fill").length, 1);
        }

        function test_bannerOnlyWithoutPermission() {
            compare(named(footer, grant), null);
            footer.content.trusted = false;
            verify(named(footer, grant) !== null);
            compare(symbols(footer, "hand.raised.fill").length, 1);
            compare(symbols(footer, "hand.raised.fill")[0].tint, Theme.warningText);
            footer.content.trusted = true;
            compare(named(footer, grant), null);
        }

        function test_bannerAsksForPermission() {
            footer.content.trusted = false;
            click(footer, grant);
            press(footer, grant);
            named(footer, grant).forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(footer.content.calls, Array(3).fill("grantAccess"));
        }

        function test_noModelsDuringSetup() {
            footer.content.layer = ContentViewModel.Setup;
            compare(named(footer, "Qwen2.5 1.5B"), null);
            verify(named(footer, "On-device") !== null);
        }

        function test_order() {
            footer.content.trusted = false;
            const places = [grant, "Qwen2.5 1.5B", "On-device"].map(name => named(footer, name));
            for (const item of places)
                verifyInside(item, footer);
            tryVerify(() => places[0].mapToItem(footer, places[0].width, 0).x < places[1].mapToItem(footer, 0, 0).x);
            verify(places[1].mapToItem(footer, places[1].width, 0).x < places[2].mapToItem(footer, 0, 0).x);
        }

        function test_menuShowsTheSelectedModel() {
            footer.content.selectedModel = 1;
            verify(named(footer, "Qwen2.5 3B") !== null);
        }

        function test_menuListsTheCatalog() {
            openMenu();
            const first = visibleItems(everything()).find(item => item.current === true);
            compare(first.text, "Qwen2.5 1.5B");
            const second = named(everything(), "Qwen2.5 3B");
            compare(second.current, false);
            verify(first.y < second.y);
            verifyInside(second, everything());
            keyClick(Qt.Key_Escape);
            tryVerify(() => named(everything(), "Qwen2.5 3B") === null);
            compare(footer.content.calls, []);
        }

        function test_menuByMouse() {
            openMenu();
            click(everything(), "Qwen2.5 3B");
            compare(footer.content.calls, ["selectModel 1"]);
            tryVerify(() => named(everything(), "Qwen2.5 3B") === null);
        }

        function test_menuByKeys_data() {
            return [{
                    "tag": "Space",
                    "key": Qt.Key_Space
                }, {
                    "tag": "Return",
                    "key": Qt.Key_Return
                }, {
                    "tag": "Down",
                    "key": Qt.Key_Down
                }, {
                    "tag": "Up",
                    "key": Qt.Key_Up
                }];
        }

        function test_menuByKeys(data) {
            const button = named(footer, "Qwen2.5 1.5B");
            button.forceActiveFocus(Qt.TabFocusReason);
            keyClick(data.key);
            tryVerify(() => named(everything(), "Qwen2.5 3B") !== null);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(footer.content.calls, ["selectModel 1"]);
            tryVerify(() => button.activeFocus, 1000, "the focus returns, not " + focused(root));
        }

        function test_noMenuWhileATaskRuns() {
            const button = named(footer, "Qwen2.5 1.5B");
            footer.content.isRunning = true;
            verify(!button.enabled);
            mouseClick(button);
            compare(named(everything(), "Qwen2.5 3B"), null);
            footer.content.isRunning = false;
            openMenu();
            footer.content.isRunning = true;
            tryVerify(() => named(everything(), "Qwen2.5 3B") === null);
            compare(footer.content.calls, []);
        }

        function test_menuByScreenReader() {
            press(footer, "Qwen2.5 1.5B");
            tryVerify(() => named(everything(), "Qwen2.5 3B") !== null);
            press(everything(), "Qwen2.5 3B");
            compare(footer.content.calls, ["selectModel 1"]);
            tryVerify(() => named(everything(), "Qwen2.5 3B") === null);
        }
    }
}

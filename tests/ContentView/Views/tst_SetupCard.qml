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

        SetupCard {
            width: root.width
            height: root.height
            setup: SetupViewModel {
            }
        }
    }

    ViewTestCase {
        name: "SetupCard"
        when: windowShown

        readonly property string explanation: "Orvane runs a language model entirely on your computer. The one-time download is stored locally; nothing you type ever leaves this device."
        property SetupCard card

        function init() {
            card = createTemporaryObject(scene, root);
        }

        function inStep(step) {
            card.setup.step = step;
        }

        function test_texts() {
            compare(symbols(card, "cpu").length, 1);
            compare(symbols(card, "cpu")[0].width, 38);
            const title = showing(card, "Set up your private AI");
            compare(title.font.pixelSize, 20);
            compare(title.font.weight, Font.DemiBold);
            const text = showing(card, explanation);
            compare(text.font.pixelSize, 13);
            compare(text.color, Theme.secondary);
            verify(text.width <= 420);
            verify(named(card, "Set up your private AI") !== null);
            verify(named(card, explanation) !== null);
        }

        function test_order_data() {
            return [{
                    "tag": "download",
                    "step": SetupViewModel.NeedsDownload,
                    "last": ["Download Qwen2.5 1.5B"]
                }, {
                    "tag": "progress",
                    "step": SetupViewModel.Downloading,
                    "last": ["37% of ~986 MB", "Cancel"]
                }, {
                    "tag": "loading",
                    "step": SetupViewModel.Loading,
                    "last": ["Loading model…"]
                }, {
                    "tag": "failed",
                    "step": SetupViewModel.Failed,
                    "last": ["No connection.", "Try again"]
                }];
        }

        // Each state shows only its own items, stacked and centred.
        function test_order(data) {
            card.setup.progressText = "37% of ~986 MB";
            card.setup.message = "No connection.";
            inStep(data.step);
            const all = ["Download Qwen2.5 1.5B", "Cancel", "Loading model…", "No connection.", "Try again"];
            for (const name of all)
                compare(named(card, name) !== null, data.last.includes(name), name);
            const shown = ["Set up your private AI", explanation, "Model"].concat(data.last).map(name => named(card, name));
            const top = item => item.mapToItem(card, 0, 0).y;
            tryVerify(() => shown.every((item, i) => i === 0 || top(item) >= top(shown[i - 1]) + shown[i - 1].height));
            for (const item of shown)
                fuzzyCompare(item.mapToItem(card, item.width / 2, 0).x, card.width / 2, item.text === "Loading model…" ? 30 : 1);
            compare(spinners(card).length, data.step === SetupViewModel.Loading ? 1 : 0);
        }

        function test_pickerListsTheModels() {
            const picker = named(card, "Model");
            verify(picker.width <= 360);
            compare(picker.displayText, "Qwen2.5 1.5B — Fast, 986 MB");
            compare(picker.count, 2);
            compare(picker.textAt(1), "Qwen2.5 3B — Smarter, 1.9 GB");
            card.setup.selectedModel = 1;
            compare(picker.displayText, "Qwen2.5 3B — Smarter, 1.9 GB");
        }

        function test_pickerByMouse() {
            const picker = named(card, "Model");
            click(card, "Model");
            tryVerify(() => picker.popup.opened);
            click(root.Window.contentItem, "Qwen2.5 3B — Smarter, 1.9 GB");
            compare(card.setup.calls, ["select 1"]);
            tryVerify(() => !picker.popup.visible);
        }

        function test_pickerByKeys() {
            const picker = named(card, "Model");
            picker.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => picker.popup.opened);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(card.setup.calls, ["select 1"]);
            tryVerify(() => !picker.popup.visible);
        }

        function test_pickerByScreenReader() {
            const picker = named(card, "Model");
            press(card, "Model");
            tryVerify(() => picker.popup.opened);
            press(root.Window.contentItem, "Qwen2.5 3B — Smarter, 1.9 GB");
            compare(card.setup.calls, ["select 1"]);
        }

        function test_pickerShowsWhatIsSelectedAfterARefusedChoice() {
            const picker = named(card, "Model");
            picker.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(card.setup.calls, ["select 1"]);
            compare(picker.displayText, "Qwen2.5 1.5B — Fast, 986 MB");
            card.setup.selectedModel = 1;
            compare(picker.displayText, "Qwen2.5 3B — Smarter, 1.9 GB");
        }

        function test_buttons_data() {
            return [{
                    "tag": "download",
                    "step": SetupViewModel.NeedsDownload,
                    "button": "Download Qwen2.5 1.5B",
                    "call": "download"
                }, {
                    "tag": "cancel",
                    "step": SetupViewModel.Downloading,
                    "button": "Cancel",
                    "call": "cancel"
                }, {
                    "tag": "try again",
                    "step": SetupViewModel.Failed,
                    "button": "Try again",
                    "call": "tryAgain"
                }];
        }

        function test_buttons(data) {
            inStep(data.step);
            click(card, data.button);
            press(card, data.button);
            named(card, data.button).forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(card.setup.calls, Array(4).fill(data.call));
        }

        function test_progress() {
            inStep(SetupViewModel.Downloading);
            card.setup.progress = 0.375;
            card.setup.progressText = "37% of ~986 MB";
            const bar = visibleItems(card).find(item => item.visualPosition !== undefined);
            compare(bar.width, 300);
            compare(bar.value, 0.375);
            compare(bar.indeterminate, false);
            compare(bar.Accessible.role, Accessible.ProgressBar);
            const text = showing(card, "37% of ~986 MB");
            compare(text.font.pixelSize, 12);
            card.setup.progress = 0.999;
            card.setup.progressText = "99% of ~986 MB";
            verify(showing(card, "99% of ~986 MB") !== null);
        }

        function test_failureIsRed() {
            card.setup.message = "The download failed.";
            inStep(SetupViewModel.Failed);
            const message = showing(card, "The download failed.");
            compare(message.font.pixelSize, 12);
            compare(message.color, Theme.bad);
        }

        function test_everyStateFits_data() {
            return test_order_data();
        }

        function test_everyStateFits(data) {
            card.setup.progressText = "37% of ~986 MB";
            card.setup.message = "The server could not be found. Check the connection and try again.";
            inStep(data.step);
            verify(!card.isScrollable, "fits without scrolling");
            for (const name of ["Set up your private AI", "Model"])
                verifyInside(named(card, name), card);
        }

        function test_aVeryLongMessageScrolls() {
            card.setup.message = "No such host. ".repeat(200);
            inStep(SetupViewModel.Failed);
            tryVerify(() => card.isScrollable);
            mouseWheel(card, card.width / 2, card.height / 2, 0, -120 * 100);
            const button = named(card, "Try again");
            verifyInside(button, card);
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
// A mock with settable values that records the view's calls.
import QtQml

QtObject {
    enum Step {
        NeedsDownload,
        Downloading,
        Loading,
        Failed,
        Done
    }

    property var calls: []

    property string explanation: "Orvane runs a language model entirely on your computer. The one-time download is stored locally; nothing you type ever leaves this device."
    property list<string> choices: ["Qwen2.5 1.5B — Fast, 986 MB", "Qwen2.5 3B — Smarter, 1.9 GB"]
    property int selectedModel: 0
    property int step: SetupViewModel.NeedsDownload
    property string downloadLabel: "Download Qwen2.5 1.5B"
    property real progress: 0
    property string progressText: ""
    property string message: ""

    function select(index: int) {
        calls.push("select " + index);
    }

    function download() {
        calls.push("download");
    }

    function cancel() {
        calls.push("cancel");
    }

    function tryAgain() {
        calls.push("tryAgain");
    }
}

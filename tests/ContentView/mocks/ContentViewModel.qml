// SPDX-License-Identifier: Apache-2.0
// A mock with settable values that records the view's calls.
import QtQml

QtObject {
    id: model

    enum Layer {
        Setup,
        Empty,
        History
    }

    property var calls: []

    property int layer: ContentViewModel.Empty
    property string input: ""
    property string obstacle: ""
    property bool trusted: true
    property bool isRunning: false
    property string leadingSymbol: isRunning ? "sparkles" : "command"
    property string placeholder: "Tell your computer what to do…"
    property list<string> suggestions: ["Open Safari and search Google for MacBook Air", "Open Finder and create a folder called Projects", "Take a screenshot and save it to Downloads", "Open my Downloads folder and find the latest PDF"]
    property TurnListModel turns: TurnListModel {
    }
    property string status: ""
    property string streamPreview: ""
    property bool isConfirming: false
    property string confirmationReason: ""
    property bool canChooseModel: layer !== ContentViewModel.Setup
    property string modelName: modelNames[selectedModel]
    property list<string> modelNames: ["Qwen2.5 1.5B", "Qwen2.5 3B"]
    property int selectedModel: 0
    property SetupViewModel setup: SetupViewModel {
    }
    property DialogViewModel dialog: DialogViewModel {
    }
    property string announcement: ""

    signal focusRequested
    signal confirmationChanged

    onIsConfirmingChanged: confirmationChanged()
    onConfirmationReasonChanged: confirmationChanged()

    function ask(reason: string) {
        confirmationReason = reason;
        isConfirming = true;
    }

    function send() {
        calls.push("send " + input);
    }

    function stop() {
        calls.push("stop");
    }

    function resolve(approved: bool) {
        calls.push("resolve " + approved);
        isConfirming = false;
        confirmationReason = "";
    }

    function useSuggestion(index: int) {
        calls.push("useSuggestion " + index);
        input = suggestions[index];
        focusRequested();
    }

    function selectModel(index: int) {
        calls.push("selectModel " + index);
    }

    function grantAccess() {
        calls.push("grantAccess");
    }

    function clearHistory() {
        calls.push("clearHistory");
    }
}

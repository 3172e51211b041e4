// SPDX-License-Identifier: Apache-2.0
// A mock with settable values that records the view's calls.
import QtQml

QtObject {
    property var calls: []

    property bool isOpen: false
    property string title: ""
    property string text: ""
    property string message: ""
    property list<string> buttons: []
    property int defaultButton: -1
    property int cancelButton: -1
    property bool hasField: false
    property string initialText: ""
    property bool hidesText: false
    property bool hasList: false
    property list<string> items: []
    property list<int> initiallyChosen: []
    property bool takesSeveral: false
    property bool takesNone: false

    signal changed

    // Opens a dialog with these values.
    function ask(values: var) {
        for (const name in values)
            this[name] = values[name];
        isOpen = true;
        changed();
    }

    function press(button: int, typed: string, chosen: var) {
        calls.push("press " + button + " “" + typed + "” " + JSON.stringify(chosen));
        isOpen = false;
        changed();
    }
}

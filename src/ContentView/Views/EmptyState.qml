// SPDX-License-Identifier: Apache-2.0
// Shown before the first task: four suggestions.
import QtQuick
import QtQuick.Layouts

Item {
    id: empty

    required property var suggestions // a list of strings

    signal chosen(int index)

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * Theme.margin)
        spacing: 4

        StaticText {
            Layout.leftMargin: 12
            Layout.bottomMargin: 6
            text: "Try"
            font.pixelSize: 12
            font.weight: Font.DemiBold
            font.capitalization: Font.AllUppercase
            font.letterSpacing: 0.8
            color: Theme.secondary
        }

        Repeater {
            model: empty.suggestions

            // qmllint disable unqualified
            SuggestionRow {
                required property string modelData
                required property int index

                Layout.fillWidth: true
                text: modelData
                onClicked: empty.chosen(index)
            }
            // qmllint enable unqualified
        }
    }
}

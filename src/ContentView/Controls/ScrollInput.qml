// SPDX-License-Identifier: Apache-2.0
// Scrolls a view by wheel, touch and keys. The view itself is not interactive, so that dragging its background moves
// the window.
import QtQuick

Item {
    id: input

    required property Flickable view
    readonly property real step: 48
    readonly property real page: Math.max(step, view.height - step)

    // Emitted when the user scrolls.
    signal scrolled

    function scrollBy(distance: real) {
        scrolled();
        const last = Math.max(view.originY, view.originY + view.contentHeight - view.height);
        view.contentY = Math.min(Math.max(view.contentY + distance, view.originY), last);
    }

    function pressKey(event: KeyEvent) {
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Up:
            return scrollBy(-step);
        case Qt.Key_Down:
            return scrollBy(step);
        case Qt.Key_PageUp:
            return scrollBy(-page);
        case Qt.Key_PageDown:
            return scrollBy(page);
        case Qt.Key_Home:
            return scrollBy(-view.contentHeight);
        case Qt.Key_End:
            return scrollBy(view.contentHeight);
        default:
            event.accepted = false;
        }
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => input.scrollBy(event.pixelDelta.y !== 0 ? -event.pixelDelta.y : -event.angleDelta.y / 120 * input.step)
    }

    DragHandler {
        id: touch

        property real last: 0

        target: null
        acceptedDevices: PointerDevice.TouchScreen
        xAxis.enabled: false
        onActiveChanged: last = 0
        onTranslationChanged: {
            input.scrollBy(last - translation.y);
            last = translation.y;
        }
    }
}

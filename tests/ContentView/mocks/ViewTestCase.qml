// SPDX-License-Identifier: Apache-2.0
// Helpers for view tests that find items as a user or a screen reader does.
import QtQuick
import QtTest

TestCase {
    id: test

    // All visible items in `root`, outermost first.
    function visibleItems(root: Item): var {
        if (!root.visible)
            return [];
        let items = [root];
        for (let i = 0; i < root.children.length; ++i)
            items = items.concat(visibleItems(root.children[i]));
        return items;
    }

    // The visible item with this accessible name, or null.
    function named(root: Item, name: string): Item {
        return visibleItems(root).find(item => !item.Accessible.ignored && item.Accessible.name === name) ?? null;
    }

    // The visible item with this text, or null.
    function showing(root: Item, text: string): Item {
        return visibleItems(root).find(item => item.textFormat !== undefined && item.text === text) ?? null;
    }

    // The visible images of a symbol.
    function symbols(root: Item, name: string): var {
        return visibleItems(root).filter(item => item.source !== undefined && item.source.toString().startsWith("image://symbol/" + name + "?"));
    }

    function spinners(root: Item): var {
        return visibleItems(root).filter(item => item.phase !== undefined);
    }

    // The enabled controls reachable by the Tab key.
    function controls(root: Item): var {
        return visibleItems(root).filter(item => item.activeFocusOnTab && item.enabled);
    }

    function press(root: Item, name: string) {
        const control = named(root, name);
        verify(control !== null, "there is a control named " + name);
        verify(control.enabled);
        control.Accessible.pressAction();
    }

    function click(root: Item, name: string) {
        const control = named(root, name);
        verify(control !== null, "there is a control named " + name);
        mouseClick(control);
    }

    // The item with the keyboard focus.
    function focused(root: Item): Item {
        return root.Window.activeFocusItem;
    }

    function verifyInside(inner: Item, outer: Item) {
        const place = inner.mapToItem(outer, 0, 0);
        verify(place.x >= 0 && place.y >= 0, inner + " begins inside: " + place);
        verify(place.x + inner.width <= outer.width + 0.5, inner + " ends inside, to the right");
        verify(place.y + inner.height <= outer.height + 0.5, inner + " ends inside, at the bottom");
    }
}

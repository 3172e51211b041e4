// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtTest
import Orvane.ContentView

TestCase {
    name: "Theme"

    function cleanup() {
        Theme.dark = false;
        Theme.translucent = false;
    }

    function luminance(color: color): real {
        const linear = part => part <= 0.03928 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }

    function contrast(one: color, other: color): real {
        const lights = [luminance(one), luminance(other)].sort((a, b) => b - a);
        return (lights[0] + 0.05) / (lights[1] + 0.05);
    }

    function test_roles() {
        compare(Theme.roleColor(LogEntryAppearance.Primary), Theme.primary);
        compare(Theme.roleColor(LogEntryAppearance.Secondary), Theme.secondary);
        compare(Theme.roleColor(LogEntryAppearance.Good), Theme.good);
        compare(Theme.roleColor(LogEntryAppearance.Bad), Theme.bad);
        compare(Theme.roleColor(LogEntryAppearance.Warning), Theme.warning);
    }

    function test_hues() {
        for (const dark of [false, true]) {
            Theme.dark = dark;
            verify(Theme.good.hslHue > 0.3 && Theme.good.hslHue < 0.45, "green");
            verify(Theme.bad.hslHue < 0.03 || Theme.bad.hslHue > 0.97, "red");
            for (const orange of [Theme.warning, Theme.warningText])
                verify(orange.hslHue > 0.05 && orange.hslHue < 0.12, "orange");
        }
    }

    function test_contrast_data() {
        let rows = [];
        for (const dark of [false, true]) {
            for (const text of ["primary", "secondary", "placeholder", "accent", "bad", "warningText"])
                rows.push({
                        "tag": (dark ? "dark " : "light ") + text,
                        "dark": dark,
                        "name": text,
                        "least": 4.5
                    });
            for (const symbol of ["good", "warning"])
                rows.push({
                        "tag": (dark ? "dark " : "light ") + symbol,
                        "dark": dark,
                        "name": symbol,
                        "least": 3
                    });
        }
        return rows;
    }

    function test_contrast(data) {
        Theme.dark = data.dark;
        for (const ground of [Theme.window, Theme.card])
            verify(contrast(Theme[data.name], ground) >= data.least, contrast(Theme[data.name], ground));
    }

    function test_prominentTextIsLegible() {
        for (const dark of [false, true]) {
            Theme.dark = dark;
            verify(contrast(Theme.prominentText, Theme.prominent) >= 4.5);
        }
    }

    // Also over the worst background: white behind the dark window, black behind the light one.
    function test_translucentTextIsLegible() {
        Theme.translucent = true;
        for (const dark of [false, true]) {
            Theme.dark = dark;
            const behind = dark ? 1 : 0;
            const mix = part => part * Theme.background.a + behind * (1 - Theme.background.a);
            const ground = Qt.rgba(mix(Theme.background.r), mix(Theme.background.g), mix(Theme.background.b), 1);
            verify(contrast(Theme.primary, ground) >= 7);
            verify(contrast(Theme.secondary, ground) >= 4.5, contrast(Theme.secondary, ground));
        }
    }
}

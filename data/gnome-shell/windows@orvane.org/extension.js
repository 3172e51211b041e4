// SPDX-License-Identifier: Apache-2.0
// Reports the open windows to Orvane over D-Bus, activates and closes them, and enters text. It answers only
// programs whose paths are lines of the file "programs" beside this one.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';
import {getKeyboardManager} from 'resource:///org/gnome/shell/misc/keyboardManager.js';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {getInputSourceManager, INPUT_SOURCE_TYPE_IBUS} from 'resource:///org/gnome/shell/ui/status/keyboard.js';

const version = '@ORVANE_EXTENSION_VERSION@'; // of this file
const busName = 'org.orvane.Shell';
const objectPath = '/org/orvane/Shell';
const interfaceDescription = `
<node>
  <interface name="org.orvane.Shell">
    <property name="Version" type="s" access="read"/>
    <!-- Front to back. -->
    <method name="Windows">
      <arg name="windows" type="aa{sv}" direction="out"/>
    </method>
    <method name="Activate">
      <arg name="window" type="u" direction="in"/>
    </method>
    <method name="Close">
      <arg name="window" type="u" direction="in"/>
    </method>
    <!-- Line breaks and tabs are keys, each a text of its own. The result is "entered", or "sent" if the application hasn't
         reported the text; or why nothing was: "no focus" of the window, or "no text field" with the focus. -->
    <method name="EnterText">
      <arg name="window" type="u" direction="in"/>
      <arg name="text" type="s" direction="in"/>
      <arg name="result" type="s" direction="out"/>
    </method>
    <!-- "modifiers" (u): held keys and locks, as X11's mask; "group" (u): the active layout's in the keymap;
         "composes" (b): whether an input method makes text of keys. -->
    <method name="Keyboard">
      <arg name="state" type="a{sv}" direction="out"/>
    </method>
  </interface>
</node>`;

// How long to wait for applications that don't report what they have got.
const patience = 100; // milliseconds

const keys = new Map([
    ['\n', {symbol: Clutter.KEY_Return, code: 36}],
    ['\t', {symbol: Clutter.KEY_Tab, code: 23}],
]);

const kinds = new Map([
    [Meta.WindowType.NORMAL, 'application'],
    [Meta.WindowType.DIALOG, 'dialog'],
    [Meta.WindowType.MODAL_DIALOG, 'dialog'],
    [Meta.WindowType.UTILITY, 'dialog'],
]);

function allWindows() {
    const windows = global.get_window_actors().map(actor => actor.meta_window);
    return global.display.sort_windows_by_stacking(windows).filter(window => kinds.has(window.window_type)).reverse();
}

// While the shell has a menu, a dialog or its overview open, no window gets keys.
function focusedWindow() {
    return Main.modalCount > 0 ? null : global.display.focus_window;
}

function find(identifier) {
    const found = allWindows().find(window => window.get_stable_sequence() === identifier);
    if (!found)
        throw new Error('There is no such window.');
    return found;
}

// 0 if unknown: portals' dialogs and some of the desktop's own applications use a connection that the shell has opened
// for them, and would appear to be the shell.
function processOf(window) {
    const process = window.get_pid();
    return process === new Gio.Credentials().get_unix_pid() ? 0 : process;
}

function described(window, recency) {
    const application = Shell.WindowTracker.get_default().get_window_app(window);
    const values = {
        identifier: ['u', window.get_stable_sequence()],
        process: ['i', processOf(window)],
        title: ['s', window.get_title() ?? ''],
        className: ['s', window.get_wm_class() ?? ''],
        instance: ['s', window.get_wm_class_instance() ?? ''],
        application: ['s', application?.get_id() ?? ''],
        sandbox: ['s', window.get_sandboxed_app_id() ?? ''],
        transientFor: ['u', window.get_transient_for()?.get_stable_sequence() ?? 0],
        kind: ['s', kinds.get(window.window_type)],
        recency: ['i', recency.indexOf(window)],
        isActive: ['b', window === focusedWindow()],
        isMinimised: ['b', window.minimized],
        isModal: ['b', window.window_type === Meta.WindowType.MODAL_DIALOG],
        isOnCurrentDesktop: ['b', window.located_on_workspace(global.workspace_manager.get_active_workspace())],
        belongsInTaskBar: ['b', !window.skip_taskbar],
        canBeClosed: ['b', window.can_close()],
    };
    return Object.fromEntries(
        Object.entries(values).map(([name, [type, value]]) => [name, new GLib.Variant(type, value)]));
}

function keyboardState() {
    return {
        modifiers: new GLib.Variant('u', global.get_pointer()[2]),
        group: new GLib.Variant('u', getKeyboardManager().currentLayout?.groupIndex ?? 0),
        composes: new GLib.Variant('b', getInputSourceManager().currentSource?.type === INPUT_SOURCE_TYPE_IBUS),
    };
}

function obstacleToText(window) {
    if (focusedWindow()?.get_stable_sequence() !== window)
        return 'no focus';
    return Main.inputMethod.currentFocus === null ? 'no text field' : null;
}

function pressKey({symbol, code}) {
    for (const isPressed of [true, false])
        Main.inputMethod.forward_key(symbol, code, 0, global.display.get_current_time_roundtrip(), isPressed);
}

function isReportedBeforeCursor(entered) {
    const [text, cursor] = Main.inputMethod.getSurroundingText();
    return text !== null && [...text].slice(0, cursor).join('').endsWith(entered);
}

// Resolves to true when the application has reported the text as that before the cursor, as most do, or to false after
// `patience`.
function arrivalOf(text) {
    return new Promise(resolve => {
        const signal = Main.inputMethod.connect('surrounding-text-set', () => {
            if (!isReportedBeforeCursor(text))
                return;
            GLib.source_remove(timeout);
            Main.inputMethod.disconnect(signal);
            resolve(true);
        });
        const timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, patience, () => {
            Main.inputMethod.disconnect(signal);
            resolve(false);
            return GLib.SOURCE_REMOVE;
        });
    });
}

async function enterText(window, text) {
    const obstacle = obstacleToText(window);
    if (obstacle)
        return obstacle;
    const arrived = arrivalOf(text);
    if (keys.has(text))
        pressKey(keys.get(text));
    else
        Main.inputMethod.commit(text);
    return await arrived ? 'entered' : 'sent';
}

class Service {
    constructor(programs) {
        this._programs = programs;
        this._callers = new Map(); // by bus name, which is never reused: whether it is one of the programs
        this._object = Gio.DBusExportedObject.wrapJSObject(interfaceDescription, this);
        this._object.export(Gio.DBus.session, objectPath);
        this._name = Gio.bus_own_name(Gio.BusType.SESSION, busName, Gio.BusNameOwnerFlags.NONE, null, null, null);
    }

    destroy() {
        Gio.bus_unown_name(this._name);
        this._object.unexport();
    }

    get Version() {
        return version;
    }

    WindowsAsync(parameters, invocation) {
        this._answer(invocation, () => {
            const recency = global.display.get_tab_list(Meta.TabList.NORMAL_ALL, null);
            const windows = allWindows().map(window => described(window, recency));
            return new GLib.Variant('(aa{sv})', [windows]);
        });
    }

    ActivateAsync([window], invocation) {
        this._answer(invocation, () => {
            Main.activateWindow(find(window));
            return null;
        });
    }

    CloseAsync([window], invocation) {
        this._answer(invocation, () => {
            find(window).delete(global.get_current_time());
            return null;
        });
    }

    EnterTextAsync([window, text], invocation) {
        this._answer(invocation, async () => new GLib.Variant('(s)', [await enterText(window, text)]));
    }

    KeyboardAsync(parameters, invocation) {
        this._answer(invocation, () => new GLib.Variant('(a{sv})', [keyboardState()]));
    }

    async _answer(invocation, act) {
        try {
            if (!await this._isOurProgram(invocation.get_sender()))
                throw new Error('This extension answers only Orvane.');
            invocation.return_value(await act());
        } catch (error) {
            invocation.return_dbus_error('org.orvane.Shell.Error', error.message);
        }
    }

    async _isOurProgram(caller) {
        if (!this._callers.has(caller))
            this._callers.set(caller, this._programs.includes(await this._executableOf(caller)));
        return this._callers.get(caller);
    }

    async _executableOf(caller) {
        const process = await this._processOf(caller);
        return GLib.file_read_link(`/proc/${process}/exe`);
    }

    _processOf(caller) {
        return new Promise((resolve, reject) => {
            Gio.DBus.session.call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus',
                'GetConnectionUnixProcessID', new GLib.Variant('(s)', [caller]), new GLib.VariantType('(u)'),
                Gio.DBusCallFlags.NONE, -1, null, (bus, result) => {
                    try {
                        resolve(bus.call_finish(result).deepUnpack()[0]);
                    } catch (error) {
                        reject(error);
                    }
                });
        });
    }
}

export default class OrvaneExtension extends Extension {
    enable() {
        const [, contents] = this.dir.get_child('programs').load_contents(null);
        this._service = new Service(new TextDecoder().decode(contents).trim().split('\n'));
    }

    disable() {
        this._service.destroy();
        this._service = null;
    }
}

// SPDX-License-Identifier: Apache-2.0
// The keyboard of a private GNOME desktop: without one, no window gets the keyboard focus. Run with gjs -m; prints a line
// once it is there, and provides it until it is ended.
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';

const shiftKey = 42; // the kernel's code
const service = 'org.gnome.Mutter.RemoteDesktop';
// Kept, since the connection would be closed when nothing refers to it, and the keyboard would go with it.
const bus = Gio.DBus.session;

function call(path, interfaceName, method, parameters = null) {
    const answer = bus.call_sync(service, path, interfaceName, method, parameters, null,
        Gio.DBusCallFlags.NONE, -1, null);
    return answer.deepUnpack();
}

const [session] = call('/org/gnome/Mutter/RemoteDesktop', service, 'CreateSession');
call(session, `${service}.Session`, 'Start');
// The keyboard is added with the first key.
for (const isPressed of [true, false]) {
    call(session, `${service}.Session`, 'NotifyKeyboardKeycode',
        new GLib.Variant('(ub)', [shiftKey, isPressed]));
}
print('ready');
new GLib.MainLoop(null, false).run();

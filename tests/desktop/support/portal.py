"""A desktop's settings portal that answers light or dark, and whether the user wants
less motion.

Started with the colour scheme (0 none, 1 dark, 2 light) and with 1 for less motion,
else 0; says "ready" when it has its name; each line on standard input is a new scheme, which is announced
and confirmed by "told N". Needs the distribution's D-Bus module.
"""

import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

INTERFACE = "org.freedesktop.portal.Settings"
NAMESPACE = "org.freedesktop.appearance"
KEY = "color-scheme"
MOTION_KEY = "reduced-motion"


class SettingsPortal(dbus.service.Object):
    def __init__(self, bus, scheme, reduced_motion):
        super().__init__(bus, "/org/freedesktop/portal/desktop")
        self._scheme = dbus.UInt32(scheme)
        self._reduced_motion = dbus.UInt32(reduced_motion)

    def _values(self):
        return {KEY: self._scheme, MOTION_KEY: self._reduced_motion}

    def _value(self, namespace, key):
        if namespace != NAMESPACE or key not in self._values():
            raise dbus.DBusException(
                "Requested setting not found", name="org.freedesktop.portal.Error.NotFound"
            )
        return self._values()[key]

    # The first version of the call wraps its answer twice.
    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v")
    def Read(self, namespace, key):
        return dbus.UInt32(self._value(namespace, key), variant_level=2)

    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v")
    def ReadOne(self, namespace, key):
        return self._value(namespace, key)

    @dbus.service.method(INTERFACE, in_signature="as", out_signature="a{sa{sv}}")
    def ReadAll(self, namespaces):
        wanted = not namespaces or any(
            name in ("", NAMESPACE) or NAMESPACE.startswith(name.rstrip("*")) for name in namespaces
        )
        return {NAMESPACE: self._values()} if wanted else dbus.Dictionary(signature="sa{sv}")

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, _interface, _name):
        return dbus.UInt32(2)

    @dbus.service.signal(INTERFACE, signature="ssv")
    def SettingChanged(self, namespace, key, value):
        pass

    def change(self, scheme):
        self._scheme = dbus.UInt32(scheme)
        self.SettingChanged(NAMESPACE, KEY, self._scheme)


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    portal = SettingsPortal(bus, int(sys.argv[1]), int(sys.argv[2]))
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus, do_not_queue=True)
    loop = GLib.MainLoop()

    def read(channel, _condition):
        line = channel.readline()
        if not line:
            loop.quit()
            return False
        portal.change(int(line))
        bus.flush()
        print(f"told {line.strip()}", flush=True)
        return True

    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, read)
    print("ready", flush=True)
    loop.run()
    del name


if __name__ == "__main__":
    main()

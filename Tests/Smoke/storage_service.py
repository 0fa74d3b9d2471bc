"""The storage service of a private system bus: unmounts loop devices in the mount namespace of a
process, and frees them. Its arguments: that process and the devices, "loop0"."""
import subprocess
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.UDisks2"
METHOD = '<interface name="{}.{}"><method name="{}"><arg type="a{{sv}}" direction="in"/></method>' \
    "</interface>"
process, *devices = sys.argv[1:]


def handle(_bus, _sender, path, _interface, method, arguments, invocation):
    device = "/dev/" + path.rpartition("/")[2]
    asks = not arguments[0].get("auth.no_user_interaction")
    command = ["losetup", "--detach", device] if method == "Delete" else \
        ["nsenter", f"--mount=/proc/{process}/ns/mnt", "umount", device]
    if asks or subprocess.run(command, check=False).returncode != 0:
        invocation.return_dbus_error(f"{NAME}.Error.Failed", "refused")
    else:
        invocation.return_value(None)


bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
for method in ("Filesystem", "Unmount"), ("Loop", "Delete"):
    node = Gio.DBusNodeInfo.new_for_xml(f"<node>{METHOD.format(NAME, *method)}</node>")
    for device in devices:
        bus.register_object(f"/org/freedesktop/UDisks2/block_devices/{device}", node.interfaces[0],
                            handle, None, None)
Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()

"""The package manager of a private system bus, to which the program belongs to a package that is up
to date."""
from gi.repository import Gio, GLib

NAME = "org.freedesktop.PackageKit"
PATH = "/org/freedesktop/PackageKit"
WORK = "/1_work"
METHODS = {"SetHints": ["as"], "SearchFiles": ["t", "as"], "RefreshCache": ["b"],
           "GetUpdates": ["t"], "Cancel": []}


def interface(name, methods):
    text = f'<node><interface name="{name}">{methods}</interface></node>'
    return Gio.DBusNodeInfo.new_for_xml(text).interfaces[0]


def method(name, types, direction="in"):
    arguments = "".join(f'<arg type="{kind}" direction="{direction}"/>' for kind in types)
    return f'<method name="{name}">{arguments}</method>'


def create(_bus, _sender, _path, _interface, _method, _arguments, invocation):
    invocation.return_value(GLib.Variant("(o)", [WORK]))


def work(bus, _sender, path, name, called, _arguments, invocation):
    invocation.return_value(None)
    if called == "SearchFiles":
        bus.emit_signal(None, path, name, "Package", GLib.Variant(
            "(uss)", [1, "meterkin;1;amd64;installed", ""]))
    if called != "SetHints":
        bus.emit_signal(None, path, name, "Finished", GLib.Variant("(uu)", [1, 5]))


bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
bus.register_object(PATH, interface(NAME, method("CreateTransaction", ["o"], "out")), create)
bus.register_object(WORK, interface(f"{NAME}.Transaction", "".join(
    method(name, types) for name, types in METHODS.items())), work)
Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()

"""A window to type in; prints its text at each change."""
import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

Gtk.Settings.get_default().props.gtk_cursor_blink = False   # pictures are compared
window = Gtk.Window(title="editor", default_width=260, default_height=60)
entry = Gtk.Entry()
entry.connect("changed", lambda entry: print(entry.get_text(), flush=True))
window.add(entry)
window.show_all()
Gtk.main()

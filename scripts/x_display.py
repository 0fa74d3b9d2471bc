"""A look at an X server from outside: windows, selections, pixels. Needs nothing but libX11, and
libXtst for the pointer."""
import ctypes
import struct
import zlib
from functools import cached_property
from typing import NamedTuple

Id = ctypes.c_ulong
Pointer = ctypes.c_void_p

IS_VIEWABLE = 2
SUCCESS = 0
ALL_PLANES = ctypes.c_ulong(-1)
Z_PIXMAP = 2


class Rect(NamedTuple):
    x: int
    y: int
    width: int
    height: int

    def contains(self, other):
        return (self.x <= other.x and self.y <= other.y
                and other.x + other.width <= self.x + self.width
                and other.y + other.height <= self.y + self.height)


class Window(NamedTuple):
    id: int
    name: str
    rect: Rect          # on the screen
    viewable: bool
    override_redirect: bool
    parent: int


class Image:
    """Pixels as rows of 8-bit red, green and blue."""

    def __init__(self, width, height, rgb):
        self.width, self.height, self.rgb = width, height, bytes(rgb)

    @classmethod
    def from_bgrx(cls, width, height, data):
        rgb = bytearray(3 * width * height)
        rgb[0::3], rgb[1::3], rgb[2::3] = data[2::4], data[1::4], data[0::4]
        return cls(width, height, rgb)

    @classmethod
    def from_ppm(cls, data):
        magic, width, height, depth, rgb = data.split(maxsplit=4)
        if magic != b"P6" or depth != b"255":
            raise ValueError("not an 8-bit binary PPM")
        # split() swallows pixels that happen to be white space: count from the end
        return cls(int(width), int(height), data[len(data) - 3 * int(width) * int(height):])

    def pixel(self, x, y):
        return tuple(self.rgb[3 * (y * self.width + x):][:3])

    def pixels(self):
        return [tuple(self.rgb[i:i + 3]) for i in range(0, len(self.rgb), 3)]

    def crop(self, rect):
        left, top = max(0, rect.x), max(0, rect.y)
        right, bottom = min(self.width, rect.x + rect.width), min(self.height, rect.y + rect.height)
        rows = [self.rgb[3 * (y * self.width + left):3 * (y * self.width + right)]
                for y in range(top, bottom)]
        return Image(max(0, right - left), len(rows), b"".join(rows))

    def write_png(self, path):
        def chunk(kind, data):
            return (struct.pack(">I", len(data)) + kind + data
                    + struct.pack(">I", zlib.crc32(kind + data)))
        stride = 3 * self.width
        rows = b"".join(b"\0" + self.rgb[y * stride:(y + 1) * stride] for y in range(self.height))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
                       + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class XImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", Pointer), ("byte_order", ctypes.c_int),
                ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int),
                ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int), ("bits_per_pixel", ctypes.c_int)]


class XWindowAttributes(ctypes.Structure):
    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int),
                ("height", ctypes.c_int), ("border_width", ctypes.c_int), ("depth", ctypes.c_int),
                ("visual", Pointer), ("root", Id), ("class", ctypes.c_int),
                ("bit_gravity", ctypes.c_int), ("win_gravity", ctypes.c_int),
                ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
                ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int),
                ("colormap", Id), ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int),
                ("all_event_masks", ctypes.c_long), ("your_event_mask", ctypes.c_long),
                ("do_not_propagate_mask", ctypes.c_long), ("override_redirect", ctypes.c_int),
                ("screen", Pointer)]


def load_library():
    library = ctypes.CDLL("libX11.so.6")
    by_ref = ctypes.POINTER
    integer, text = ctypes.c_int, ctypes.c_char_p
    signatures = {
        "XOpenDisplay": (Pointer, text),
        "XCloseDisplay": (integer, Pointer),
        "XDefaultRootWindow": (Id, Pointer),
        "XSync": (integer, Pointer, integer),
        "XFree": (integer, Pointer),
        "XSetWindowBackground": (integer, Pointer, Id, ctypes.c_ulong),
        "XClearWindow": (integer, Pointer, Id),
        "XInternAtom": (Id, Pointer, text, integer),
        "XGetSelectionOwner": (Id, Pointer, Id),
        "XFetchName": (integer, Pointer, Id, by_ref(Pointer)),
        "XGetWindowProperty": (integer, Pointer, Id, Id, ctypes.c_long, ctypes.c_long, integer, Id,
                               by_ref(Id), by_ref(integer), by_ref(Id), by_ref(Id),
                               by_ref(Pointer)),
        "XQueryTree": (integer, Pointer, Id, by_ref(Id), by_ref(Id), by_ref(by_ref(Id)),
                       by_ref(ctypes.c_uint)),
        "XGetWindowAttributes": (integer, Pointer, Id, by_ref(XWindowAttributes)),
        "XTranslateCoordinates": (integer, Pointer, Id, Id, integer, integer, by_ref(integer),
                                  by_ref(integer), by_ref(Id)),
        "XGetImage": (by_ref(XImage), Pointer, Id, integer, integer, ctypes.c_uint, ctypes.c_uint,
                      ctypes.c_ulong, integer),
        "XDestroyImage": (integer, by_ref(XImage)),
    }
    for name, (result, *arguments) in signatures.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library


class XDisplay:
    # Windows may go away between two requests; that must not end the process.
    ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer)
    ignore_errors = ErrorHandler(lambda display, error: 0)

    def __init__(self, name):
        self.library = load_library()
        self.library.XSetErrorHandler(self.ignore_errors)
        self.display = self.library.XOpenDisplay(name.encode())
        if not self.display:
            raise OSError(f"cannot open the display {name}")
        self.root = self.library.XDefaultRootWindow(self.display)

    def close(self):
        if self.display:
            self.library.XCloseDisplay(self.display)
            self.display = None

    def paint_background(self, color):
        """The root window in one colour, 0xRRGGBB."""
        self.library.XSetWindowBackground(self.display, self.root, color)
        self.library.XClearWindow(self.display, self.root)
        self.library.XSync(self.display, False)

    def point_at(self, x, y):
        """Moves the pointer."""
        self.test.XTestFakeMotionEvent(self.display, -1, x, y, Id(0))
        self.library.XSync(self.display, False)

    def click(self, x, y):
        """Moves the pointer and presses its first button."""
        self.test.XTestFakeMotionEvent(self.display, -1, x, y, Id(0))
        for is_press in (True, False):
            self.test.XTestFakeButtonEvent(self.display, 1, is_press, Id(0))
        self.library.XSync(self.display, False)

    @cached_property
    def test(self):
        library = ctypes.CDLL("libXtst.so.6")
        integer = ctypes.c_int
        library.XTestFakeMotionEvent.argtypes = [Pointer, integer, integer, integer, Id]
        library.XTestFakeButtonEvent.argtypes = [Pointer, ctypes.c_uint, integer, Id]
        return library

    def atom(self, name):
        return self.library.XInternAtom(self.display, name.encode(), False)

    def selection_owner(self, selection):
        """The window that owns a selection, 0 for none."""
        return self.library.XGetSelectionOwner(self.display, self.atom(selection))

    def children(self, window):
        root, parent, count = Id(), Id(), ctypes.c_uint()
        kids = ctypes.POINTER(Id)()
        if not self.library.XQueryTree(self.display, window, root, parent, kids, count):
            return []
        found = [kids[i] for i in range(count.value)]
        if kids:
            self.library.XFree(kids)
        return found

    def name(self, window):
        kind, form, count, rest, value = Id(), ctypes.c_int(), Id(), Id(), Pointer()
        result = self.library.XGetWindowProperty(
            self.display, window, self.atom("_NET_WM_NAME"), 0, 1024, False, 0,
            kind, form, count, rest, value)
        if result == SUCCESS and value.value:
            text = ctypes.string_at(value.value, count.value) if form.value == 8 else b""
            self.library.XFree(value)
            return text.decode("utf-8", "replace")
        if self.library.XFetchName(self.display, window, value) and value.value:
            text = ctypes.string_at(value.value)
            self.library.XFree(value)
            return text.decode("latin-1")
        return ""

    def windows(self):
        """Every window there is, parents before their children."""
        found, todo = [], [(self.root, 0)]
        attributes = XWindowAttributes()
        x, y, child = ctypes.c_int(), ctypes.c_int(), Id()
        while todo:
            window, parent = todo.pop()
            if not self.library.XGetWindowAttributes(self.display, window, attributes):
                continue
            self.library.XTranslateCoordinates(self.display, window, self.root, 0, 0, x, y, child)
            found.append(Window(window, self.name(window),
                                Rect(x.value, y.value, attributes.width, attributes.height),
                                attributes.map_state == IS_VIEWABLE,
                                bool(attributes.override_redirect), parent))
            todo += [(kid, window) for kid in self.children(window)]
        return found

    def image(self, rect=None, window=None):
        """The screen as it is seen, or a window of a composited one; or a part of it."""
        drawable = window or self.root
        attributes = XWindowAttributes()
        self.library.XGetWindowAttributes(self.display, drawable, attributes)
        screen = Rect(0, 0, attributes.width, attributes.height)
        rect = rect or screen
        if rect.width <= 0 or rect.height <= 0 or not screen.contains(rect):
            raise ValueError(f"not on the screen: {rect}")
        image = self.library.XGetImage(self.display, drawable, *rect, ALL_PLANES, Z_PIXMAP)
        if not image:
            raise OSError("the X server gives no image")
        try:
            if image.contents.bits_per_pixel != 32:
                raise OSError("the screen is not true colour")
            data = ctypes.string_at(image.contents.data, 4 * rect.width * rect.height)
        finally:
            self.library.XDestroyImage(image)
        return Image.from_bgrx(rect.width, rect.height, data)

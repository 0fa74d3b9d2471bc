"""Many labelled pictures as one."""
import subprocess

COLUMNS = 3
TILE = "640x400>"


def write_sheet(pictures, title, file):
    """The pictures are pairs of a label and a file."""
    words = []
    for label, path in pictures:
        # small ones are magnified: each of their pixels matters
        words += ["-label", label, "(", str(path), "-filter", "point", "-resize", "640x400<",
                  "-filter", "Lanczos", "-resize", TILE, ")"]
    subprocess.run(["montage", "-font", "DejaVu-Sans", "-pointsize", "15", *words,
                    "-title", title, "-tile", f"{COLUMNS}x", "-geometry", "+8+8",
                    "-background", "white", str(file)], check=True)

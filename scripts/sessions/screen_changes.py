"""What changes between two pictures of a screen."""
from colors import hue_name, is_vivid
from x_display import Rect


def difference(before, after, threshold, left_out=()):
    """The rectangle around all pixels that differ by more than the threshold; None for none."""
    stride, found = 3 * before.width, []
    for y in range(before.height):
        old, new = before.rgb[y * stride:(y + 1) * stride], after.rgb[y * stride:(y + 1) * stride]
        if old == new:
            continue
        columns = [i // 3 for i, (a, b) in enumerate(zip(old, new)) if abs(a - b) > threshold]
        columns = [x for x in columns
                   if not any(r.x <= x < r.x + r.width and r.y <= y < r.y + r.height
                              for r in left_out)]
        if columns:
            found.append((y, min(columns), max(columns)))
    if not found:
        return None
    left, right = min(f[1] for f in found), max(f[2] for f in found)
    return Rect(left, found[0][0], right - left + 1, found[-1][0] - found[0][0] + 1)


def new_vivid_pixels(before, after, area, hue):
    """Where in the area a vivid colour of that name has come."""
    old, new = before.crop(area), after.crop(area)
    return [(area.x + i % area.width, area.y + i // area.width)
            for i, color in enumerate(new.pixels())
            if is_vivid(color) and hue_name(color) == hue
            and color != tuple(old.rgb[3 * i:3 * i + 3])]


def around(pixels):
    columns, rows = [x for x, _ in pixels], [y for _, y in pixels]
    return Rect(min(columns), min(rows), max(columns) - min(columns) + 1,
                max(rows) - min(rows) + 1)


def brightness(image):
    """The mean of all pixels' parts, from 0 to 255."""
    return sum(image.rgb) // max(len(image.rgb), 1)

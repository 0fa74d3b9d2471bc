"""Colours as a person names them."""
import colorsys

HUES = {"green": (85, 165), "yellow": (30, 70), "red": (-25, 20)}     # degrees
VIVID = 60      # between the largest and the smallest part of a colour


def hue_name(color):
    hue = 360 * colorsys.rgb_to_hsv(*(part / 255 for part in color))[0]
    for name, (low, high) in HUES.items():
        if low <= hue <= high or low <= hue - 360 <= high:
            return name
    return f"hue {hue:.0f}"


def is_vivid(color):
    return max(color) - min(color) > VIVID


def luminance(color):
    """As WCAG defines it, from 0 to 1."""
    parts = [part / 255 for part in color]
    red, green, blue = (part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
                        for part in parts)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    """As WCAG defines it, from 1 to 21."""
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)

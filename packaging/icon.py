"""The product's icon: the device's cap seen from above, with the four directions in which it is pushed."""
import math
import struct

SIZES = (16, 32, 48)
SAMPLES = 4  # per pixel and direction
CAP = (38, 84, 124)
RIM = (206, 214, 222)
ARROW = (242, 148, 32)


def colour_at(x, y):
    """Colour at a place of the square from -1 to 1, None outside of the drawing."""
    radius = math.hypot(x, y)
    if radius <= 0.44:
        return CAP
    if radius <= 0.54:
        return RIM
    along, across = max(abs(x), abs(y)), min(abs(x), abs(y))
    if 0.64 <= along <= 0.96 and across <= 0.96 - along:
        return ARROW
    return None


def pixel(column, row, size):
    """Blue, green, red and opacity of a pixel."""
    steps = [(2 * i + 1) / (2 * SAMPLES) for i in range(SAMPLES)]
    found = [colour_at((column + u) * 2 / size - 1, (row + v) * 2 / size - 1) for u in steps for v in steps]
    hits = [colour for colour in found if colour is not None]
    if not hits:
        return bytes(4)
    red, green, blue = (sum(colour[i] for colour in hits) // len(hits) for i in range(3))
    return bytes((blue, green, red, len(hits) * 255 // len(found)))


def image(size):
    # The height counts the mask, too, whose rows are filled up to 32 bits. The opacity makes it superfluous.
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(pixel(column, row, size) for row in reversed(range(size)) for column in range(size))
    return header + pixels + bytes((size + 31) // 32 * 4 * size)


def icon():
    images = [image(size) for size in SIZES]
    at = 6 + 16 * len(images)
    entries = b""
    for size, data in zip(SIZES, images):
        entries += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), at)
        at += len(data)
    return struct.pack("<HHH", 0, 1, len(images)) + entries + b"".join(images)


if __name__ == "__main__":
    import sys
    with open(sys.argv[1], "wb") as file:
        file.write(icon())

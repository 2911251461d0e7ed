#!/usr/bin/env python3
"""Writes bracket.dxf: a machined bracket with its bolts, as wires in space, for the sample sessions.

Lengths are millimetres. X runs along the bracket, -Y is its front, Z is up; the origin is in the middle of the
bottom of the base plate. The sessions name entities by handle, so handles never depend on what else is drawn:
see ENTITY_HANDLES. Usage: make_bracket.py [FILE]
"""

import math
import sys
from pathlib import Path

LAYERS = [  # name, AutoCAD colour index, line type
    ("0", 7, "CONTINUOUS"),
    ("BASE", 7, "CONTINUOUS"),
    ("UPRIGHT", 4, "CONTINUOUS"),
    ("RIBS", 30, "CONTINUOUS"),
    ("HOLES", 2, "CONTINUOUS"),
    ("BOLTS", 3, "CONTINUOUS"),
    ("CENTRE", 1, "CENTER"),
    ("ROUTE", 6, "CONTINUOUS"),
]

ENTITY_HANDLES = 0x100  # entities of model space, in the order of model(); the first is the axis of the bore
BLOCK_HANDLES = 0x300
PART_HANDLES = 0x400  # vertices and their ends
NEXT_HANDLE = 0x800

MODEL, PAPER = "1F", "1E"  # block records of the two spaces

LENGTH, DEPTH, THICK = 120.0, 80.0, 12.0
CORNER, FILLET = 12.0, 10.0
WALL = 28.0  # front face of the upright; its back is the back of the base
TOP, SHOULDER = 92.0, 24.0
BORE = (0.0, 60.0)  # x, z
BOLTS = [(-47.0, -26.0), (47.0, -26.0), (-47.0, 4.0), (47.0, 4.0)]
QUARTER = math.tan(math.pi / 8)  # bulge of a quarter circle
HALF = 1.0  # bulge of a half circle
FRONT = (0.0, -1.0, 0.0)  # normal whose plane has world X and Z as its axes
SIDE = (1.0, 0.0, 0.0)  # normal whose plane has world Y and Z as its axes


def number(value):
    text = f"{value:.6f}".rstrip("0").rstrip(".")
    return "0.0" if text in ("0", "-0") else text if "." in text else text + ".0"


class Writer:
    """Collects group codes and values as a DXF file has them: one a line."""

    def __init__(self):
        self.lines = []

    def put(self, *pairs):
        for code, value in pairs:
            self.lines += [f"{code:>3}", number(value) if isinstance(value, float) else str(value)]

    def point(self, code, xyz):
        self.put(*((code + 10 * i, float(v)) for i, v in enumerate(xyz)))


class Entities(Writer):
    """Entities of one owner, with handles counted from a start of their own."""

    def __init__(self, owner, first_handle, part_handles):
        super().__init__()
        self.owner, self.next, self.part_handles = owner, first_handle, part_handles
        self.count = 0

    def begin(self, kind, layer, subclass):
        handle, self.next, self.count = f"{self.next:X}", self.next + 1, self.count + 1
        self.put((0, kind), (5, handle), (330, self.owner), (100, "AcDbEntity"), (8, layer), (100, subclass))
        return handle

    def line(self, layer, start, end):
        self.begin("LINE", layer, "AcDbLine")
        self.point(10, start)
        self.point(11, end)

    def dot(self, layer, at):
        self.begin("POINT", layer, "AcDbPoint")
        self.point(10, at)

    def circle(self, layer, centre, radius, normal=(0.0, 0.0, 1.0)):
        self.begin("CIRCLE", layer, "AcDbCircle")
        self.point(10, centre)
        self.put((40, radius))
        self.point(210, normal)

    def arc(self, layer, centre, radius, start, end, normal):
        self.begin("ARC", layer, "AcDbCircle")
        self.point(10, centre)
        self.put((40, radius))
        self.point(210, normal)
        self.put((100, "AcDbArc"), (50, float(start)), (51, float(end)))

    def ellipse(self, layer, centre, major, ratio, normal):
        self.begin("ELLIPSE", layer, "AcDbEllipse")
        self.point(10, centre)
        self.point(11, major)
        self.point(210, normal)
        self.put((40, ratio), (41, 0.0), (42, 2 * math.pi))

    def outline(self, layer, vertices, elevation, normal=(0.0, 0.0, 1.0)):
        """A closed LWPOLYLINE; each vertex is x, y, bulge toward the next."""
        self.begin("LWPOLYLINE", layer, "AcDbPolyline")
        self.put((90, len(vertices)), (70, 1), (38, float(elevation)))
        for x, y, bulge in vertices:
            self.put((10, float(x)), (20, float(y)), (42, float(bulge)))
        self.point(210, normal)

    def face(self, layer, *corners):
        self.begin("3DFACE", layer, "AcDbFace")
        for i in range(4):
            self.point(10 + i, corners[min(i, len(corners) - 1)])

    def polyline3d(self, layer, points):
        owner = self.begin("POLYLINE", layer, "AcDb3dPolyline")
        self.put((66, 1))
        self.point(10, (0, 0, 0))
        self.put((70, 8))
        for point in points:
            self.part("VERTEX", owner, layer)
            self.put((100, "AcDbVertex"), (100, "AcDb3dPolylineVertex"))
            self.point(10, point)
            self.put((70, 32))
        self.part("SEQEND", owner, layer)

    def part(self, kind, owner, layer):
        self.put((0, kind), (5, f"{next(self.part_handles):X}"), (330, owner), (100, "AcDbEntity"), (8, layer))

    def insert(self, layer, block, at, turn=0.0):
        self.begin("INSERT", layer, "AcDbBlockReference")
        self.put((2, block))
        self.point(10, at)
        self.put((41, 1.0), (42, 1.0), (43, 1.0), (50, float(turn)))


def rounded(left, bottom, right, top, radius):
    """A rectangle with rounded corners, counter-clockwise from the bottom left."""
    return [
        (left + radius, bottom, 0), (right - radius, bottom, QUARTER),
        (right, bottom + radius, 0), (right, top - radius, QUARTER),
        (right - radius, top, 0), (left + radius, top, QUARTER),
        (left, top - radius, 0), (left, bottom + radius, QUARTER),
    ]  # fmt: skip


def slot(x, y, reach, radius):
    """An oblong hole along X."""
    return [(x - reach, y - radius, 0), (x + reach, y - radius, HALF),
            (x + reach, y + radius, 0), (x - reach, y + radius, HALF)]  # fmt: skip


def base(e):
    x, y = LENGTH / 2, DEPTH / 2
    for elevation, inset in ((0.0, 0.0), (THICK - 1.0, 0.0), (THICK, 1.0)):
        e.outline("BASE", rounded(-x + inset, -y + inset, x - inset, y - inset, CORNER - inset), elevation)
    edges = zip(rounded(-x, -y, x, y, CORNER), rounded(-x + 1, -y + 1, x - 1, y - 1, CORNER - 1))
    for (cx, cy, _), (bx, by, _) in edges:
        e.line("BASE", (cx, cy, 0), (cx, cy, THICK - 1))
        e.line("BASE", (cx, cy, THICK - 1), (bx, by, THICK))
    for cx in (-32, -16, 0, 16, 32):
        for elevation in (0.0, THICK):
            e.circle("HOLES", (cx, -34.5, elevation), 2.0)
        e.line("CENTRE", (cx, -34.5, -6), (cx, -34.5, THICK + 6))
    for elevation in (0.0, THICK):
        e.outline("HOLES", slot(0, -22, 12, 6), elevation)
    e.outline("HOLES", slot(0, -22, 15, 9), THICK - 4)


def upright(e):
    x, back = LENGTH / 2, DEPTH / 2
    profile = [(-x, THICK, 0), (x, THICK, 0), (x, TOP - SHOULDER, QUARTER), (x - SHOULDER, TOP, 0),
               (-x + SHOULDER, TOP, QUARTER), (-x, TOP - SHOULDER, 0)]  # fmt: skip
    for y in (WALL, back):
        e.outline("UPRIGHT", profile, -y, FRONT)
    for px, pz, _ in profile[1:]:
        e.line("UPRIGHT", (px, WALL, pz), (px, back, pz))
    for px in (-x, -x / 3, x / 3, x):
        e.arc("UPRIGHT", (WALL - FILLET, THICK + FILLET, px), FILLET, 270, 360, SIDE)
    for y, z in ((WALL - FILLET, THICK), (WALL, THICK + FILLET)):
        e.line("UPRIGHT", (-x, y, z), (x, y, z))
    for side in (-1, 1):
        for y in (WALL, back):
            e.ellipse("HOLES", (side * 47, y, 44), (0, 0, 14), 0.5, FRONT)


def bore(e):
    cx, cz = BORE
    for y, radius in ((WALL - 8, 26.0), (WALL - 8, 18.0), (DEPTH / 2, 18.0), (WALL, 26.0), (WALL - 7, 27.0)):
        e.circle("UPRIGHT" if radius > 20 else "HOLES", (cx, cz, -y), radius, FRONT)
    for i in range(8):
        angle = math.pi * i / 4
        x, z = cx + 26 * math.cos(angle), cz + 26 * math.sin(angle)
        e.line("UPRIGHT", (x, WALL - 7, z), (x, WALL, z))
    for i in range(6):
        angle = math.pi * i / 3
        at = (cx + 22 * math.cos(angle), cz + 22 * math.sin(angle), -(WALL - 8))
        e.circle("HOLES", at, 1.6, FRONT)


def ribs(e):
    for middle in (-31.0, 31.0):
        left, right = middle - 4, middle + 4
        top, heel, toe = (WALL, 62.0), (WALL, THICK), (-18.0, THICK)
        at = lambda x, yz: (x, *yz)  # noqa: E731
        for x in (left, right):
            e.face("RIBS", at(x, heel), at(x, toe), at(x, top))
        for one, other in ((toe, top), (heel, toe), (top, heel)):
            e.face("RIBS", at(left, one), at(right, one), at(right, other), at(left, other))


def bolts(e):
    for i, (x, y) in enumerate(BOLTS):
        e.insert("BOLTS", "BOLT_M10", (x, y, THICK), 15 * i)
    for x, y in BOLTS:
        for elevation in (0.0, THICK):
            e.circle("HOLES", (x, y, elevation), 5.5)
        e.line("CENTRE", (x, y, -12), (x, y, THICK + 16))
        e.line("CENTRE", (x - 14, y, THICK), (x + 14, y, THICK))
        e.line("CENTRE", (x, y - 14, THICK), (x, y + 14, THICK))


def route(e):
    """A hose that comes from the front, through the bore, and winds once behind the upright."""
    cx, cz = BORE
    points = [(cx, y, cz) for y in (-30.0, -10.0, 10.0, 30.0, 46.0)]
    for i in range(49):
        angle = 2 * math.pi * i / 24
        points.append((cx + 9 * (1 - math.cos(angle)), 46 + i / 4, cz + 9 * math.sin(angle)))
    e.polyline3d("ROUTE", points)
    e.dot("ROUTE", points[0])
    e.dot("ROUTE", points[-1])


def centre_lines(e):
    cx, cz = BORE
    e.line("CENTRE", (cx, -45, cz), (cx, 65, cz))
    e.line("CENTRE", (cx - 32, WALL - 8, cz), (cx + 32, WALL - 8, cz))
    e.line("CENTRE", (cx, WALL - 8, cz - 32), (cx, WALL - 8, cz + 32))
    e.line("CENTRE", (-LENGTH / 2 - 8, -22, THICK), (LENGTH / 2 + 8, -22, THICK))
    e.circle("CENTRE", (cx, cz, -(WALL - 8)), 22.0, FRONT)


def model(part_handles):
    e = Entities(MODEL, ENTITY_HANDLES, part_handles)
    for draw in (centre_lines, bolts, base, upright, bore, ribs, route):
        draw(e)
    assert e.next <= BLOCK_HANDLES
    return e


def washer(e):
    for elevation in (0.0, 2.0):
        for radius in (5.3, 10.0):
            e.circle("0", (0, 0, elevation), radius)


def bolt(e):
    e.insert("0", "WASHER_M10", (0, 0, 0))
    corner = 8.5 / math.cos(math.pi / 6)
    hexagon = [(corner * math.cos(math.pi * i / 3), corner * math.sin(math.pi * i / 3), 0) for i in range(6)]
    for elevation in (2.0, 8.4):
        e.outline("0", hexagon, elevation)
    for x, y, _ in hexagon:
        e.line("0", (x, y, 2), (x, y, 8.4))
    e.circle("0", (0, 0, 8.4), 8.0)
    for elevation in (0.0, -18.0):
        e.circle("0", (0, 0, elevation), 5.0)
    for x, y in ((5, 0), (0, 5), (-5, 0), (0, -5)):
        e.line("0", (x, y, 0), (x, y, -18))


BLOCKS = [("*Model_Space", MODEL, None), ("*Paper_Space", PAPER, None),
          ("WASHER_M10", "1D", washer), ("BOLT_M10", "1C", bolt)]  # fmt: skip


def header(w):
    w.put((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (9, "$DWGCODEPAGE"), (3, "ANSI_1252"))
    w.put((9, "$INSBASE"))
    w.point(10, (0, 0, 0))
    w.put((9, "$EXTMIN"))
    w.point(10, (-68, -45, -12))
    w.put((9, "$EXTMAX"))
    w.point(10, (68, 65, TOP))
    w.put((9, "$INSUNITS"), (70, 4), (9, "$HANDSEED"), (5, f"{NEXT_HANDLE:X}"), (0, "ENDSEC"))


def table(w, name, handle, records):
    w.put((0, "TABLE"), (2, name), (5, handle), (330, "0"), (100, "AcDbSymbolTable"), (70, len(records)))
    if name == "DIMSTYLE":
        w.put((100, "AcDbDimStyleTable"), (71, 0))
    for record in records:
        record()
    w.put((0, "ENDTAB"))


class Tables:
    """The symbol tables; every record has a handle from one count."""

    def __init__(self, w):
        self.w = w
        self.handles = iter(range(0x20, ENTITY_HANDLES))

    def record(self, kind, owner, subclass, name, handle=None):
        code = 105 if kind == "DIMSTYLE" else 5
        self.w.put((0, kind), (code, handle or f"{next(self.handles):X}"), (330, owner),
                   (100, "AcDbSymbolTableRecord"), (100, subclass), (2, name))  # fmt: skip

    def viewport(self):
        w = self.w
        self.record("VPORT", "10", "AcDbViewportTableRecord", "*ACTIVE")
        w.put((70, 0), (10, 0.0), (20, 0.0), (11, 1.0), (21, 1.0), (12, 0.0), (22, 4.0), (13, 0.0), (23, 0.0))
        w.put((14, 10.0), (24, 10.0), (15, 10.0), (25, 10.0))
        w.point(16, (1.0, -1.0, 1.0))  # isometric, from the front right above
        w.point(17, (0.0, 0.0, 40.0))
        w.put((40, 165.0), (41, 1.6), (42, 50.0), (43, 0.0), (44, 0.0), (50, 0.0), (51, 0.0))
        w.put((71, 0), (72, 1000), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0))

    def line_type(self, name, text, dashes):
        self.record("LTYPE", "11", "AcDbLinetypeTableRecord", name)
        self.w.put((70, 0), (3, text), (72, 65), (73, len(dashes)), (40, float(sum(map(abs, dashes)))))
        for dash in dashes:
            self.w.put((49, float(dash)), (74, 0))

    def layer(self, name, colour, line_type):
        self.record("LAYER", "12", "AcDbLayerTableRecord", name)
        self.w.put((70, 0), (62, colour), (6, line_type))

    def style(self):
        self.record("STYLE", "13", "AcDbTextStyleTableRecord", "STANDARD")
        self.w.put((70, 0), (40, 0.0), (41, 1.0), (50, 0.0), (71, 0), (42, 2.5), (3, "txt"), (4, ""))

    def application(self):
        self.record("APPID", "16", "AcDbRegAppTableRecord", "ACAD")
        self.w.put((70, 0))

    def dimension_style(self):
        self.record("DIMSTYLE", "17", "AcDbDimStyleTableRecord", "STANDARD")
        self.w.put((70, 0))

    def block_record(self, name, handle):
        self.record("BLOCK_RECORD", "18", "AcDbBlockTableRecord", name, handle)

    def write(self):
        w = self.w
        lines = [("BYBLOCK", "", []), ("BYLAYER", "", []), ("CONTINUOUS", "Solid line", []),
                 ("CENTER", "Center ____ _ ____ _ ____", [12, -3, 3, -3])]  # fmt: skip
        w.put((0, "SECTION"), (2, "TABLES"))
        table(w, "VPORT", "10", [self.viewport])
        table(w, "LTYPE", "11", [lambda l=l: self.line_type(*l) for l in lines])
        table(w, "LAYER", "12", [lambda l=l: self.layer(*l) for l in LAYERS])
        table(w, "STYLE", "13", [self.style])
        table(w, "VIEW", "14", [])
        table(w, "UCS", "15", [])
        table(w, "APPID", "16", [self.application])
        table(w, "DIMSTYLE", "17", [self.dimension_style])
        table(w, "BLOCK_RECORD", "18", [lambda b=b: self.block_record(b[0], b[1]) for b in BLOCKS])
        w.put((0, "ENDSEC"))


def blocks(w, part_handles):
    handles = BLOCK_HANDLES
    w.put((0, "SECTION"), (2, "BLOCKS"))
    for name, owner, draw in BLOCKS:
        contents = Entities(owner, handles + 2, part_handles)
        if draw:
            draw(contents)
        head = [(330, owner), (100, "AcDbEntity"), (8, "0")]
        w.put((0, "BLOCK"), (5, f"{handles:X}"), *head, (100, "AcDbBlockBegin"), (2, name), (70, 0))
        w.point(10, (0, 0, 0))
        w.put((3, name), (1, ""))
        w.lines += contents.lines
        w.put((0, "ENDBLK"), (5, f"{handles + 1:X}"), *head, (100, "AcDbBlockEnd"))
        handles = contents.next
    assert handles <= PART_HANDLES
    w.put((0, "ENDSEC"))


def objects(w):
    w.put((0, "SECTION"), (2, "OBJECTS"))
    w.put((0, "DICTIONARY"), (5, "C"), (330, "0"), (100, "AcDbDictionary"), (281, 1), (3, "ACAD_GROUP"), (350, "D"))
    w.put((0, "DICTIONARY"), (5, "D"), (330, "C"), (100, "AcDbDictionary"), (281, 1))
    w.put((0, "ENDSEC"), (0, "EOF"))


def drawing():
    w = Writer()
    part_handles = iter(range(PART_HANDLES, NEXT_HANDLE))
    header(w)
    w.put((0, "SECTION"), (2, "CLASSES"), (0, "ENDSEC"))
    Tables(w).write()
    blocks(w, part_handles)
    w.put((0, "SECTION"), (2, "ENTITIES"))
    w.lines += model(part_handles).lines
    w.put((0, "ENDSEC"))
    objects(w)
    return "\n".join(w.lines) + "\n"


if __name__ == "__main__":
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("bracket.dxf")
    target.write_bytes(drawing().encode("ascii"))

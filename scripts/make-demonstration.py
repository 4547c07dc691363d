#!/usr/bin/env python3
"""Makes the demonstration job: installation/programs/*.nc of its own and installation/jobs/Demonstration.tornvale.

scripts/make-demonstration.py [--check] INSTALLATION

Reads the tool library and the work pieces (models/WorkPieces, made by tornvale_modelgen); the same input always
gives the same bytes. --check writes nothing and fails when a file is not what would be written. Lengths in mm; the
frame of every program is the user coordinate system that it runs in. How the tools stand in the machine is told in
docs/machines.md; the shapes are those of scripts/modelgen/WorkPieces.cpp."""

import json
import math
import struct
import sys
from pathlib import Path

VERSION = "3.3.0.5"
CREATED = "2026-01-05 08:00:00"

# Tools of the library by their index.
END_MILL_20, END_MILL_12, BALL_10, SAW, LOCK_CUTTER, SOCKET_CUTTER, DRILL, CHAIN = 0, 1, 3, 4, 5, 6, 7, 9


def number(value):
    text = f"{value:.3f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


class Program:
    """An ISO program, block numbers in tens."""

    def __init__(self, *remarks):
        self.lines = [f"; {remark}" for remark in remarks]
        self.block = 0
        self.line("G90 G17")

    def line(self, text):
        self.block += 10
        self.lines.append(f"N{self.block} {text}")

    def remark(self, text):
        self.lines.append(f"; {text}")

    def bare(self, text):
        self.lines.append(text)

    def move(self, word, feed=None, **axes):
        words = [word] + [f"{letter}{number(value)}" for letter, value in axes.items()]
        if feed is not None:
            words.append(f"F{feed}")
        self.line(" ".join(words))

    def rapid(self, **axes):
        self.move("G0", **axes)

    def feed(self, feed=None, **axes):
        self.move("G1", feed, **axes)

    def arc(self, radius, x, y, letters="XY"):
        """Counter-clockwise."""
        self.line(f"G3 {letters[0]}{number(x)} {letters[1]}{number(y)} R{number(radius)}")

    def text(self):
        self.line("M5")
        return "\n".join(self.lines) + "\n"


# --- left table ---


def door_panels():
    p = Program("Two panel grooves in a door leaf, 12 wide, 6 deep, with round corners and an arch",
                "Door leaf on risers: X 0 to 1200, Y 0 to 600, Z 0 to 44",
                "Tool: end mill 12, length 130, on spindle T1")
    top, floor, safe = 47, 38, 205
    p.rapid(X=290, Y=140, Z=safe, C=0, A=0)
    p.line("M6 T2")
    p.line("M3 S18000")
    p.remark("The square panel, 340 x 340, corners of radius 40")
    p.rapid(Z=top)
    p.feed(3000, X=420, Z=floor)
    p.line("G1 F5000")
    p.arc(40, 460, 180)
    p.feed(X=460, Y=440)
    p.arc(40, 420, 480)
    p.feed(X=160, Y=480)
    p.arc(40, 120, 440)
    p.feed(X=120, Y=180)
    p.arc(40, 160, 140)
    p.feed(X=420, Y=140)
    p.rapid(Z=top + 10)
    p.remark("The arched panel, an arch of radius 170")
    p.rapid(X=700, Y=140)
    p.rapid(Z=top)
    p.feed(3000, X=920, Z=floor)
    p.line("G1 F5000")
    p.arc(170, 1090, 310)
    p.arc(170, 920, 480)
    p.feed(X=580, Y=480)
    p.arc(40, 540, 440)
    p.feed(X=540, Y=180)
    p.arc(40, 580, 140)
    p.feed(X=920, Y=140)
    p.rapid(Z=safe)
    return p.text()


def cabinet_groove():
    p = Program("Groove for the back of a cabinet and the pocket of a cable outlet",
                "Side of the cabinet: X 0 to 1100, Y 0 to 265, Z 0 to 19",
                "Tool: end mill 12, length 130, on spindle T1")
    p.rapid(X=-25, Y=20, Z=335, C=0, A=0)
    p.line("M6 T2")
    p.line("M3 S18000")
    p.remark("Groove 12 wide, 8 deep, right through")
    p.rapid(Z=30)
    p.rapid(Z=11)
    p.feed(7000, X=1125)
    p.rapid(Z=30)
    p.remark("Pocket 140 x 50, 10 deep, corners of the cutter's radius")
    p.rapid(X=530, Y=95)
    p.rapid(Z=21)
    for depth in (14, 9):
        p.feed(2000, X=610, Z=depth)
        p.line("G1 F5000")
        p.feed(X=530)
        for x0, y0, x1, y1 in ((516, 86, 624, 104), (506, 76, 634, 114)):
            p.feed(X=x0, Y=y0)
            p.feed(X=x1)
            p.feed(Y=y1)
            p.feed(X=x0)
            p.feed(Y=y0)
        p.feed(X=530, Y=95)
    p.rapid(Z=335)
    return p.text()


def shelf_pins():
    p = Program("Two rows of 21 holes for shelf pins, 32 apart, diameter 8, 13 deep",
                "Side of the cabinet: X 0 to 1100, Y 0 to 265, Z 0 to 19",
                "Tool: dowel drill 8, length 90, on spindle T4, the head turned so that the mill hangs behind the work")
    first, step, count = 230, 32, 21
    p.rapid(X=first, Y=228, Z=380, C=90, A=0)
    p.line("M43 S6000")
    for y, places in ((228, range(count)), (165, reversed(range(count)))):
        p.remark(f"Row at Y {y}")
        for i in places:
            p.rapid(X=first + step * i, Y=y)
            p.rapid(Z=22)
            p.feed(1800, Z=6)
            p.rapid(Z=24)
    p.rapid(Z=380)
    p.line("M45")
    return p.text()


def door_edge_saw():
    p = Program("The front edge of the door leaf is sawn to size, along X",
                "Door leaf on risers: X 0 to 1200, Y 0 to 600, Z 0 to 44",
                "Tool: saw blade 250 x 3.2, length 60, on spindle T2, upright: the programmed A is 90")
    p.rapid(X=-150, Y=0, Z=490, C=0, A=90)
    p.line("M13 S6000")
    p.remark("Down beside the leaf, 6 below its lower face")
    p.rapid(Z=119)
    p.feed(9000, X=1350)
    p.rapid(Z=490)
    p.line("M15")
    return p.text()


def door_lock():
    p = Program("Lock mortise in the front edge of the door leaf: recess of the face plate and lock case",
                "Door leaf on risers: X 0 to 1200, Y 0 to 600, Z 0 to 44; middle of the lock X 600 Z 22",
                "Tool: lock case cutter 12, length 210, on spindle T1, level: A is 90",
                "U runs along the edge, V up, W out of the edge")
    p.rapid(X=600, Y=-40, Z=490, C=0, A=90)
    p.line("M6 T5")
    p.line("M3 S16000")
    p.rapid(Z=22)
    p.bare("(UPR,1,XZZ,90,0,0,600,0,22)")
    p.line("G16 U V")
    p.remark("Recess of the face plate, 235 x 20, 3 deep")
    p.move("G0", U=-60, V=-4, W=10)
    p.feed(3000, W=0.5)
    p.feed(2000, U=107.5, W=-3)
    p.line("G1 F4500")
    p.arc(4, 107.5, 4, "UV")
    p.feed(U=-107.5)
    p.arc(4, -107.5, -4, "UV")
    p.feed(U=107.5)
    p.feed(U=-60, V=0)
    p.feed(U=107.5)
    p.feed(U=-107.5)
    p.remark("Lock case, 165 x 16, 90 deep, 10 a turn")
    p.feed(3500, U=-74.5, V=-2, W=-3)
    for depth in list(range(12, 90, 10)) + [90]:
        p.feed(2500, U=74.5, W=-depth)
        p.line("G1 F3500")
        p.arc(2, 74.5, 2, "UV")
        p.feed(U=-74.5)
        p.arc(2, -74.5, -2, "UV")
    p.remark("The floor once more")
    p.feed(3000, U=74.5)
    p.feed(U=74.5, V=0)
    p.feed(U=-74.5)
    p.move("G0", W=10)
    p.move("G0", W=40)
    p.line("G17")
    p.rapid(Z=490)
    return p.text()


# --- right table ---


def seat_rim():
    p = Program("The rim of a chair seat, undercut by 25 degrees: the cutter's flank follows it, five axes",
                "Seat on risers: its middle is X 0 Y 0, half axes 250 and 210, Z 0 to 45",
                "Tool: end mill 20, length 150, on spindle T1")
    lean = math.radians(25)
    radius, below, thickness = 10.0, 3.0, 45.0

    def place(degrees, away):
        """Tip, and C, on the rim; 180 degrees is the left end."""
        t = math.radians(degrees)
        x, y = 250 * math.cos(t), 210 * math.sin(t)
        nx, ny = x / 250**2, y / 210**2
        nx, ny = nx / math.hypot(nx, ny), ny / math.hypot(nx, ny)
        along = (radius * math.sin(lean) - below) / math.cos(lean)
        out = -thickness * math.tan(lean) + radius * math.cos(lean) + along * math.sin(lean) + away
        return x + nx * out, y + ny * out, math.degrees(math.atan2(nx, -ny))

    def at(degrees, away, turned):
        x, y, c = place(degrees, away)
        while c < turned - 180:
            c += 360
        return {"X": x, "Y": y, "Z": -below, "C": c, "A": 25}

    p.rapid(**{**at(180, 60, -90), "Z": 255})
    p.line("M6 T1")
    p.line("M3 S18000")
    step = 2.5
    for index, (away, feed) in enumerate(((2.5, 6000), (0, 5000))):
        p.remark("First pass, leaves 2.5" if index == 0 else "Finishing pass")
        start = at(180, 60, -90)
        p.rapid(**start)
        p.feed(4000, **at(180, away, -90))
        turned = -90
        for i in range(1, round(360 / step) + 1):
            point = at(180 + step * i, away, turned)
            turned = point["C"]
            p.feed(feed if i == 1 else None, **point)
        x, y, _ = place(180, 60)
        p.feed(X=x, Y=y)
        p.rapid(Z=255 if index else 140)
    return p.text()


def leg_sockets():
    p = Program("Four sockets for the legs of a chair, right through the seat, splayed by 10 degrees",
                "Seat on risers: its middle is X 0 Y 0, half axes 250 and 210, Z 0 to 45",
                "Tool: hinge cutter 24, length 135, on spindle T1; W runs along the socket")
    tilt = math.radians(10)
    top = 45.0
    first = True
    for k, (x, y) in enumerate(((138, -109), (138, 109), (-138, 109), (-138, -109)), start=1):
        dx, dy = x / math.hypot(x, y), y / math.hypot(x, y)
        turn = math.degrees(math.atan2(-dx, dy))
        if k > 2:
            turn = turn % 360
            turn = turn - 360 if turn > 180 else turn
        above = 60.0
        p.remark(f"Socket {k}")
        start = {"X": x - dx * math.sin(tilt) * above, "Y": y - dy * math.sin(tilt) * above, "C": turn, "A": 10}
        if first:
            p.rapid(**{"X": start["X"], "Y": start["Y"], "Z": 245, "C": turn, "A": 10})
            p.line("M6 T6")
            p.line("M3 S14000")
        else:
            p.rapid(Z=150)
            p.rapid(**start)
        first = False
        p.rapid(Z=top + math.cos(tilt) * above)
        p.bare(f"(UPR,{k},XZZ,10,{number(turn)},0,{number(x)},{number(y)},{number(top)})")
        p.line("G16 U V")
        p.move("G0", U=0, V=0, W=5)
        p.feed(1200, W=-24)
        p.bare("(DLY,1)")
        p.move("G0", W=2)
        p.move("G0", W=-23)
        p.feed(1200, W=-47.9)
        p.bare("(DLY,1)")
        p.move("G0", W=above)
        p.line("G17")
    p.rapid(Z=245)
    return p.text()


def seat_hollow():
    p = Program("The hollow of a chair seat, 9 deep, in one spiral from its middle outward",
                "Seat on risers: its middle is X 0 Y 0, half axes 250 and 210, Z 0 to 45",
                "Tool: ball end cutter 10, length 125, on spindle T1")
    a, b, depth, top, radius = 165.0, 128.0, 9.0, 45.0, 5.0
    turns, steps = 36, 40

    def tip(share, angle):
        x, y = a * share * math.cos(angle), b * share * math.sin(angle)
        rest = 1 - share * share
        zx, zy = 4 * depth * rest * x / a**2, 4 * depth * rest * y / b**2
        length = math.sqrt(zx * zx + zy * zy + 1)
        return (x - radius * zx / length, y - radius * zy / length,
                top - depth * rest * rest + radius / length - radius)

    p.rapid(X=0, Y=0, Z=255, C=0, A=0)
    p.line("M6 T4")
    p.line("M3 S20000")
    p.rapid(Z=top + 5)
    p.feed(1500, Z=top - depth)
    for i in range(1, turns * steps + 1):
        share = 0.97 * i / (turns * steps)
        x, y, z = tip(share, 2 * math.pi * i / steps)
        p.feed(6000 if i == 1 else None, X=x, Y=y, Z=z)
    p.rapid(Z=255)
    return p.text()


def beam_housing():
    p = Program("Housing across a beam, 120 wide, 40 deep",
                "Beam: X 0 to 1200, Y 0 to 140, Z 0 to 120",
                "Tool: end mill 20, length 150, on spindle T1")
    p.rapid(X=550, Y=-20, Z=315, C=0, A=0)
    p.line("M6 T1")
    p.line("M3 S18000")
    p.rapid(Z=135)
    across = (550, 566, 583, 600, 617, 634, 650)
    for depth in (110, 100, 90, 80):
        p.rapid(X=across[0], Y=-20)
        p.rapid(Z=depth)
        for i, x in enumerate(across):
            p.feed(7000 if i == 0 else None, X=x)
            p.feed(Y=160 if i % 2 == 0 else -20)
        p.rapid(Z=135)
    p.rapid(Z=315)
    return p.text()


def beam_mortises():
    p = Program("Two mortises in a beam, 120 x 36, 90 deep",
                "Beam: X 0 to 1200, Y 0 to 140, Z 0 to 120",
                "Tool: mortise chain 40 x 12, length 220, on spindle T3, upright")
    p.rapid(X=200, Y=58, Z=290, C=0, A=0)
    p.line("M23 S3600")
    for left in (180, 900):
        p.remark(f"Mortise from X {left} to {left + 120}")
        for row, y in enumerate((58, 70, 82)):
            for x in (20, 60, 100) if row % 2 == 0 else (100, 60, 20):
                p.rapid(X=left + x, Y=y)
                p.rapid(Z=124)
                p.feed(1500, Z=30)
                p.rapid(Z=130)
        p.rapid(Z=140)
    p.rapid(Z=290)
    p.line("M25")
    return p.text()


PROGRAMS = {
    "DoorPanels.nc": door_panels, "CabinetGroove.nc": cabinet_groove, "ShelfPins.nc": shelf_pins,
    "DoorEdgeSaw.nc": door_edge_saw, "DoorLock.nc": door_lock, "SeatRim.nc": seat_rim,
    "LegSockets.nc": leg_sockets, "SeatHollow.nc": seat_hollow, "BeamHousing.nc": beam_housing,
    "BeamMortises.nc": beam_mortises,
}

# --- the job ---

OAK, DARK_OAK, BEECH, RUBBER = "0.98 0.90 0.78", "0.66 0.48 0.34", "1 0.86 0.68", "0.22 0.23 0.25"

# zone: (number, origin, [(model file, colour)])
SYSTEMS = {
    "G54": [(0, (40, 130, 130), [("DoorLeaf", OAK), ("DoorRisers", RUBBER)]),
            (1, (90, 880, 0), [("CabinetSide", BEECH)])],
    "G55": [(0, (0, 118, 0), [("Beam", DARK_OAK)]),
            (1, (650, 600, 80), [("ChairSeat", OAK), ("SeatRisers", RUBBER)])],
}

# zone: (program, tool, system, remark, shift in Y, checked)
ITEMS = {
    "G54": [("DoorPanels.nc", END_MILL_12, 0, "Panel grooves of the door", 0, True),
            ("CabinetGroove.nc", END_MILL_12, 1, "Groove of the back and cable outlet", 0, True),
            ("CabinetGroove.nc", END_MILL_12, 1, "A second side: too far back, Y leaves its limits", 420, False),
            ("ShelfPins.nc", DRILL, 1, "Rows of holes for shelf pins", 0, True),
            ("DoorEdgeSaw.nc", SAW, 0, "Front edge to size", 0, True),
            ("DoorLock.nc", LOCK_CUTTER, 0, "Lock mortise in the front edge", 0, True)],
    "G55": [("SeatRim.nc", END_MILL_20, 1, "Undercut rim of the seat, five axes", 0, True),
            ("BeamHousing.nc", END_MILL_20, 0, "Housing across the beam", 0, True),
            ("LegSockets.nc", SOCKET_CUTTER, 1, "Sockets of the legs, inclined planes", 0, True),
            ("SeatHollow.nc", BALL_10, 1, "Hollow of the seat", 0, True),
            ("BeamMortises.nc", CHAIN, 0, "Two mortises of the beam", 0, True)],
}

CHAINS = {"G54": ("X->Z->C->A;Y", "Y"), "G55": ("X->Z->C->A;V", "V")}
PARKED_X = {"G54": 3000, "G55": 0}  # the head leaves the table that the operator unloads


def stl_mesh(path):
    """Points, each once, and triangles of a binary STL file."""
    data = path.read_bytes()
    numbers, points, triangles = {}, [], []
    for i in range(struct.unpack_from("<I", data, 80)[0]):
        values = struct.unpack_from("<12f", data, 84 + 50 * i)
        corners = []
        for k in (3, 6, 9):
            point = values[k:k + 3]
            if point not in numbers:
                numbers[point] = len(points)
                points.append(point)
            corners.append(numbers[point])
        triangles.append(corners)
    return points, triangles


def general(value):
    return "0" if value == 0 else f"{value:.6g}"


def model_json(installation, name, system, file, colour):
    points, triangles = stl_mesh(installation / "models" / "WorkPieces" / f"{file}.stl")
    vertices = ",\n".join(" ".join(general(v) for v in point) for point in points)
    return {
        "name": name,
        "parentNodeName": system,
        "switcher": "-3",
        "material": colour,
        "coordIndex": "[ " + ", ".join(f"{a}, {b}, {c}, -1" for a, b, c in triangles) + " ]",
        "verticesProperty": "VertexProperty {\nvertex [ " + vertices + " ]\n}\n",
    }


def system_json(installation, zone, system):
    number_, origin, models = system
    name = f"UCS{number_}"
    return {
        "id": number_,
        "name": name,
        "parentNodeName": zone,
        "moveTranslation": " ".join(str(v) for v in origin),
        "switcher": "-3",
        "modelObject": {f"userModel{i}": model_json(installation, f"userModel{i}", name, file, colour)
                        for i, (file, colour) in enumerate(models)},
    }


def item_json(tools, number_, item, text):
    program, tool, system, remark, shift, checked = item
    record = tools[f"tool{tool}"]
    return {
        "itemName": f"userCodeItem{number_}",
        "sourceCodePath": f"programs/{program}",
        "sourceCodeName": program,
        "sourceCodeString": text,
        "userCoordinateSystemId": system,
        "mirrorAngle": 0,
        "axisShift": 0,
        "translationX": 0,
        "translationY": shift,
        "translationZ": 0,
        "markedString": remark,
        "tool": record,
        "itemRPM": record["Rpm"],
        "t": 1,
        "type": 1001,
        "offsetInWorkPlane": "0 0 0",
        "checkState": checked,
    }


def header_tail(zone):
    chain, letter = CHAINS[zone]
    header = f"G1 X0.000 {letter}1400.000 Z0.000 C0.000 A0.000 F36000"
    tail = f"G1 X{PARKED_X[zone]}.000 {letter}1400.000 Z0.000 C0.000 A0.000 F36000"
    return {chain: {"header": header, "tail": tail, "itemHeader": "", "itemTail": ""}}


def job(installation, texts):
    library = json.loads((installation / "toollib.json").read_text(encoding="utf-8"))
    tools = {key: value for key, value in library.items() if isinstance(value, dict)}
    groups = {zone: {zone: [item_json(tools, i, item, texts[item[0]]) for i, item in enumerate(items)],
                     "class TORNVALE::HeaderTailManager": header_tail(zone)}
              for zone, items in ITEMS.items()}
    return {
        "version": VERSION,
        "StandardCorvane_4S": {
            "toolList": tools,
            "productsName": "Country house kitchen",
            "productsNo": "K-2026-014",
            "partName": "Door, cabinet side, beam and chair seat",
            "partNo": "014-01 to 014-04",
            "marked": "Left table: door leaf on risers, cabinet side on the pods.\n"
                      "Right table: beam at the stops, chair seat on risers.\n"
                      "The second cabinet side stays unchecked: it is too far back for the table.",
            "dateTime": CREATED,
            "LTime": "0.0",
        },
        "machineNode": {zone: {f"UCS{system[0]}": system_json(installation, zone, system) for system in systems}
                        for zone, systems in SYSTEMS.items()},
        "ProgramsTreeWidget": {"class UserTopItemManager": groups},
    }


def main(words):
    check = "--check" in words
    folders = [word for word in words if word != "--check"]
    if len(folders) != 1:
        sys.exit(__doc__)
    installation = Path(folders[0])
    texts = {name: make() for name, make in PROGRAMS.items()}
    files = {installation / "programs" / name: text for name, text in texts.items()}
    files[installation / "jobs" / "Demonstration.tornvale"] = (
        json.dumps(job(installation, texts), indent=1, sort_keys=True, ensure_ascii=False) + "\n")
    for path, text in files.items():
        if not check:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        elif not path.is_file() or path.read_text(encoding="utf-8") != text:
            sys.exit(f"{path} is not what this script writes")


if __name__ == "__main__":
    main(sys.argv[1:])

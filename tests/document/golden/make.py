#!/usr/bin/env python3
"""Writes the golden documents: one job in each of the three forms. golden/make.py FOLDER"""

import json
import sys
from pathlib import Path

TOOL = {"Index": 0, "SpindleNo": 1, "ToolNo": 1, "Length": 150, "BladeLength": 70, "Diameter": 20,
        "HandleDiameter": 44, "Rpm": 18000, "Transform": [0, 0, 0, 0, 0, 0], "Annonation": "End mill",
        "InstallationName": "X->Z->C->A", "SpName": "T1", "ChainSaw": "", "ChainSawPath": "", "Image": "",
        "Direction": 0, "Type": 0, "ContourPoints": [[0, 0, 0], [10, 0, 0], [10, 0, -150], [0, 0, -150]],
        "ToolTip": "0 0 0"}
# Index, spindle, number, length, blade, diameter, speed, text, picture, shank, contour, chain, spindle's name, kind,
# direction: thirteen entries or more are read to the end.
TOOL_ARRAY = [0, 1, 1, 150, 70, 20, 18000, "End mill", "", 44, TOOL["ContourPoints"], "X->Z->C->A", "T1", 0, 0]
SQUARE = "G0 X{0} Y200 Z200 C0 A0\nG0 Z120\nG1 Z100 F3000\nG1 X{1}\nG1 Y260\nG0 Z200\n"
HEAD = {"productsName": "Kitchen", "productsNo": "K 7", "partName": "Door", "partNo": "7-1",
        "marked": "first line\nsecond line", "dateTime": "2024-03-01 10:20:30", "LTime": "12.500"}
VERTICES = "VertexProperty { vertex [ 0 0 0, 100 0 0, 0 100 0, 0 0 50 ] }"
INDICES = "[ 0, 2, 1, -1, 0, 1, 3, -1, 1, 2, 3, -1, 0, 3, 2, -1 ]"


def item(name, x, checked, tool, typed=True):
    block = {"itemName": name, "sourceCodePath": "", "sourceCodeName": "Square.nc",
             "sourceCodeString": SQUARE.format(x, x + 60), "userCoordinateSystemId": 1, "mirrorAngle": 0,
             "axisShift": 0, "translationX": 5, "translationY": 0, "translationZ": 0, "markedString": "a square",
             "tool": tool, "itemRPM": 16000, "t": 0.8, "offsetInWorkPlane": "0 0 0", "checkState": checked}
    if typed:
        block["type"] = 1001
    return block


def items(tool, typed=True):
    return {"G54": [item("userCodeItem0", 100, True, tool, typed), item("userCodeItem1", 300, False, tool, typed)],
            "G55": [item("userCodeItem0", 200, True, tool, typed)]}


def groups(blocks):
    ends = {"G54": ("X->Z->C->A;Y", "Y"), "G55": ("X->Z->C->A;V", "V")}
    result = {}
    for zone, list_ in blocks.items():
        chain, letter = ends[zone]
        line = f"G1 X100.000 {letter}900.000 Z0.000 C0.000 A0.000 F36000"
        result[zone] = {zone: list_, "class TORNVALE::HeaderTailManager":
                        {chain: {"header": line, "tail": line, "itemHeader": "", "itemTail": ""}}}
    return result


def zone_object(zone):
    def system(number, shift):
        return {"id": number, "name": f"UCS{number}", "parentNodeName": zone, "moveTranslation": shift,
                "switcher": "-3", "modelObject": {"userModel0": {
                    "name": "userModel0", "parentNodeName": f"UCS{number}", "switcher": "-3",
                    "material": "0.81 0.81 0.81", "coordIndex": INDICES, "verticesProperty": VERTICES}}}
    return {"UCS0": system(0, "0 0 0"), "UCS1": system(1, "10 20 30")}


def old_zone():
    model = {"coordIndex": INDICES, "verticesProperty": VERTICES}
    return {"coordinate": [{"name": "UCS0", "moveTranslation": "0 0 0", "modelArray": [model]},
                           {"name": "UCS1", "moveTranslation": "10 20 30", "modelArray": [model]}]}


def main(folder):
    machine = {"G54": zone_object("G54"), "G55": zone_object("G55")}
    current = {"version": "3.3.0.5", "StandardCorvane_4S": {"toolList": {"tool0": TOOL}, **HEAD},
               "machineNode": machine,
               "ProgramsTreeWidget": {"class UserTopItemManager": groups(items(TOOL))}}
    middle = {"version": "2.2.0.8", "StandardCorvane_4S": {"toolList": [TOOL], **HEAD}, "machineNode": machine,
              "treeWidget": {"class UserTopItemManager": groups(items(TOOL))}}
    old = {"version": "2.2.0.7", "StandardCorvane_4S": {"toolList": [TOOL_ARRAY], **HEAD},
           "machineNode": {"Y": old_zone(), "V": old_zone()},
           "ProgramsTreeWidget": groups(items(TOOL_ARRAY, False))}
    for name, document in (("current", current), ("middle", middle), ("old", old)):
        (Path(folder) / f"{name}.tornvale").write_text(json.dumps(document, indent=1) + "\n", encoding="utf-8")


main(sys.argv[1])

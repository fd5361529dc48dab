#!/usr/bin/env python3
"""Makes the scene for a gun: a turret that strafes the walls of a yard.

    make_turret.py OUT.glb

"Turret" swings to the left and to the right for 8 s, a gun's height over the floor. Around it
stands "Yard", a group of all that shots shall hit: a floor, walls on three sides, one of them with
buttresses, and a slanting plate.
"""
import math
import sys

from make_shaky import Document, quaternion

FPS = 25
SECONDS = 8
SWING = math.radians(38)              # to each side
GUN_HEIGHT = 1.5


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_turret.py OUT.glb")
    doc = Document()
    doc.json["asset"]["generator"] = "make_turret.py"
    doc.json["scenes"][0].update(name="Yard", extras={"rigwright": {
        "frameRate": FPS, "range": [0, SECONDS]}})
    stone, plaster, steel = [0.55, 0.52, 0.47], [0.70, 0.66, 0.58], [0.35, 0.38, 0.42]
    parts = [
        doc.node(name="Floor", mesh=doc.box("Floor", (30, 0.2, 32), stone),
                 translation=[0, -0.1, 0]),
        doc.node(name="Wall", mesh=doc.box("Wall", (22, 5, 0.4), plaster),
                 translation=[0, 2.5, -15.2]),
        doc.node(name="RightWall", mesh=doc.box("RightWall", (0.4, 5, 16), plaster),
                 translation=[11, 2.5, -7.4]),
        doc.node(name="LeftWall", mesh=doc.box("LeftWall", (0.4, 5, 16), plaster),
                 translation=[-11, 2.5, -7.4]),
        doc.node(name="Plate", mesh=doc.box("Plate", (3.0, 3.2, 0.15), steel),
                 translation=[-7.5, 1.5, -9.0], rotation=quaternion(math.radians(-10), -0.25, 0))]
    buttress = doc.box("Buttress", (0.9, 4, 0.9), stone)
    parts += [doc.node(name="Buttress%d" % (i + 1), mesh=buttress,
                       translation=[x, 2, -14.7], rotation=quaternion(math.pi / 4, 0, 0))
              for i, x in enumerate((-4.5, 0.0, 4.5))]
    doc.json["scenes"][0]["nodes"] = []
    doc.node(name="Yard", children=parts)
    doc.node(name="Pedestal", mesh=doc.box("Pedestal", (0.9, 1.2, 0.9), steel),
             translation=[0, 0.6, 0])
    turret = doc.node(name="Turret", mesh=doc.box("Turret", (0.8, 0.5, 1.0), steel),
                      translation=[0, GUN_HEIGHT, 0])
    times = [i / FPS for i in range(FPS * SECONDS + 1)]
    turns = [quaternion(SWING * math.sin(2 * math.pi * t / SECONDS),
                        0.03 * math.sin(2 * math.pi * t / 2.7), 0) for t in times]
    doc.json["animations"].append({
        "name": "Swing",
        "samplers": [{"input": doc.accessor(times, 1), "output": doc.accessor(turns, 4)}],
        "channels": [{"sampler": 0, "target": {"node": turret, "path": "rotation"}}]})
    doc.save(sys.argv[1])


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes a car as one finds them to download: an .obj in centimetres, Z up, that looks along -Y.

  make_coupe.py OUT.obj
"""
import math
import sys

# Along the car (cm, front first), the height of the shell and half of its width there.
SHELL = [(-215, 52, 78), (-205, 62, 84), (-130, 80, 88), (-95, 86, 88), (-25, 132, 66),
         (60, 136, 66), (130, 98, 86), (205, 92, 84), (215, 80, 80)]
BELOW = 26.0
# Left is where +X is for who looks along -Y.
WHEELS = {"wheel_FL": (76, -134), "wheel_FR": (-76, -134), "wheel_RL": (76, 134), "wheel_RR": (-76, 134)}
RADIUS, HALF_WIDTH, SIDES = 33.0, 11.0, 24


class Obj:
    def __init__(self):
        self.lines, self.count = [], 0

    def vertices(self, points):
        self.lines += ["v %g %g %g" % p for p in points]
        self.count += len(points)
        return range(self.count - len(points) + 1, self.count + 1)

    def face(self, *corners):
        self.lines.append("f " + " ".join(map(str, corners)))


def shell(obj):
    obj.lines.append("o body")
    # Half a section, from the middle of the floor to the middle of the roof.
    rings = []
    for y, top, half in SHELL:
        waist = min(top, 84.0)
        right = [(0, BELOW), (half * 0.95, BELOW), (half, 45), (half, waist), (half * 0.78, top), (0, top + 2)]
        ring = [(x, y, z) for x, z in right] + [(-x, y, z) for x, z in right[-2:0:-1]]
        rings.append(list(obj.vertices(ring)))
    size = len(rings[0])
    for a, b in zip(rings, rings[1:]):
        for i in range(size):
            j = (i + 1) % size
            obj.face(b[i], b[j], a[j], a[i])
    obj.face(*rings[0])
    obj.face(*reversed(rings[-1]))


def wheel(obj, name, x, y):
    obj.lines.append("o " + name)
    sides = [list(obj.vertices([(x + side * HALF_WIDTH, y + RADIUS * math.cos(i * math.tau / SIDES),
                                 RADIUS + RADIUS * math.sin(i * math.tau / SIDES)) for i in range(SIDES)]))
             for side in (-1, 1)]
    for i in range(SIDES):
        j = (i + 1) % SIDES
        obj.face(sides[1][j], sides[1][i], sides[0][i], sides[0][j])
    obj.face(*reversed(sides[0]))
    obj.face(*sides[1])


def main(path):
    obj = Obj()
    shell(obj)
    for name, (x, y) in WHEELS.items():
        wheel(obj, name, x, y)
    with open(path, "w", encoding="ascii") as out:
        out.write("# A coupe, in centimetres.\n" + "\n".join(obj.lines) + "\n")


if __name__ == "__main__":
    main(sys.argv[1])

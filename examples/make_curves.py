#!/usr/bin/env python3
"""Makes the scene for two camera carriages.

A .glb with a ground, a statue, a row of posts, and two polylines that a carriage can be parented
to: "Street", an open path past the statue, and "Track", a closed one with hills. The same track as
eight points is printed for `rigwright place`, one line each: number, x, y, z.
"""
import math
import sys

from make_shaky import Document

TRACK_POINTS = 8


def track(angle):
    """Point of the closed track: an oval with two hills, 24 m by 16 m."""
    return (12 * math.cos(angle), 3.0 + 2.2 * math.cos(2 * angle - 0.6), -20 + 8 * math.sin(angle))


def street(share):
    """Point of the open path, which bends round the statue at (0, 0, 0)."""
    angle = math.pi * (0.95 - 0.9 * share)
    return (9 * math.cos(angle), 1.6, 7 * math.sin(angle) + 1.5 * math.sin(3 * angle))


def curve(doc, name, points, closed):
    """A LINE_LOOP or LINE_STRIP node."""
    doc.json["meshes"].append({"name": name, "primitives": [{
        "attributes": {"POSITION": doc.accessor(points, 3, target=34962)},
        "mode": 2 if closed else 3}]})
    return doc.node(name=name, mesh=len(doc.json["meshes"]) - 1)


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_curves.py OUT.glb")
    doc = Document()
    doc.json["asset"]["generator"] = "make_curves.py"
    del doc.json["animations"]
    ground = doc.box("Ground", (40, 0.1, 50), [0.45, 0.5, 0.4])
    post = doc.box("Post", (0.15, 2.4, 0.15), [0.6, 0.35, 0.2])
    statue = doc.box("Statue", (0.8, 3.2, 0.8), [0.7, 0.7, 0.72])
    doc.node(name="Ground", mesh=ground, translation=[0, -0.05, -8])
    doc.node(name="Statue", mesh=statue, translation=[0, 1.6, 0])
    for i in range(TRACK_POINTS):
        x, y, z = track(2 * math.pi * i / TRACK_POINTS)
        doc.node(name="Post%d" % (i + 1), mesh=post, translation=[x, y - 1.4, z])
        print(i + 1, "%.4f %.4f %.4f" % (x, y, z))
    curve(doc, "Street", [street(i / 120) for i in range(121)], False)
    curve(doc, "Track", [track(2 * math.pi * i / 160) for i in range(160)], True)
    doc.save(sys.argv[1])


if __name__ == "__main__":
    main()

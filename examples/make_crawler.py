#!/usr/bin/env python3
"""Makes the scene for a pair of belts: a tracked vehicle that crosses a bumpy strip.

    make_crawler.py INPUTS.csv OUT.glb

The node "Strip" is the ground, 44 m long, with bumps of 0.1 to 0.25 m, some across it and some
under one side only. "Hull" goes along it towards -Z, just as fast as the belts that INPUTS.csv
drives; it has an arm for each of its eight wheels, from "LeftArm1" at the back to "RightArm4" at
the front, whose keys hold the wheel and the belt below it on the ground. The hull follows what its
wheels stand on, softened as by springs.
"""
import csv
import math
import sys

from make_shaky import Document, quaternion

FPS = 25
# Of the belts as the rig lays them round wheels of its own size.
RADIUS, STEP = 0.5, 0.06              # of a wheel; thickness of a step (m)
FULL_SPEED = 5.0 * (RADIUS + STEP / 2)  # at full input (m/s)
DEAD_ZONE = 0.1                       # of an input that nobody has mapped
WHEEL_HEIGHT, SPACING, SIDE = 0.56, 1.25, 1.1
HALF_WIDTH = 0.2                      # of a belt (m)
ARMS = [(side, i) for side in ("Left", "Right") for i in range(4)]
SPRING = 0.16                         # of the hull (s)

# A bump's place along the way (m), half its length, its height, and the side that it is under.
BUMPS = [(5.5, 1.0, 0.12, 0), (8.5, 0.9, 0.18, 0), (11.5, 1.0, 0.20, -1), (13.5, 1.0, 0.20, 1),
         (16.5, 1.4, 0.25, 0), (20.0, 0.8, 0.10, 0), (21.6, 0.8, 0.10, 0), (23.2, 0.8, 0.10, 0)]
XS = [-4.0 + 0.4 * i for i in range(21)]
ZS = [8.0 - 0.1 * i for i in range(441)]


def height(x, z):
    total = 0.0
    for place, half, top, side in BUMPS:
        s = (z + place) / half
        # What is under one side ends in the middle.
        under = 1.0 if side == 0 else min(1.0, max(0.0, 0.5 + side * x / 0.8))
        if abs(s) < 1:
            total += top * under * (0.5 + 0.5 * math.cos(math.pi * s))
    return total


def strip(doc):
    points = [(x, height(x, z), z) for z in ZS for x in XS]
    width = len(XS)
    indices = []
    for j in range(len(ZS) - 1):
        for i in range(width - 1):
            a = j * width + i
            indices += [a, a + 1, a + width + 1, a, a + width + 1, a + width]
    doc.json["materials"].append({"name": "Strip", "pbrMetallicRoughness": {
        "baseColorFactor": [0.42, 0.38, 0.32, 1], "metallicFactor": 0, "roughnessFactor": 0.95}})
    doc.json["meshes"].append({"name": "Strip", "primitives": [{
        "attributes": {"POSITION": doc.accessor(points, 3, target=34962)},
        "indices": doc.accessor(indices, 1, "H", 34963),
        "material": len(doc.json["materials"]) - 1}]})
    return doc.node(name="Strip", mesh=len(doc.json["meshes"]) - 1)


def stand(x, z):
    """Height of a wheel's axle when the belt below it lies on the ground."""
    reach = RADIUS + STEP
    highest = -math.inf
    for k in range(-28, 29):
        u = reach * k / 28
        ground = max(height(x + side, z + u) for side in (-HALF_WIDTH, HALF_WIDTH))
        highest = max(highest, ground + math.sqrt(reach * reach - u * u))
    return highest


def read_inputs(path):
    """Times, and the mean of both belts' inputs."""
    with open(path, newline="") as file:
        rows = [[float(field) for field in row] for row in list(csv.reader(file))[1:]]
    return [row[0] for row in rows], [(row[1] + row[2]) / 2 for row in rows]


def at(times, values, t):
    for i in range(1, len(times)):
        if t <= times[i]:
            part = (t - times[i - 1]) / (times[i] - times[i - 1])
            return values[i - 1] + (values[i] - values[i - 1]) * part
    return values[-1]


def drive(times, values):
    """Way of the hull (m), frame by frame: a frame's input turns the wheels in that frame."""
    way = [0.0]
    for i in range(1, round(times[-1] * FPS) + 1):
        value = at(times, values, i / FPS)
        value = math.copysign(max(abs(value) - DEAD_ZONE, 0.0) / (1 - DEAD_ZONE), value)
        way.append(way[-1] + FULL_SPEED * value / FPS)
    return way


def soften(values):
    """Each as the mean of those around it, near ones more."""
    reach = round(3 * SPRING * FPS)
    weights = [math.exp(-0.5 * (k / FPS / SPRING) ** 2) for k in range(-reach, reach + 1)]
    clamp = lambda i: values[min(max(i, 0), len(values) - 1)]
    return [sum(w * clamp(i + k - reach) for k, w in enumerate(weights)) / sum(weights)
            for i in range(len(values))]


def place_of(arm):
    side, i = arm
    return (-SIDE if side == "Left" else SIDE), SPACING * (1.5 - i)


def ride(way):
    """Per frame the hull's height, pitch and roll: the plane that fits its axles best."""
    lifts, pitches, rolls = [], [], []
    for s in way:
        axles = [(x, z, stand(x, z - s) - WHEEL_HEIGHT) for x, z in map(place_of, ARMS)]
        lifts.append(sum(y for _, _, y in axles) / len(axles))
        pitches.append(math.atan(-sum(z * y for _, z, y in axles) / sum(z * z for _, z, _ in axles)))
        rolls.append(math.atan(sum(x * y for x, _, y in axles) / sum(x * x for x, _, _ in axles)))
    return soften(lifts), soften(pitches), soften(rolls)


def turned(q, v):
    """The vector v turned by the quaternion q."""
    x, y, z, w = q
    cross = lambda a, b: (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                          a[0] * b[1] - a[1] * b[0])
    t = [2 * c for c in cross((x, y, z), v)]
    u = cross((x, y, z), t)
    return [v[k] + w * t[k] + u[k] for k in range(3)]


def axle(arm, hull, q):
    """Place of the arm in the hull that puts its wheel on the ground."""
    x, z = place_of(arm)
    y = WHEEL_HEIGHT
    for _ in range(4):
        world = [a + b for a, b in zip(hull, turned(q, (x, y, z)))]
        y += stand(world[0], world[2]) - world[1]
    return x, y, z


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: make_crawler.py INPUTS.csv OUT.glb")
    way = drive(*read_inputs(sys.argv[1]))
    lifts, pitches, rolls = ride(way)
    places = [(0.0, lift, -s) for lift, s in zip(lifts, way)]
    turns = [quaternion(0.0, pitch, roll) for pitch, roll in zip(pitches, rolls)]

    doc = Document()
    doc.json["asset"]["generator"] = "make_crawler.py"
    doc.json["scenes"][0].update(name="Strip", extras={"rigwright": {
        "frameRate": FPS, "range": [0, (len(way) - 1) / FPS]}})
    strip(doc)
    body = doc.box("Hull", (1.6, 0.5, 4.2), [0.30, 0.36, 0.26])
    cab = doc.box("Cab", (1.3, 0.6, 1.6), [0.34, 0.40, 0.30])
    arm = doc.box("Arm", (0.3, 0.12, 0.12), [0.2, 0.2, 0.2])
    hull = doc.node(name="Hull", translation=list(places[0]), rotation=turns[0])
    clock = doc.accessor([i / FPS for i in range(len(way))], 1)
    samplers = [{"input": clock, "output": doc.accessor(places, 3)},
                {"input": clock, "output": doc.accessor(turns, 4)}]
    channels = [{"sampler": 0, "target": {"node": hull, "path": "translation"}},
                {"sampler": 1, "target": {"node": hull, "path": "rotation"}}]
    children = [doc.node(name="Body", mesh=body, translation=[0, 0.8, 0]),
                doc.node(name="Cab", mesh=cab, translation=[0, 1.35, 0.3])]
    for side, i in ARMS:
        axles = [axle((side, i), p, q) for p, q in zip(places, turns)]
        node = doc.node(name="%sArm%d" % (side, i + 1), mesh=arm, translation=list(axles[0]))
        children.append(node)
        samplers.append({"input": clock, "output": doc.accessor(axles, 3)})
        channels.append({"sampler": len(samplers) - 1,
                         "target": {"node": node, "path": "translation"}})
    doc.json["nodes"][hull]["children"] = children
    doc.json["scenes"][0]["nodes"] = [n for n in doc.json["scenes"][0]["nodes"]
                                      if n not in children]
    doc.json["animations"].append({"name": "Crossing", "samplers": samplers,
                                   "channels": channels})
    doc.save(sys.argv[2])


if __name__ == "__main__":
    main()

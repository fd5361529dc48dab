#!/usr/bin/env python3
"""Makes the demo's scene: somebody walks through a yard with a shaky camera on the shoulder.

A .glb with a ground, some posts and the node "Carrier", keyed in position and rotation at 25 fps
for 24 s: a smooth walk with turns and stops, steps that bob and sway, and noise whose strength
falls with frequency as that of a hand does. The noise is drawn from a fixed seed, so the file is
the same everywhere.
"""
import json
import math
import random
import struct
import sys

FPS = 25
SECONDS = 24


def noise(rng, count, fps, lowest, highest, slope):
    """Band-limited noise of unit variance: sines of random phase, power falling as f^-slope."""
    tones = [lowest * (highest / lowest) ** (i / 39) for i in range(40)]
    parts = [(f, f ** (-slope / 2), rng.uniform(0, 2 * math.pi)) for f in tones]
    scale = math.sqrt(2 / sum(a * a for _, a, _ in parts))
    return [scale * sum(a * math.sin(2 * math.pi * f * i / fps + p) for f, a, p in parts)
            for i in range(count)]


def quaternion(yaw, pitch, roll):
    """x, y, z, w of a turn about Y, then X, then Z (each about the turned axes)."""
    def turn(axis, angle):
        s = math.sin(angle / 2)
        return [axis[0] * s, axis[1] * s, axis[2] * s, math.cos(angle / 2)]

    def times(a, b):
        ax, ay, az, aw = a
        bx, by, bz, bw = b
        return [aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
                aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz]

    return times(times(turn((0, 1, 0), yaw), turn((1, 0, 0), pitch)), turn((0, 0, 1), roll))


def walk():
    rng = random.Random(20190412)
    count = FPS * SECONDS + 1
    shake = {key: noise(rng, count, FPS, 0.4, 11.0, 1.6)
             for key in ("x", "y", "z", "yaw", "pitch", "roll")}
    x = z = heading = stride = 0.0
    times, places, turns = [], [], []
    for i in range(count):
        t = i / FPS
        # Sets off, slows to look round at 9 s and 17 s, and stops at the end.
        pace = min(1.0, t / 1.5) * min(1.0, max(0.0, (SECONDS - 1 - t) / 2.0))
        pace *= 1 - 0.8 * math.exp(-((t - 9) / 1.2) ** 2) - 0.6 * math.exp(-((t - 17) / 1.0) ** 2)
        speed = 1.5 * pace
        heading += (0.45 * math.sin(0.55 * t) + 0.25 * math.sin(1.3 * t + 1)) / FPS
        x += -math.sin(heading) * speed / FPS
        z += -math.cos(heading) * speed / FPS
        stride += 2 * math.pi * 0.95 * (0.2 + 0.8 * pace) / FPS
        bob = 0.028 * abs(math.sin(stride)) * (0.2 + pace)
        sway = 0.022 * math.sin(stride) * (0.2 + pace)
        times.append(t)
        places.append((x + sway * math.cos(heading) + 0.010 * shake["x"][i],
                       1.55 + bob + 0.008 * shake["y"][i],
                       z - sway * math.sin(heading) + 0.010 * shake["z"][i]))
        turns.append(quaternion(heading + 0.020 * shake["yaw"][i],
                                0.05 * math.sin(0.4 * t) + 0.018 * shake["pitch"][i],
                                0.4 * sway + 0.015 * shake["roll"][i]))
    return times, places, turns


class Document:
    def __init__(self):
        self.binary = bytearray()
        self.json = {
            "asset": {"version": "2.0", "generator": "make_shaky.py"}, "scene": 0,
            "scenes": [{"name": "Yard", "nodes": []}], "nodes": [], "meshes": [],
            "materials": [], "accessors": [], "bufferViews": [], "animations": []}

    def accessor(self, rows, width, kind="f", target=None):
        flat = [value for row in rows for value in (row if width > 1 else [row])]
        while len(self.binary) % 4:
            self.binary.append(0)
        view = {"buffer": 0, "byteOffset": len(self.binary),
                "byteLength": len(flat) * struct.calcsize(kind)}
        if target:
            view["target"] = target
        packed = struct.pack("<%d%s" % (len(flat), kind), *flat)
        self.binary += packed
        stored = struct.unpack("<%d%s" % (len(flat), kind), packed)
        self.json["bufferViews"].append(view)
        self.json["accessors"].append({
            "bufferView": len(self.json["bufferViews"]) - 1, "count": len(rows),
            "componentType": 5126 if kind == "f" else 5123,
            "type": {1: "SCALAR", 3: "VEC3", 4: "VEC4"}[width],
            "min": [min(stored[k::width]) for k in range(width)],
            "max": [max(stored[k::width]) for k in range(width)]})
        return len(self.json["accessors"]) - 1

    def box(self, name, size, colour):
        half = [s / 2 for s in size]
        points, normals, indices = [], [], []
        for axis in range(3):
            for sign in (-1, 1):
                a, b = (axis + 1) % 3, (axis + 2) % 3
                for u, v in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
                    p = [0, 0, 0]
                    p[axis], p[a], p[b] = sign * half[axis], u * half[a], v * half[b]
                    points.append(p)
                    n = [0, 0, 0]
                    n[axis] = sign
                    normals.append(n)
                first = len(points) - 4
                order = (0, 1, 2, 0, 2, 3) if sign > 0 else (0, 2, 1, 0, 3, 2)
                indices += [first + k for k in order]
        self.json["materials"].append({"name": name, "pbrMetallicRoughness": {
            "baseColorFactor": colour + [1], "metallicFactor": 0, "roughnessFactor": 0.9}})
        self.json["meshes"].append({"name": name, "primitives": [{
            "attributes": {"POSITION": self.accessor(points, 3, target=34962),
                           "NORMAL": self.accessor(normals, 3, target=34962)},
            "indices": self.accessor(indices, 1, "H", 34963),
            "material": len(self.json["materials"]) - 1}]})
        return len(self.json["meshes"]) - 1

    def node(self, **fields):
        self.json["nodes"].append(fields)
        self.json["scenes"][0]["nodes"].append(len(self.json["nodes"]) - 1)
        return len(self.json["nodes"]) - 1

    def save(self, path):
        while len(self.binary) % 4:
            self.binary.append(0)
        self.json["buffers"] = [{"byteLength": len(self.binary)}]
        text = json.dumps(self.json, separators=(",", ":")).encode()
        text += b" " * (-len(text) % 4)
        with open(path, "wb") as out:
            out.write(struct.pack("<4sII", b"glTF", 2, 28 + len(text) + len(self.binary)))
            out.write(struct.pack("<I4s", len(text), b"JSON") + text)
            out.write(struct.pack("<I4s", len(self.binary), b"BIN\0") + bytes(self.binary))


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_shaky.py OUT.glb")
    doc = Document()
    ground = doc.box("Ground", (40, 0.1, 40), [0.45, 0.5, 0.4])
    post = doc.box("Post", (0.15, 2.4, 0.15), [0.6, 0.35, 0.2])
    camera = doc.box("Camera", (0.18, 0.16, 0.3), [0.15, 0.15, 0.2])
    doc.node(name="Ground", mesh=ground, translation=[0, -0.05, -10])
    for i in range(8):
        angle = 2 * math.pi * i / 8
        doc.node(name="Post%d" % (i + 1), mesh=post,
                 translation=[8 * math.cos(angle), 1.2, -10 + 8 * math.sin(angle)])
    times, places, turns = walk()
    carrier = doc.node(name="Carrier", mesh=camera, translation=list(places[0]),
                       rotation=turns[0])
    clock = doc.accessor(times, 1)
    doc.json["animations"].append({
        "name": "Walk",
        "samplers": [{"input": clock, "output": doc.accessor(places, 3)},
                     {"input": clock, "output": doc.accessor(turns, 4)}],
        "channels": [{"sampler": 0, "target": {"node": carrier, "path": "translation"}},
                     {"sampler": 1, "target": {"node": carrier, "path": "rotation"}}]})
    doc.save(sys.argv[1])


if __name__ == "__main__":
    main()

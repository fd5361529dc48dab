#!/usr/bin/env python3
"""Makes the four-wheeler's playground: one mesh, the node "Terrain", about 100k triangles.

    make_terrain.py OUT.glb [--scale s]

Lengths are metres, or with --scale so many metres; Y is up. A drive starts at the origin towards
-Z, on a pad that is exactly flat for 42 m. Then, one behind the other on the line x = 0: a kerb, a
bumpy strip, a ramp with a sharp lip and its landing, a banked left-hand curve, and on the way back
at x = -28 a row of hills that ends on the pad. Around it lies rolling country, 1.6 km a side.

The mesh is a grid whose lines stand close where something happens and wide where nothing does.
The same file comes out everywhere.
"""
import argparse
import array
import json
import math
import struct
import sys

PAD = 51.0                            # radius of the level pad; the mesh is exactly flat to 42 m
KERB, KERB_END = -44.0, -47.5         # the step up; where its top begins to fall
KERB_HEIGHT = 0.12
BUMPS, BUMPS_END = -51.0, -58.5
RAMP, LIP = -60.5, -69.0              # where the ramp rises and where it breaks off
LIP_HEIGHT = 1.2
LANDING_HEIGHT, LANDING_END = 0.45, -82.0
CURVE_X, CURVE_Z, CURVE_RADIUS = -14.0, -94.0, 14.0
BANK = math.radians(20)
BACK_X = 2 * CURVE_X                  # the lane back
EDGE = 0.02                           # width of an edge that counts as sharp


def smooth(a, b, x):
    """0 before a, 1 behind b, without a bend between; a may be above b."""
    t = min(1.0, max(0.0, (x - a) / (b - a)))
    return t * t * t * (t * (6 * t - 15) + 10)


def country(x, z):
    """The land around: long swells, higher towards the rim."""
    far = math.hypot(x, z + 40)
    swell = (1.6 * math.sin(0.029 * x + 0.4 + 0.9 * math.sin(0.019 * z)) * math.cos(0.025 * z + 0.9)
             + 0.8 * math.sin(0.041 * z + 1.2 * math.sin(0.021 * x) + 2.1)
             + 0.15 * math.sin(0.067 * x + math.sin(0.04 * z)) * math.sin(0.061 * z + 1))
    ridge = 17 * smooth(330, 800, far) * (
        1 + 0.7 * math.sin(0.011 * x + math.sin(0.006 * z)) * math.sin(0.013 * z + 1.9))
    return swell + ridge


def kerb(x, z):
    rise = 1.0 if z <= KERB - EDGE else max(0.0, (KERB - z) / EDGE)
    return KERB_HEIGHT * rise * smooth(KERB_END - 2.5, KERB_END, z) * smooth(8.5, 7, abs(x))


def bumps(x, z):
    inside = smooth(BUMPS, BUMPS - 1, z) * smooth(BUMPS_END, BUMPS_END + 1, z)
    return 0.035 * inside * smooth(7, 6, abs(x)) * (1 - math.cos(2 * math.pi * z / 1.7 + 1.1 * x))


def ramp(x, z):
    """Rises ever steeper, so that a car feels no corner, and breaks off."""
    if z > RAMP or z < LANDING_END:
        return 0.0
    if z >= LIP:
        height = LIP_HEIGHT * ((RAMP - z) / (RAMP - LIP)) ** 2
    else:
        height = LANDING_HEIGHT * smooth(LANDING_END, LIP - 3, z)
        if z > LIP - EDGE:
            height += (LIP_HEIGHT - height) * (1 - (LIP - z) / EDGE)
    return height * smooth(6.2, 4.8, abs(x))


def banked(x, z):
    """Half a turn whose outside is raised; it lies between the lane out and the lane back."""
    dx, dz = x - CURVE_X, CURVE_Z - z
    out = math.hypot(dx, dz) - CURVE_RADIUS
    if abs(out) > 14:
        return 0.0
    angle = math.degrees(math.atan2(dz, dx))      # 0 at the way in, 180 at the way out
    if angle < -90:
        angle += 360
    along = smooth(-15, 35, angle) * smooth(195, 145, angle)
    rise = 0.5 * (out + 2.5 + math.hypot(out + 2.5, 1.5))
    return math.tan(BANK) * rise * along * smooth(-14, -5, out) * smooth(13, 5, out)


def lane_back(x, z):
    """Three hills, each of another length, the middle one slanting."""
    height = 0.0
    for centre, half, top, slant in ((-81, 9, 0.8, 0.0), (-66, 8, 0.9, 0.35), (-53, 7, 0.6, -0.2)):
        s = (z - centre - slant * (x - BACK_X)) / half
        if abs(s) < 1:
            height += top * (0.5 + 0.5 * math.cos(math.pi * s))
    return height * smooth(10, 6, abs(x - BACK_X))


def obstacles(x, z):
    return max(kerb(x, z) + bumps(x, z) + ramp(x, z), banked(x, z), lane_back(x, z))


def course(x, z):
    """How much of the land is levelled for the course: 1 on it, 0 well beside it."""
    along = min(0.0, max(z, CURVE_Z))
    lanes = min(math.hypot(x, z - along), math.hypot(x - BACK_X, z - along))
    if z < CURVE_Z:
        lanes = abs(math.hypot(x - CURVE_X, z - CURVE_Z) - CURVE_RADIUS)
    return 1 - (1 - smooth(78, PAD, math.hypot(x, z))) * (1 - smooth(40, 14, lanes))


def height(x, z):
    level = course(x, z)
    return country(x, z) * (1 - level) + level * obstacles(x, z)


def colour(x, z):
    """Tarmac, lighter where something stands on it, in the green of the country."""
    level = smooth(0.85, 1.0, course(x, z))
    light = 0.12 * level * smooth(0.005, 0.1, obstacles(x, z))
    return [round(255 * (a + (b - a) * level + light))
            for a, b in zip((0.25, 0.36, 0.17), (0.27, 0.28, 0.30))] + [255]


def spread(fine, low, high, rim, edges):
    """Lines every `fine` from low to high, and wider ones out to the rim, with those at `edges`."""
    count = round((high - low) / fine)
    places = [low + (high - low) * i / count for i in range(count + 1)]
    for sign, end, last in ((-1, low, rim[0]), (1, high, rim[1])):
        step, place = fine, end
        while sign * (last - place) > step * 1.6:
            # A fast car goes far: only behind the first hills do the lines stand wide.
            step = min(step * 1.12, 9.0 if abs(place) < 330 else 36.0)
            place += sign * step
            places.append(place)
        places.append(last)
    # A line beside one that is asked for would make needles of triangles.
    places = [p for p in places if all(abs(p - edge) > fine * 0.3 for edge in edges)]
    return sorted(places + edges)


def grid():
    xs = spread(0.55, -37.0, 6.5, (-800.0, 800.0), [])
    bump_lines = [BUMPS - 0.25 * i for i in range(round((BUMPS - BUMPS_END) / 0.25) + 1)]
    zs = spread(0.5, -114.0, -43.0, (-860.0, 740.0),
                [KERB, KERB - EDGE, LIP, LIP - EDGE] + bump_lines)
    return xs, zs


def build():
    xs, zs = grid()
    points, normals = array.array("f"), array.array("f")
    colours, indices = array.array("B"), array.array("I")
    width = len(xs)
    heights = [[height(x, z) for x in xs] for z in zs]
    for j, z in enumerate(zs):
        for i, x in enumerate(xs):
            points.extend((x, heights[j][i], z))
            colours.extend(colour(x, z))
            a, b = max(i - 1, 0), min(i + 1, width - 1)
            c, d = max(j - 1, 0), min(j + 1, len(zs) - 1)
            nx = -(heights[j][b] - heights[j][a]) / (xs[b] - xs[a])
            nz = -(heights[d][i] - heights[c][i]) / (zs[d] - zs[c])
            length = math.sqrt(nx * nx + 1 + nz * nz)
            normals.extend((nx / length, 1 / length, nz / length))
    for j in range(len(zs) - 1):
        for i in range(width - 1):
            a = j * width + i
            b, c, d = a + 1, a + width, a + width + 1
            indices.extend((a, c, d, a, d, b))
    return points, normals, colours, indices


def write(path, points, normals, colours, indices):
    if sys.byteorder == "big":
        for block in (points, normals, indices):
            block.byteswap()
    binary = b"".join(b.tobytes() for b in (points, normals, indices, colours))
    count = len(points) // 3
    size = 4 * len(points)
    document = {
        "asset": {"version": "2.0", "generator": "make_terrain.py"}, "scene": 0,
        "scenes": [{"name": "Playground", "nodes": [0],
                    "extras": {"rigwright": {"frameRate": 25, "range": [0, 30]}}}],
        "nodes": [{"name": "Terrain", "mesh": 0}],
        "meshes": [{"name": "Terrain", "primitives": [{
            "attributes": {"POSITION": 0, "NORMAL": 1, "COLOR_0": 3}, "indices": 2,
            "material": 0}]}],
        "materials": [{"name": "Terrain", "pbrMetallicRoughness": {
            "baseColorFactor": [1, 1, 1, 1], "metallicFactor": 0,
            "roughnessFactor": 0.95}}],
        "accessors": [
            {"bufferView": 0, "componentType": 5126, "type": "VEC3", "count": count,
             "min": [min(points[k::3]) for k in range(3)],
             "max": [max(points[k::3]) for k in range(3)]},
            {"bufferView": 1, "componentType": 5126, "type": "VEC3", "count": count},
            {"bufferView": 2, "componentType": 5125, "type": "SCALAR", "count": len(indices)},
            {"bufferView": 3, "componentType": 5121, "normalized": True, "type": "VEC4",
             "count": count}],
        "bufferViews": [
            {"buffer": 0, "byteOffset": 0, "byteLength": size, "target": 34962},
            {"buffer": 0, "byteOffset": size, "byteLength": size, "target": 34962},
            {"buffer": 0, "byteOffset": 2 * size, "byteLength": 4 * len(indices),
             "target": 34963},
            {"buffer": 0, "byteOffset": 2 * size + 4 * len(indices), "byteLength": 4 * count,
             "target": 34962}],
        "buffers": [{"byteLength": len(binary)}]}
    text = json.dumps(document, separators=(",", ":")).encode()
    text += b" " * (-len(text) % 4)
    with open(path, "wb") as out:
        out.write(struct.pack("<4sII", b"glTF", 2, 28 + len(text) + len(binary)))
        out.write(struct.pack("<I4s", len(text), b"JSON") + text)
        out.write(struct.pack("<I4s", len(binary), b"BIN\0") + binary)


def main():
    parser = argparse.ArgumentParser(description="Makes a terrain to drive on.")
    parser.add_argument("out", metavar="OUT.glb")
    parser.add_argument("--scale", type=float, default=1.0, help="metres per metre (default 1)")
    options = parser.parse_args()
    if not (math.isfinite(options.scale) and options.scale > 0):
        parser.error("the scale must be above 0")
    points, normals, colours, indices = build()
    if options.scale != 1:
        points = array.array("f", (p * options.scale for p in points))
    write(options.out, points, normals, colours, indices)
    print("%d triangles" % (len(indices) // 3), file=sys.stderr)


if __name__ == "__main__":
    main()

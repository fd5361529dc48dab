#include "adaptor/headless/GltfMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

#include "adaptor/headless/GltfAccessor.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfLines.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::CMesh;
using util::Vector3;

PrimitiveMode modeOf(const Json& primitive, const Place& place) {
  const std::size_t mode = wholeAt(primitive, "mode", 4, place);
  if (mode > 6) place.in("mode").fail(std::to_string(mode) + " is no primitive mode");
  return static_cast<PrimitiveMode>(mode);
}

bool isTriangles(PrimitiveMode mode) {
  return mode >= PrimitiveMode::kTriangles;
}

bool isCurve(PrimitiveMode mode) {
  return mode == PrimitiveMode::kLines || mode == PrimitiveMode::kLineLoop ||
         mode == PrimitiveMode::kLineStrip;
}

bool hasTriangles(const Json& primitives, const Place& place) {
  for (std::size_t i = 0; i < primitives.size(); ++i)
    if (isTriangles(modeOf(primitives[i], place.in("primitives", i)))) return true;
  return false;
}

std::size_t accessorCount(const GltfDocument& document) {
  return listAt(document.json(), "accessors", Place("")).size();
}

bool isUnsigned(ComponentType type) {
  return type == ComponentType::kUnsignedByte || type == ComponentType::kUnsignedShort ||
         type == ComponentType::kUnsignedInt;
}

/// False when an extension would have to unpack the primitive's data.
bool isReadable(const GltfDocument& document, const Json& primitive) {
  const Json* extensions = member(primitive, "extensions");
  if (extensions != nullptr && member(*extensions, "KHR_draco_mesh_compression") != nullptr)
    return false;
  const Json* position = member(*member(primitive, "attributes"), "POSITION");
  const Json* indices = member(primitive, "indices");
  return (position == nullptr || !document.accessor(position->get<std::size_t>()).compressed) &&
         (indices == nullptr || !document.accessor(indices->get<std::size_t>()).compressed);
}

/// Checks positions and indices of one primitive; false when an extension would have to unpack
/// them.
bool checkPrimitive(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json* attributes = objectAt(primitive, "attributes", place);
  if (attributes == nullptr) place.in("attributes").fail("is missing");
  const Place here = place.in("attributes");
  const std::size_t accessors = accessorCount(document);
  const int position = indexAt(*attributes, "POSITION", accessors, here);
  const int indices = indexAt(primitive, "indices", accessors, place);
  objectAt(primitive, "extensions", place);
  if (!isReadable(document, primitive)) return false;
  if (position < 0) return true;  // Nothing to show: allowed.

  const AccessorView points = document.accessor(static_cast<std::size_t>(position));
  if (points.components != 3 || points.type == ComponentType::kUnsignedInt)
    here.in("POSITION").fail("is not of type VEC3 with components of a position");
  std::size_t corners = points.count;
  document.spend(3 * points.count, place);
  if (indices >= 0) {
    const AccessorView faces = document.accessor(static_cast<std::size_t>(indices));
    if (faces.components != 1 || !isUnsigned(faces.type) || faces.normalized)
      place.in("indices").fail("is not of type SCALAR with unsigned components");
    corners = faces.count;
    document.spend(corners, place);
    const std::uint32_t largest = faces.largestIndex();
    if (largest >= points.count)
      place.in("indices").fail("refers to vertex " + std::to_string(largest) + " of " +
                               std::to_string(points.count));
  }
  const PrimitiveMode mode = modeOf(primitive, place);
  document.spend(mode == PrimitiveMode::kTriangles ? corners : 3 * corners, place);
  return true;
}

int texCoordsOf(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json* attributes = member(primitive, "attributes");
  const int index =
      indexAt(*attributes, "TEXCOORD_0", accessorCount(document), place.in("attributes"));
  if (index < 0) return -1;
  const AccessorView view = document.accessor(static_cast<std::size_t>(index));
  const AccessorView points =
      document.accessor(wholeAt(*attributes, "POSITION", place.in("attributes")));
  const bool usable = view.components == 2 && !view.compressed && view.count == points.count;
  return usable ? index : -1;
}

std::vector<std::uint32_t> cornersOf(const GltfDocument& document, const Json& primitive,
                                     std::size_t vertices) {
  if (const Json* indices = member(primitive, "indices"))
    return document.accessor(indices->get<std::size_t>()).indices();
  std::vector<std::uint32_t> corners(vertices);
  for (std::size_t i = 0; i < vertices; ++i) corners[i] = static_cast<std::uint32_t>(i);
  return corners;
}

Colour colourOf(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json& materials = listAt(document.json(), "materials", Place(""));
  const int index = indexAt(primitive, "material", materials.size(), place);
  Colour colour{1.0f, 1.0f, 1.0f};
  if (index < 0) return colour;
  const Place here("materials", static_cast<std::size_t>(index));
  const Json* surface =
      objectAt(materials[static_cast<std::size_t>(index)], "pbrMetallicRoughness", here);
  double factor[4];
  if (surface != nullptr &&
      numbersAt(*surface, "baseColorFactor", 4, factor, here.in("pbrMetallicRoughness")))
    std::transform(factor, factor + 3, colour.begin(),
                   [](double v) { return static_cast<float>(std::clamp(v, 0.0, 1.0)); });
  return colour;
}

/// The curve of a primitive of lines; what of it is not seen goes into `left`.
std::shared_ptr<const Curve> buildCurve(const GltfDocument& document, const Json& primitive,
                                        PrimitiveMode mode, std::string& left) {
  const Json* position = member(*member(primitive, "attributes"), "POSITION");
  if (position == nullptr) return nullptr;
  const AccessorView view = document.accessor(position->get<std::size_t>());
  const std::vector<double> numbers = view.numbers();
  const std::vector<std::uint32_t> corners = cornersOf(document, primitive, view.count);
  if (mode == PrimitiveMode::kLines) return longestChain(numbers, corners, left);
  auto curve = std::make_shared<Curve>();
  curve->closed = mode == PrimitiveMode::kLineLoop;
  for (const std::uint32_t corner : corners) {
    const double* p = &numbers[3 * corner];
    if (std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]))
      curve->points.emplace_back(p[0], p[1], p[2]);
  }
  return curve;
}

/// Gathers the primitives of one mesh.
class TriangleBuilder {
 public:
  TriangleBuilder(const GltfDocument& document, bool withTexCoords)
      : m_document(document), m_withTexCoords(withTexCoords) {}

  void add(const Json& primitive, const Place& place) {
    const auto position = member(*member(primitive, "attributes"), "POSITION")->get<std::size_t>();
    const int texCoords = m_withTexCoords ? texCoordsOf(m_document, primitive, place) : -1;
    const std::int32_t base = vertexBase(position);
    const std::int32_t texBase = m_withTexCoords ? texCoordBase(texCoords) : 0;
    const PrimitiveMode mode = modeOf(primitive, place);
    const std::size_t vertices = m_document.accessor(position).count;
    if (mode == PrimitiveMode::kTriangles) return addTriangles(primitive, vertices, base, texBase);
    const std::vector<std::uint32_t> corners = cornersOf(m_document, primitive, vertices);
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i + 2 < n; ++i) {
      const std::uint32_t a = mode == PrimitiveMode::kTriangleFan ? corners[0] : corners[i];
      const bool odd = mode == PrimitiveMode::kTriangleStrip && i % 2 == 1;
      const std::uint32_t b = corners[i + (odd ? 2 : 1)];
      const std::uint32_t c = corners[i + (odd ? 1 : 2)];
      // Strips are stitched together with triangles of no area.
      if (a != b && b != c && c != a) addFace(base, texBase, a, b, c);
    }
  }

  CMesh take() { return std::move(m_mesh); }

 private:
  std::int32_t vertexBase(std::size_t accessor) {
    const auto [at, isNew] =
        m_bases.emplace(accessor, static_cast<std::int32_t>(m_mesh.vertices.size()));
    if (isNew) {
      const AccessorView view = m_document.accessor(accessor);
      const std::size_t first = m_mesh.vertices.size();
      m_mesh.vertices.resize(first + view.count);
      view.numbersInto(&m_mesh.vertices[first].x);
    }
    return at->second;
  }

  std::int32_t texCoordBase(int accessor) {
    const auto [at, isNew] =
        m_texBases.emplace(accessor, static_cast<std::int32_t>(m_mesh.texCoords.size()));
    if (isNew) {
      const std::vector<double> numbers =
          m_document.accessor(static_cast<std::size_t>(accessor)).numbers();
      for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        m_mesh.texCoords.emplace_back(numbers[i], numbers[i + 1], 0.0);
    }
    return at->second;
  }

  bool finite(std::int32_t vertex) const {
    const Vector3<double>& v = m_mesh.vertices[static_cast<std::size_t>(vertex)];
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
  }

  /// Plain triangles, which big meshes consist of, are read to their place at once.
  void addTriangles(const Json& primitive, std::size_t vertices, std::int32_t base,
                    std::int32_t texBase) {
    const std::size_t first = m_mesh.faces.size();
    if (const Json* indices = member(primitive, "indices")) {
      const AccessorView view = m_document.accessor(indices->get<std::size_t>());
      m_mesh.faces.resize(first + view.count);
      view.indicesInto(reinterpret_cast<std::uint32_t*>(m_mesh.faces.data() + first));
    } else {
      m_mesh.faces.resize(first + vertices);
      std::iota(m_mesh.faces.begin() + static_cast<std::ptrdiff_t>(first), m_mesh.faces.end(), 0);
    }
    std::vector<std::int32_t>& faces = m_mesh.faces;
    std::size_t kept = first;
    for (std::size_t i = first; i + 2 < faces.size(); i += 3) {
      const std::int32_t face[3] = {base + faces[i], base + faces[i + 1], base + faces[i + 2]};
      if (!finite(face[0]) || !finite(face[1]) || !finite(face[2])) continue;
      std::copy(face, face + 3, faces.begin() + static_cast<std::ptrdiff_t>(kept));
      kept += 3;
      addTexFace(face, texBase - base);
    }
    faces.resize(kept);
  }

  void addFace(std::int32_t base, std::int32_t texBase, std::uint32_t a, std::uint32_t b,
               std::uint32_t c) {
    const std::int32_t face[3] = {base + static_cast<std::int32_t>(a),
                                  base + static_cast<std::int32_t>(b),
                                  base + static_cast<std::int32_t>(c)};
    if (!finite(face[0]) || !finite(face[1]) || !finite(face[2])) return;
    m_mesh.faces.insert(m_mesh.faces.end(), face, face + 3);
    addTexFace(face, texBase - base);
  }

  void addTexFace(const std::int32_t (&face)[3], std::int32_t shift) {
    if (!m_withTexCoords) return;
    for (const std::int32_t corner : face) m_mesh.texFaces.push_back(corner + shift);
  }

  const GltfDocument& m_document;
  bool m_withTexCoords;
  CMesh m_mesh;
  std::map<std::size_t, std::int32_t> m_bases;  ///< first vertex of an accessor's
  std::map<int, std::int32_t> m_texBases;
};

const Json& primitivesOf(const GltfDocument& document, int mesh) {
  const auto index = static_cast<std::size_t>(mesh);
  return listAt(document.json()["meshes"][index], "primitives", Place("meshes", index));
}

}  // namespace

MeshContent checkMesh(const GltfDocument& document, int mesh) {
  const Place place("meshes", static_cast<std::size_t>(mesh));
  const Json& primitives = primitivesOf(document, mesh);
  MeshContent content;
  const bool withTriangles = hasTriangles(primitives, place);
  std::size_t vertices = 0;
  for (std::size_t i = 0; i < primitives.size(); ++i) {
    const Place here = place.in("primitives", i);
    if (!primitives[i].is_object()) here.fail("is no object");
    const PrimitiveMode mode = modeOf(primitives[i], here);
    if (!isTriangles(mode) && !isCurve(mode)) continue;
    // Single lines beside triangles are stray edges of a model, no curve that somebody drew.
    if (mode == PrimitiveMode::kLines && withTriangles) continue;
    if (!checkPrimitive(document, primitives[i], here)) {
      content.warnings.push_back(here.text() +
                                 ": is compressed; it stays in the file but is not seen here");
      continue;
    }
    if (i == 0) content.colour = colourOf(document, primitives[i], here);
    const Json* position = member(*member(primitives[i], "attributes"), "POSITION");
    if (position == nullptr) continue;
    if (isTriangles(mode)) {
      vertices += document.accessor(position->get<std::size_t>()).count;
      if (vertices > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        here.fail("makes a mesh of more than 2^31 vertices");
      texCoordsOf(document, primitives[i], here);
      content.hasTriangles = true;
    } else if (content.curve) {
      content.warnings.push_back(here.text() + ": a second curve in one mesh is not seen here");
    } else {
      std::string left;
      content.curve = buildCurve(document, primitives[i], mode, left);
      if (!left.empty()) content.warnings.push_back(here.text() + ": " + left);
    }
  }
  return content;
}

CMesh buildTriangles(const GltfDocument& document, int mesh) {
  const Place place("meshes", static_cast<std::size_t>(mesh));
  const Json& primitives = primitivesOf(document, mesh);
  std::vector<std::size_t> used;
  bool withTexCoords = true;
  for (std::size_t i = 0; i < primitives.size(); ++i) {
    const Place here = place.in("primitives", i);
    if (!isTriangles(modeOf(primitives[i], here)) ||
        member(*member(primitives[i], "attributes"), "POSITION") == nullptr ||
        !isReadable(document, primitives[i]))
      continue;
    used.push_back(i);
    withTexCoords = withTexCoords && texCoordsOf(document, primitives[i], here) >= 0;
  }
  TriangleBuilder builder(document, withTexCoords);
  for (const std::size_t i : used) builder.add(primitives[i], place.in("primitives", i));
  return builder.take();
}

}  // namespace orv::rws::adaptor::headless

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

PrimitiveMode ModeOf(const Json& primitive, const Place& place) {
  const std::size_t mode = WholeAt(primitive, "mode", 4, place);
  if (mode > 6) place.In("mode").Fail(std::to_string(mode) + " is no primitive mode");
  return static_cast<PrimitiveMode>(mode);
}

bool IsTriangles(PrimitiveMode mode) {
  return mode >= PrimitiveMode::kTriangles;
}

bool IsCurve(PrimitiveMode mode) {
  return mode == PrimitiveMode::kLines || mode == PrimitiveMode::kLineLoop ||
         mode == PrimitiveMode::kLineStrip;
}

bool HasTriangles(const Json& primitives, const Place& place) {
  for (std::size_t i = 0; i < primitives.size(); ++i)
    if (IsTriangles(ModeOf(primitives[i], place.In("primitives", i)))) return true;
  return false;
}

std::size_t AccessorCount(const GltfDocument& document) {
  return ListAt(document.GetJson(), "accessors", Place("")).size();
}

bool IsUnsigned(ComponentType type) {
  return type == ComponentType::kUnsignedByte || type == ComponentType::kUnsignedShort ||
         type == ComponentType::kUnsignedInt;
}

/// False when an extension would have to unpack the primitive's data.
bool IsReadable(const GltfDocument& document, const Json& primitive) {
  const Json* extensions = Member(primitive, "extensions");
  if (extensions != nullptr && Member(*extensions, "KHR_draco_mesh_compression") != nullptr)
    return false;
  const Json* position = Member(*Member(primitive, "attributes"), "POSITION");
  const Json* indices = Member(primitive, "indices");
  return (position == nullptr || !document.Accessor(position->get<std::size_t>()).compressed) &&
         (indices == nullptr || !document.Accessor(indices->get<std::size_t>()).compressed);
}

/// Checks positions and indices of one primitive; false when an extension would have to unpack
/// them.
bool CheckPrimitive(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json* attributes = ObjectAt(primitive, "attributes", place);
  if (attributes == nullptr) place.In("attributes").Fail("is missing");
  const Place here = place.In("attributes");
  const std::size_t accessors = AccessorCount(document);
  const int position = IndexAt(*attributes, "POSITION", accessors, here);
  const int indices = IndexAt(primitive, "indices", accessors, place);
  ObjectAt(primitive, "extensions", place);
  if (!IsReadable(document, primitive)) return false;
  if (position < 0) return true;  // Nothing to show: allowed.

  const AccessorView points = document.Accessor(static_cast<std::size_t>(position));
  if (points.components != 3 || points.type == ComponentType::kUnsignedInt)
    here.In("POSITION").Fail("is not of type VEC3 with components of a position");
  std::size_t corners = points.count;
  document.Spend(3 * points.count, place);
  if (indices >= 0) {
    const AccessorView faces = document.Accessor(static_cast<std::size_t>(indices));
    if (faces.components != 1 || !IsUnsigned(faces.type) || faces.normalized)
      place.In("indices").Fail("is not of type SCALAR with unsigned components");
    corners = faces.count;
    document.Spend(corners, place);
    const std::uint32_t largest = faces.LargestIndex();
    if (largest >= points.count)
      place.In("indices").Fail("refers to vertex " + std::to_string(largest) + " of " +
                               std::to_string(points.count));
  }
  const PrimitiveMode mode = ModeOf(primitive, place);
  document.Spend(mode == PrimitiveMode::kTriangles ? corners : 3 * corners, place);
  return true;
}

int TexCoordsOf(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json* attributes = Member(primitive, "attributes");
  const int index =
      IndexAt(*attributes, "TEXCOORD_0", AccessorCount(document), place.In("attributes"));
  if (index < 0) return -1;
  const AccessorView view = document.Accessor(static_cast<std::size_t>(index));
  const AccessorView points =
      document.Accessor(WholeAt(*attributes, "POSITION", place.In("attributes")));
  const bool usable = view.components == 2 && !view.compressed && view.count == points.count;
  return usable ? index : -1;
}

std::vector<std::uint32_t> CornersOf(const GltfDocument& document, const Json& primitive,
                                     std::size_t vertices) {
  if (const Json* indices = Member(primitive, "indices"))
    return document.Accessor(indices->get<std::size_t>()).Indices();
  std::vector<std::uint32_t> corners(vertices);
  for (std::size_t i = 0; i < vertices; ++i) corners[i] = static_cast<std::uint32_t>(i);
  return corners;
}

Colour ColourOf(const GltfDocument& document, const Json& primitive, const Place& place) {
  const Json& materials = ListAt(document.GetJson(), "materials", Place(""));
  const int index = IndexAt(primitive, "material", materials.size(), place);
  Colour colour{1.0f, 1.0f, 1.0f};
  if (index < 0) return colour;
  const Place here("materials", static_cast<std::size_t>(index));
  const Json* surface =
      ObjectAt(materials[static_cast<std::size_t>(index)], "pbrMetallicRoughness", here);
  double factor[4];
  if (surface != nullptr &&
      NumbersAt(*surface, "baseColorFactor", 4, factor, here.In("pbrMetallicRoughness")))
    std::transform(factor, factor + 3, colour.begin(),
                   [](double v) { return static_cast<float>(std::clamp(v, 0.0, 1.0)); });
  return colour;
}

/// The curve of a primitive of lines; what of it is not seen goes into `left`.
std::shared_ptr<const Curve> BuildCurve(const GltfDocument& document, const Json& primitive,
                                        PrimitiveMode mode, std::string& left) {
  const Json* position = Member(*Member(primitive, "attributes"), "POSITION");
  if (position == nullptr) return nullptr;
  const AccessorView view = document.Accessor(position->get<std::size_t>());
  const std::vector<double> numbers = view.ReadNumbers();
  const std::vector<std::uint32_t> corners = CornersOf(document, primitive, view.count);
  if (mode == PrimitiveMode::kLines) return LongestChain(numbers, corners, left);
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

  void Add(const Json& primitive, const Place& place) {
    const auto position = Member(*Member(primitive, "attributes"), "POSITION")->get<std::size_t>();
    const int texCoords = m_withTexCoords ? TexCoordsOf(m_document, primitive, place) : -1;
    const std::int32_t base = VertexBase(position);
    const std::int32_t texBase = m_withTexCoords ? TexCoordBase(texCoords) : 0;
    const PrimitiveMode mode = ModeOf(primitive, place);
    const std::size_t vertices = m_document.Accessor(position).count;
    if (mode == PrimitiveMode::kTriangles) return AddTriangles(primitive, vertices, base, texBase);
    const std::vector<std::uint32_t> corners = CornersOf(m_document, primitive, vertices);
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i + 2 < n; ++i) {
      const std::uint32_t a = mode == PrimitiveMode::kTriangleFan ? corners[0] : corners[i];
      const bool odd = mode == PrimitiveMode::kTriangleStrip && i % 2 == 1;
      const std::uint32_t b = corners[i + (odd ? 2 : 1)];
      const std::uint32_t c = corners[i + (odd ? 1 : 2)];
      // Strips are stitched together with triangles of no area.
      if (a != b && b != c && c != a) AddFace(base, texBase, a, b, c);
    }
  }

  CMesh Take() { return std::move(m_mesh); }

 private:
  std::int32_t VertexBase(std::size_t accessor) {
    const auto [at, isNew] =
        m_bases.emplace(accessor, static_cast<std::int32_t>(m_mesh.vertices.size()));
    if (isNew) {
      const AccessorView view = m_document.Accessor(accessor);
      const std::size_t first = m_mesh.vertices.size();
      m_mesh.vertices.resize(first + view.count);
      view.ReadNumbersInto(&m_mesh.vertices[first].x);
    }
    return at->second;
  }

  std::int32_t TexCoordBase(int accessor) {
    const auto [at, isNew] =
        m_texBases.emplace(accessor, static_cast<std::int32_t>(m_mesh.texCoords.size()));
    if (isNew) {
      const std::vector<double> numbers =
          m_document.Accessor(static_cast<std::size_t>(accessor)).ReadNumbers();
      for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        m_mesh.texCoords.emplace_back(numbers[i], numbers[i + 1], 0.0);
    }
    return at->second;
  }

  bool Finite(std::int32_t vertex) const {
    const Vector3<double>& v = m_mesh.vertices[static_cast<std::size_t>(vertex)];
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
  }

  /// Plain triangles, which big meshes consist of, are read to their place at once.
  void AddTriangles(const Json& primitive, std::size_t vertices, std::int32_t base,
                    std::int32_t texBase) {
    const std::size_t first = m_mesh.faces.size();
    if (const Json* indices = Member(primitive, "indices")) {
      const AccessorView view = m_document.Accessor(indices->get<std::size_t>());
      m_mesh.faces.resize(first + view.count);
      view.IndicesInto(reinterpret_cast<std::uint32_t*>(m_mesh.faces.data() + first));
    } else {
      m_mesh.faces.resize(first + vertices);
      std::iota(m_mesh.faces.begin() + static_cast<std::ptrdiff_t>(first), m_mesh.faces.end(), 0);
    }
    std::vector<std::int32_t>& faces = m_mesh.faces;
    std::size_t kept = first;
    for (std::size_t i = first; i + 2 < faces.size(); i += 3) {
      const std::int32_t face[3] = {base + faces[i], base + faces[i + 1], base + faces[i + 2]};
      if (!Finite(face[0]) || !Finite(face[1]) || !Finite(face[2])) continue;
      std::copy(face, face + 3, faces.begin() + static_cast<std::ptrdiff_t>(kept));
      kept += 3;
      AddTexFace(face, texBase - base);
    }
    faces.resize(kept);
  }

  void AddFace(std::int32_t base, std::int32_t texBase, std::uint32_t a, std::uint32_t b,
               std::uint32_t c) {
    const std::int32_t face[3] = {base + static_cast<std::int32_t>(a),
                                  base + static_cast<std::int32_t>(b),
                                  base + static_cast<std::int32_t>(c)};
    if (!Finite(face[0]) || !Finite(face[1]) || !Finite(face[2])) return;
    m_mesh.faces.insert(m_mesh.faces.end(), face, face + 3);
    AddTexFace(face, texBase - base);
  }

  void AddTexFace(const std::int32_t (&face)[3], std::int32_t shift) {
    if (!m_withTexCoords) return;
    for (const std::int32_t corner : face) m_mesh.texFaces.push_back(corner + shift);
  }

  const GltfDocument& m_document;
  bool m_withTexCoords;
  CMesh m_mesh;
  std::map<std::size_t, std::int32_t> m_bases;  ///< first vertex of an accessor's
  std::map<int, std::int32_t> m_texBases;
};

const Json& PrimitivesOf(const GltfDocument& document, int mesh) {
  const auto index = static_cast<std::size_t>(mesh);
  return ListAt(document.GetJson()["meshes"][index], "primitives", Place("meshes", index));
}

}  // namespace

MeshContent CheckMesh(const GltfDocument& document, int mesh) {
  const Place place("meshes", static_cast<std::size_t>(mesh));
  const Json& primitives = PrimitivesOf(document, mesh);
  MeshContent content;
  const bool withTriangles = HasTriangles(primitives, place);
  std::size_t vertices = 0;
  for (std::size_t i = 0; i < primitives.size(); ++i) {
    const Place here = place.In("primitives", i);
    if (!primitives[i].is_object()) here.Fail("is no object");
    const PrimitiveMode mode = ModeOf(primitives[i], here);
    if (!IsTriangles(mode) && !IsCurve(mode)) continue;
    // Single lines beside triangles are stray edges of a model, no curve that somebody drew.
    if (mode == PrimitiveMode::kLines && withTriangles) continue;
    if (!CheckPrimitive(document, primitives[i], here)) {
      content.warnings.push_back(here.Text() +
                                 ": is compressed; it stays in the file but is not seen here");
      continue;
    }
    if (i == 0) content.colour = ColourOf(document, primitives[i], here);
    const Json* position = Member(*Member(primitives[i], "attributes"), "POSITION");
    if (position == nullptr) continue;
    if (IsTriangles(mode)) {
      vertices += document.Accessor(position->get<std::size_t>()).count;
      if (vertices > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        here.Fail("makes a mesh of more than 2^31 vertices");
      TexCoordsOf(document, primitives[i], here);
      content.hasTriangles = true;
    } else if (content.curve) {
      content.warnings.push_back(here.Text() + ": a second curve in one mesh is not seen here");
    } else {
      std::string left;
      content.curve = BuildCurve(document, primitives[i], mode, left);
      if (!left.empty()) content.warnings.push_back(here.Text() + ": " + left);
    }
  }
  return content;
}

CMesh BuildTriangles(const GltfDocument& document, int mesh) {
  const Place place("meshes", static_cast<std::size_t>(mesh));
  const Json& primitives = PrimitivesOf(document, mesh);
  std::vector<std::size_t> used;
  bool withTexCoords = true;
  for (std::size_t i = 0; i < primitives.size(); ++i) {
    const Place here = place.In("primitives", i);
    if (!IsTriangles(ModeOf(primitives[i], here)) ||
        Member(*Member(primitives[i], "attributes"), "POSITION") == nullptr ||
        !IsReadable(document, primitives[i]))
      continue;
    used.push_back(i);
    withTexCoords = withTexCoords && TexCoordsOf(document, primitives[i], here) >= 0;
  }
  TriangleBuilder builder(document, withTexCoords);
  for (const std::size_t i : used) builder.Add(primitives[i], place.In("primitives", i));
  return builder.Take();
}

}  // namespace orv::rws::adaptor::headless

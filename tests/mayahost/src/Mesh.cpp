// Function sets of meshes.
#include <maya/MFnMesh.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <cmath>

#include "Fn.h"
#include "State.h"

using namespace mayahost;

namespace mayahost {
std::vector<std::pair<int, int>> EdgesOf(const Shape& s) {
  std::vector<std::pair<int, int>> edges;
  std::set<std::pair<int, int>> seen;
  const int* at = s.connects.data();
  for (const int count : s.counts) {
    for (int i = 0; i < count; ++i)
      if (const std::pair<int, int> edge(at[i], at[(i + 1) % count]); seen.insert(std::minmax({edge.first, edge.second})).second) edges.push_back(edge);
    at += count;
  }
  return edges;
}
ShapePtr GeometryOf(const MObject& object) {
  if (const auto data = As<Data>(object)) return data->shape;
  const NodePtr node = NodeOf(object);
  return node ? ShapeOf(*node) : nullptr;
}
}  // namespace mayahost

namespace {
ShapePtr Geometry(const MObject& object) { return GeometryOf(object); }
ShapePtr Asked(const MObject& object, MStatus* status) {
  const ShapePtr shape = Geometry(object);
  return Ok(status, shape != nullptr), shape;
}
void Put(const MObject& object, const ShapePtr& shape) {
  if (const auto data = As<Data>(object)) data->shape = shape;
  const NodePtr node = NodeOf(object);
  if (!node) return;
  Do([=] { node->shape = shape; }, [=, before = node->shape] { node->shape = before; });
  Dirty(NumberOf(node, "outMesh"));
}
MPoint PointOf(const Shape& s, int i) {
  const auto at = 3 * static_cast<std::size_t>(i);
  MPoint p(s.points[at], s.points[at + 1], s.points[at + 2]);
  if (Pretends(Wrong::kMeshPoints)) p.x += 1;
  return p;
}
std::size_t FirstOf(const Shape& s, int polygon) {
  std::size_t at = 0;
  for (int i = 0; i < polygon; ++i) at += static_cast<std::size_t>(s.counts[static_cast<std::size_t>(i)]);
  return at;
}
template <class F>
void EachTriangle(const Shape& s, F f) {
  std::size_t at = 0;
  for (std::size_t polygon = 0; polygon < s.counts.size(); ++polygon) {
    for (int i = 2; i < s.counts[polygon]; ++i)
      f(static_cast<int>(polygon), i - 2, s.connects[at], s.connects[at + static_cast<std::size_t>(i) - 1], s.connects[at + static_cast<std::size_t>(i)]);
    at += static_cast<std::size_t>(s.counts[polygon]);
  }
}
template <class Points>
ShapePtr Made(int numVertices, int numPolygons, const Points& points, const MIntArray& counts, const MIntArray& connects) {
  const auto shape = std::make_shared<Shape>();
  long sum = 0;
  for (const int c : counts) sum += c;
  if (numVertices < 0 || points.length() < static_cast<unsigned>(numVertices) || counts.length() != static_cast<unsigned>(numPolygons) ||
      sum != long(connects.length()))
    return nullptr;
  if (std::any_of(connects.begin(), connects.end(), [&](int v) { return v < 0 || v >= numVertices; })) return nullptr;
  for (int i = 0; i < numVertices; ++i)
    for (const double v : {double(points[unsigned(i)].x), double(points[unsigned(i)].y), double(points[unsigned(i)].z)})
      shape->points.push_back(static_cast<float>(v));
  shape->counts.assign(counts.begin(), counts.end()), shape->connects.assign(connects.begin(), connects.end());
  return shape;
}
/// A ray against a triangle: how far in lengths of the direction, and where.
bool Hit(const MPoint& from, const MVector& way, const MPoint& a, const MPoint& b, const MPoint& c, double tolerance, double& t, double& u, double& v) {
  const MVector e1 = b - a, e2 = c - a, p = way ^ e2;
  const double det = e1 * p;
  if (std::fabs(det) < 1e-300) return false;
  const MVector s = from - a, q = s ^ e1;
  u = (s * p) / det, v = (way * q) / det, t = (e2 * q) / det;
  return u >= -tolerance && v >= -tolerance && u + v <= 1 + tolerance;
}
}  // namespace

OPENMAYA_MAJOR_NAMESPACE_OPEN
FN_DAG(MFnMesh, MFn::kMesh)

namespace {
MObject Owned(const char* type, const ShapePtr& shape, const MObject& owner, MObject& own, MStatus* status) {
  const bool can = shape && (owner.isNull() || owner.hasFn(MFn::kTransform) || owner.hasFn(MFn::kData));
  Ok(status, can);
  if (!can) return {};
  if (const auto data = As<Data>(owner)) return data->shape = shape, own = owner;
  const NodePtr made = CreateDag(FindType(type), owner.isNull() ? "" : Short(NodeOf(owner)->name) + "Shape", owner);
  const NodePtr node = made->info->IsA("shape") ? made : made->children[0];
  node->shape = shape;
  own = Obj(node);
  return Obj(made);
}
}  // namespace
MObject MFnMesh::create(int nv, int np, const MPointArray& points, const MIntArray& counts, const MIntArray& connects, MObject owner, MStatus* status) {
  return Owned("mesh", Made(nv, np, points, counts, connects), owner, fObject, status);
}
MObject MFnMesh::create(int nv, int np, const MFloatPointArray& points, const MIntArray& counts, const MIntArray& connects, MObject owner, MStatus* status) {
  return Owned("mesh", Made(nv, np, points, counts, connects), owner, fObject, status);
}
namespace {
template <class Points>
ShapePtr Textured(int nv, int np, const Points& points, const MIntArray& counts, const MIntArray& connects, const MFloatArray& u, const MFloatArray& v) {
  const ShapePtr plain = u.length() == v.length() ? Made(nv, np, points, counts, connects) : nullptr;
  if (!plain) return nullptr;
  const auto made = std::make_shared<Shape>(*plain);
  return made->u.assign(u.begin(), u.end()), made->v.assign(v.begin(), v.end()), made;
}
}  // namespace
MObject MFnMesh::create(int nv, int np, const MPointArray& points, const MIntArray& counts, const MIntArray& connects, const MFloatArray& u,
                        const MFloatArray& v, MObject owner, MStatus* status) {
  return Owned("mesh", Textured(nv, np, points, counts, connects, u, v), owner, fObject, status);
}
MObject MFnMesh::create(int nv, int np, const MFloatPointArray& points, const MIntArray& counts, const MIntArray& connects, const MFloatArray& u,
                        const MFloatArray& v, MObject owner, MStatus* status) {
  return Owned("mesh", Textured(nv, np, points, counts, connects, u, v), owner, fObject, status);
}
MObject MFnMesh::copy(const MObject& source, MObject owner, MStatus* status) { return Owned("mesh", Geometry(source), owner, fObject, status); }
MStatus MFnMesh::createInPlace(int nv, int np, const MPointArray& points, const MIntArray& counts, const MIntArray& connects) {
  const ShapePtr shape = Made(nv, np, points, counts, connects);
  if (!shape || fObject.isNull()) return MS::kFailure;
  return Put(fObject, shape), MS::kSuccess;
}
int MFnMesh::numVertices(MStatus* status) const { return Asked(fObject, status) ? static_cast<int>(Geometry(fObject)->points.size() / 3) : 0; }
int MFnMesh::numPolygons(MStatus* status) const { return Asked(fObject, status) ? static_cast<int>(Geometry(fObject)->counts.size()) : 0; }
int MFnMesh::numEdges(MStatus* status) const { return Asked(fObject, status) ? static_cast<int>(EdgesOf(*Geometry(fObject)).size()) : 0; }
int MFnMesh::numFaceVertices(MStatus* status) const { return Asked(fObject, status) ? static_cast<int>(Geometry(fObject)->connects.size()) : 0; }
// All edges are soft: a point has one normal.
int MFnMesh::numNormals(MStatus* status) const { return numVertices(status); }
MStatus MFnMesh::getEdgeVertices(int i, int2& vertices) const {
  const auto edges = Geometry(fObject) ? EdgesOf(*Geometry(fObject)) : std::vector<std::pair<int, int>>();
  if (i < 0 || std::size_t(i) >= edges.size()) return MS::kInvalidParameter;
  return vertices[0] = edges[std::size_t(i)].first, vertices[1] = edges[std::size_t(i)].second, MS::kSuccess;
}
bool MFnMesh::isEdgeSmooth(int i, MStatus* status) const {
  int2 vertices;
  const MStatus s = getEdgeVertices(i, vertices);
  return status ? void(*status = s) : void(), s == MS::kSuccess;
}
namespace {
/// The geometry, if the set of texture coordinates that is asked for is the one there is.
ShapePtr WithUVs(const MObject& object, const MString* set) { return set && set->length() && *set != "map1" ? nullptr : Geometry(object); }
}  // namespace
int MFnMesh::numUVs(MStatus* status) const { return Asked(fObject, status) ? static_cast<int>(Geometry(fObject)->u.size()) : 0; }
int MFnMesh::numUVs(const MString& set, MStatus* status) const {
  const ShapePtr s = WithUVs(fObject, &set);
  return Ok(status, s != nullptr), s ? static_cast<int>(s->u.size()) : 0;
}
int MFnMesh::numUVSets(MStatus* status) const { return Asked(fObject, status) ? 1 : 0; }
int MFnMesh::numColorSets(MStatus* status) const { return Asked(fObject, status), 0; }
MStatus MFnMesh::getUVSetNames(MStringArray& names) const { return names = {"map1"}, St(Geometry(fObject) != nullptr); }
MString MFnMesh::currentUVSetName(MStatus* status, int) const { return Asked(fObject, status) ? "map1" : ""; }
MStatus MFnMesh::getUVs(MFloatArray& u, MFloatArray& v, const MString* set) const {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s) return MS::kFailure;
  return u = MFloatArray(s->u.data(), unsigned(s->u.size())), v = MFloatArray(s->v.data(), unsigned(s->v.size())), MS::kSuccess;
}
MStatus MFnMesh::setUVs(const MFloatArray& u, const MFloatArray& v, const MString* set) {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s || u.length() != v.length()) return MS::kFailure;
  const auto made = std::make_shared<Shape>(*s);
  made->u.assign(u.begin(), u.end()), made->v.assign(v.begin(), v.end());
  return Put(fObject, made), MS::kSuccess;
}
MStatus MFnMesh::getUV(int i, float& u, float& v, const MString* set) const {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s || i < 0 || std::size_t(i) >= s->u.size()) return MS::kInvalidParameter;
  return u = s->u[std::size_t(i)], v = s->v[std::size_t(i)], MS::kSuccess;
}
MStatus MFnMesh::assignUVs(const MIntArray& counts, const MIntArray& ids, const MString* set) {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s || counts.length() != s->counts.size()) return MS::kFailure;
  const auto made = std::make_shared<Shape>(*s);
  made->uvs.clear();
  unsigned at = 0;
  for (unsigned face = 0; face < counts.length(); ++face) {
    if (counts[face] != 0 && counts[face] != s->counts[face]) return MS::kFailure;
    for (int k = 0; k < s->counts[face]; ++k) {
      if (counts[face] && (at >= ids.length() || ids[at] < 0 || std::size_t(ids[at]) >= s->u.size())) return MS::kFailure;
      made->uvs.push_back(counts[face] ? ids[at++] : -1);
    }
  }
  return Put(fObject, made), MS::kSuccess;
}
MStatus MFnMesh::getAssignedUVs(MIntArray& counts, MIntArray& ids, const MString* set) const {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s) return MS::kFailure;
  counts.clear(), ids.clear();
  std::size_t at = 0;
  for (const int count : s->counts) {
    const bool has = at < s->uvs.size() && s->uvs[at] >= 0;
    counts.append(has ? count : 0);
    for (int k = 0; k < count; ++k, ++at)
      if (has) ids.append(s->uvs[at]);
  }
  return MS::kSuccess;
}
MStatus MFnMesh::getPolygonUVid(int polygon, int vertex, int& id, const MString* set) const {
  const ShapePtr s = WithUVs(fObject, set);
  if (!s || vertex < 0 || vertex >= polygonVertexCount(polygon)) return MS::kInvalidParameter;
  const std::size_t at = FirstOf(*s, polygon) + std::size_t(vertex);
  return at < s->uvs.size() && s->uvs[at] >= 0 ? (id = s->uvs[at], MS::kSuccess) : MS::kFailure;
}
MStatus MFnMesh::getPolygonUV(int polygon, int vertex, float& u, float& v, const MString* set) const {
  int id = -1;
  const MStatus status = getPolygonUVid(polygon, vertex, id, set);
  return status == MS::kSuccess ? getUV(id, u, v, set) : status;
}
MStatus MFnMesh::getPolygonTriangleVertices(int polygon, int triangle, int vertices[3]) const {
  MIntArray all;
  if (getPolygonVertices(polygon, all) != MS::kSuccess || triangle < 0 || triangle + 2 >= int(all.length())) return MS::kInvalidParameter;
  return vertices[0] = all[0], vertices[1] = all[unsigned(triangle) + 1], vertices[2] = all[unsigned(triangle) + 2], MS::kSuccess;
}
int MFnMesh::polygonVertexCount(int i, MStatus* status) const {
  const bool has = i >= 0 && i < numPolygons();
  return Ok(status, has), has ? Geometry(fObject)->counts[static_cast<std::size_t>(i)] : 0;
}
MStatus MFnMesh::getPolygonVertices(int i, MIntArray& vertices) const {
  if (i < 0 || i >= numPolygons()) return MS::kInvalidParameter;
  const ShapePtr s = Geometry(fObject);
  return vertices = MIntArray(s->connects.data() + FirstOf(*s, i), static_cast<unsigned>(s->counts[static_cast<std::size_t>(i)])), MS::kSuccess;
}
MStatus MFnMesh::getVertices(MIntArray& counts, MIntArray& vertices) const {
  const ShapePtr s = Geometry(fObject);
  if (!s) return MS::kFailure;
  counts = MIntArray(s->counts.data(), static_cast<unsigned>(s->counts.size()));
  return vertices = MIntArray(s->connects.data(), static_cast<unsigned>(s->connects.size())), MS::kSuccess;
}
MStatus MFnMesh::getTriangles(MIntArray& counts, MIntArray& vertices) const {
  const ShapePtr s = Geometry(fObject);
  if (!s) return MS::kFailure;
  counts.clear(), vertices.clear();
  for (const int c : s->counts) counts.append(c - 2);
  EachTriangle(*s, [&](int, int, int a, int b, int c) { vertices.append(a), vertices.append(b), vertices.append(c); });
  return MS::kSuccess;
}
MStatus MFnMesh::getPoint(int i, MPoint& point, MSpace::Space space) const {
  MMatrix m;
  if (i < 0 || i >= numVertices() || !ToSpace(fPath, space, m)) return MS::kInvalidParameter;
  return point = PointOf(*Geometry(fObject), i) * m, MS::kSuccess;
}
MStatus MFnMesh::getPoints(MPointArray& points, MSpace::Space space) const {
  MMatrix m;
  if (!Geometry(fObject) || !ToSpace(fPath, space, m)) return MS::kFailure;
  points.clear();
  for (int i = 0; i < numVertices(); ++i) points.append(PointOf(*Geometry(fObject), i) * m);
  return MS::kSuccess;
}
MStatus MFnMesh::getPoints(MFloatPointArray& points, MSpace::Space space) const {
  MPointArray all;
  const MStatus status = getPoints(all, space);
  points.clear();
  for (const MPoint& p : all) points.append(MFloatPoint(p));
  return status;
}
MStatus MFnMesh::setPoints(const MPointArray& points, MSpace::Space space) {
  MMatrix m;
  if (!Geometry(fObject) || int(points.length()) != numVertices() || !ToSpace(fPath, space, m)) return MS::kFailure;
  const auto shape = std::make_shared<Shape>(*Geometry(fObject));
  shape->points.clear();
  m = m.inverse();
  for (const MPoint& p : points)
    for (unsigned c = 0; c < 3; ++c) shape->points.push_back(static_cast<float>((p * m)[c]));
  return Put(fObject, shape), MS::kSuccess;
}
const float* MFnMesh::getRawPoints(MStatus* status) const { return Asked(fObject, status) ? Geometry(fObject)->points.data() : NULL; }
MStatus MFnMesh::getPolygonNormal(int polygon, MVector& normal, MSpace::Space space) const {
  MIntArray v;
  MMatrix m;
  if (getPolygonVertices(polygon, v) != MS::kSuccess || !ToSpace(fPath, space, m)) return MS::kInvalidParameter;
  MVector sum;
  const MPoint first = PointOf(*Geometry(fObject), v[0]) * m;
  for (unsigned i = 2; i < v.length(); ++i) sum += (PointOf(*Geometry(fObject), v[i - 1]) * m - first) ^ (PointOf(*Geometry(fObject), v[i]) * m - first);
  return normal = MFloatVector(sum.normal()), MS::kSuccess;
}
MStatus MFnMesh::getVertexNormals(bool angleWeighted, MFloatVectorArray& normals, MSpace::Space space) const {
  MMatrix m;
  const ShapePtr s = Geometry(fObject);
  if (!s || !ToSpace(fPath, space, m)) return MS::kFailure;
  std::vector<MVector> sums(s->points.size() / 3);
  EachTriangle(*s, [&](int, int, int a, int b, int c) {
    const MPoint p[3] = {PointOf(*s, a) * m, PointOf(*s, b) * m, PointOf(*s, c) * m};
    const MVector n = ((p[1] - p[0]) ^ (p[2] - p[0])).normal();
    const int v[3] = {a, b, c};
    for (int i = 0; i < 3; ++i) sums[std::size_t(v[i])] += n * (angleWeighted ? (p[(i + 1) % 3] - p[i]).angle(p[(i + 2) % 3] - p[i]) : 1);
  });
  normals.clear();
  for (const MVector& sum : sums) normals.append(MFloatVector(sum.normal()));
  return MS::kSuccess;
}
MStatus MFnMesh::setPoints(const MFloatPointArray& points, MSpace::Space space) {
  MPointArray all;
  for (const MFloatPoint& p : points) all.append(MPoint(p));
  return setPoints(all, space);
}
MStatus MFnMesh::setPoint(int i, const MPoint& point, MSpace::Space space) {
  MPointArray all;
  const MStatus status = getPoints(all, space);
  return status != MS::kSuccess || i < 0               ? MStatus(MS::kInvalidParameter)
         : all.set(point, unsigned(i)) == MS::kSuccess ? setPoints(all, space)
                                                       : MS::kInvalidParameter;
}
MStatus MFnMesh::getNormals(MFloatVectorArray& normals, MSpace::Space space) const { return getVertexNormals(true, normals, space); }
MStatus MFnMesh::getNormalIds(MIntArray& counts, MIntArray& ids) const { return getVertices(counts, ids); }
MStatus MFnMesh::getVertexNormal(int i, bool angleWeighted, MVector& normal, MSpace::Space space) const {
  MFloatVectorArray all;
  if (getVertexNormals(angleWeighted, all, space) != MS::kSuccess || i < 0 || unsigned(i) >= all.length()) return MS::kInvalidParameter;
  return normal = all[unsigned(i)], MS::kSuccess;
}
MStatus MFnMesh::getFaceVertexNormal(int polygon, int vertex, MVector& normal, MSpace::Space space) const {
  MIntArray corners;
  if (getPolygonVertices(polygon, corners) != MS::kSuccess || corners.indexOf(vertex) < 0) return MS::kInvalidParameter;
  return getVertexNormal(vertex, true, normal, space);
}
MStatus MFnMesh::getFaceVertexNormals(int polygon, MFloatVectorArray& normals, MSpace::Space space) const {
  MIntArray corners;
  MFloatVectorArray all;
  normals.clear();
  if (getPolygonVertices(polygon, corners) != MS::kSuccess || getNormals(all, space) != MS::kSuccess) return MS::kInvalidParameter;
  for (const int corner : corners) normals.append(all[unsigned(corner)]);
  return MS::kSuccess;
}
namespace {
MPoint NearestOn(const MPoint& p, const MPoint& a, const MPoint& b, const MPoint& c) {
  const MVector ab = b - a, ac = c - a, n = ab ^ ac;
  const auto on = [&](const MPoint& from, const MPoint& to) {
    const MVector way = to - from;
    return from + way * std::clamp((p - from) * way / std::max(way * way, 1e-300), 0.0, 1.0);
  };
  const MPoint flat = p - n * ((p - a) * n / std::max(n * n, 1e-300));
  if (((b - a) ^ (flat - a)) * n >= 0 && ((c - b) ^ (flat - b)) * n >= 0 && ((a - c) ^ (flat - c)) * n >= 0 && n * n > 0) return flat;
  MPoint best = on(a, b);
  for (const MPoint& other : {on(b, c), on(c, a)})
    if (other.distanceTo(p) < best.distanceTo(p)) best = other;
  return best;
}
}  // namespace
MStatus MFnMesh::getClosestPoint(const MPoint& to, MPoint& closest, MSpace::Space space, int* polygon, MMeshIsectAccelParams*) const {
  MMatrix m;
  const ShapePtr s = Geometry(fObject);
  if (!s || s->counts.empty() || !ToSpace(fPath, space, m)) return MS::kFailure;
  double best = -1;
  EachTriangle(*s, [&](int face, int, int a, int b, int c) {
    const MPoint p = NearestOn(to, PointOf(*s, a) * m, PointOf(*s, b) * m, PointOf(*s, c) * m);
    if (best >= 0 && p.distanceTo(to) >= best) return;
    best = p.distanceTo(to), closest = p;
    if (polygon) *polygon = face;
  });
  return St(best >= 0);
}
MStatus MFnMesh::getClosestPointAndNormal(const MPoint& to, MPoint& closest, MVector& normal, MSpace::Space space, int* polygon,
                                          MMeshIsectAccelParams* params) const {
  int face = 0;
  MStatus status = getClosestPoint(to, closest, space, &face, params);
  if (status == MS::kSuccess) status = getPolygonNormal(face, normal, space);
  if (polygon) *polygon = face;
  return status;
}
MStatus MFnMesh::getClosestNormal(const MPoint& to, MVector& normal, MSpace::Space space, int* polygon, MMeshIsectAccelParams* params) const {
  MPoint closest;
  return getClosestPointAndNormal(to, closest, normal, space, polygon, params);
}
MStatus MFnMesh::getConnectedShaders(unsigned int, MObjectArray& shaders, MIntArray& indices) const {
  const NodePtr node = NodeOf(fObject);
  if (!node) return MS::kFailure;
  shaders.clear(), indices.clear();
  const NodePtr group = ShadingOf(*node);
  if (group) shaders.append(Obj(group));
  for (int i = 0; i < numPolygons(); ++i) indices.append(group ? 0 : -1);
  return MS::kSuccess;
}
MStatus MFnMesh::syncObject() { return St(!fObject.isNull()); }
MStatus MFnMesh::updateSurface() { return St(!fObject.isNull()); }
bool MFnMesh::closestIntersection(const MFloatPoint& source, const MFloatVector& way, const MIntArray* faces, const MIntArray*, bool, MSpace::Space space,
                                  float most, bool both, MMeshIsectAccelParams*, MFloatPoint& hit, float* param, int* face, int* triangle, float* bary1,
                                  float* bary2, float tolerance, MStatus* status) const {
  MMatrix m;
  const ShapePtr s = Geometry(fObject);
  Ok(status, s && ToSpace(fPath, space, m));
  if (!s || !ToSpace(fPath, space, m)) return false;
  double best = most;
  bool found = false;
  const MVector direction(way);
  EachTriangle(*s, [&](int polygon, int n, int a, int b, int c) {
    double t, u, v;
    if (faces && std::find(faces->begin(), faces->end(), polygon) == faces->end()) return;
    if (!Hit(source, direction, PointOf(*s, a) * m, PointOf(*s, b) * m, PointOf(*s, c) * m, tolerance, t, u, v)) return;
    if (std::fabs(t) > best || (t < 0 && !both)) return;
    best = std::fabs(t), found = true;
    hit = MFloatPoint(MPoint(source) + direction * t);
    if (param) *param = static_cast<float>(t);
    if (face) *face = polygon;
    if (triangle) *triangle = n;
    if (bary1) *bary1 = static_cast<float>(1 - u - v);
    if (bary2) *bary2 = static_cast<float>(u);
  });
  return found;
}
bool MFnMesh::intersect(const MPoint& source, const MVector& direction, MPointArray& points, double tolerance, MSpace::Space space, MIntArray* polygons,
                        MStatus* status) const {
  MMatrix m;
  const ShapePtr s = Geometry(fObject);
  const bool can = s && ToSpace(fPath, space, m);
  Ok(status, can);
  points.clear();
  if (polygons) polygons->clear();
  if (!can) return false;
  std::vector<std::pair<double, int>> hits;
  EachTriangle(*s, [&](int polygon, int, int a, int b, int c) {
    double t, u, v;
    if (Hit(source, direction, PointOf(*s, a) * m, PointOf(*s, b) * m, PointOf(*s, c) * m, tolerance, t, u, v) && t >= 0) hits.emplace_back(t, polygon);
  });
  std::sort(hits.begin(), hits.end());
  for (const auto& [t, polygon] : hits) {
    points.append(source + direction * t);
    if (polygons) polygons->append(polygon);
  }
  return !hits.empty();
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE

// Iterators over meshes and along connections.
#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshFaceVertex.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>

#include <algorithm>
#include <deque>

#include "Fn.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MItMeshPolygon::MItMeshPolygon(const MObject& mesh, MStatus* status) : fMesh(mesh, status) {}
MItMeshPolygon::MItMeshPolygon(const MDagPath& path, const MObject& component, MStatus* status) : fMesh(path, status), fOf(component) {}
bool MItMeshPolygon::isDone(MStatus* status) const { return Ok(status), fAt >= fMesh.numPolygons(); }
MStatus MItMeshPolygon::next() { return fAt = fOf.Next(fAt), MS::kSuccess; }
unsigned int MItMeshPolygon::count(MStatus* status) const { return fOf.Count(static_cast<unsigned>(fMesh.numPolygons(status))); }
unsigned int MItMeshPolygon::index(MStatus* status) const { return Ok(status, !isDone()), static_cast<unsigned>(fAt); }
MStatus MItMeshPolygon::setIndex(int i, int& previous) { return previous = fAt, fAt = i, St(!isDone()); }
unsigned int MItMeshPolygon::polygonVertexCount(MStatus* status) const { return static_cast<unsigned>(fMesh.polygonVertexCount(fAt, status)); }
int MItMeshPolygon::vertexIndex(int i, MStatus* status) const {
  MIntArray v;
  getVertices(v);
  const bool has = i >= 0 && i < int(v.length());
  return Ok(status, has), has ? v[unsigned(i)] : -1;
}
MStatus MItMeshPolygon::getVertices(MIntArray& v) const { return fMesh.getPolygonVertices(fAt, v); }
MPoint MItMeshPolygon::point(int i, MSpace::Space space, MStatus* status) const {
  MPoint p;
  const MStatus s = fMesh.getPoint(vertexIndex(i), p, space);
  return status ? void(*status = s) : void(), p;
}
void MItMeshPolygon::getPoints(MPointArray& points, MSpace::Space space, MStatus* status) const {
  points.clear();
  for (unsigned i = 0; i < polygonVertexCount(status); ++i) points.append(point(int(i), space));
}
MPoint MItMeshPolygon::center(MSpace::Space space, MStatus* status) const {
  MPointArray all;
  getPoints(all, space, status);
  MVector sum;
  for (const MPoint& p : all) sum += MVector(p);
  return sum / std::max(1u, all.length());
}
MStatus MItMeshPolygon::getNormal(MVector& normal, MSpace::Space space) const { return fMesh.getPolygonNormal(fAt, normal, space); }
MStatus MItMeshPolygon::numTriangles(int& count) const { return count = int(polygonVertexCount()) - 2, St(!isDone()); }
bool MItMeshPolygon::hasValidTriangulation(MStatus* status) const { return Ok(status), polygonVertexCount() > 2; }
MStatus MItMeshPolygon::getTriangles(MPointArray& points, MIntArray& vertices, MSpace::Space space) const {
  points.clear(), vertices.clear();
  for (int t = 0; t + 2 < int(polygonVertexCount()); ++t)
    for (const int i : {0, t + 1, t + 2}) points.append(point(i, space)), vertices.append(vertexIndex(i));
  return St(!isDone());
}

MStatus MItMeshPolygon::getNormal(unsigned int i, MVector& normal, MSpace::Space space) const {
  return fMesh.getFaceVertexNormal(fAt, vertexIndex(int(i)), normal, space);
}
MStatus MItMeshPolygon::getNormals(MVectorArray& normals, MSpace::Space space) const {
  MFloatVectorArray all;
  const MStatus s = fMesh.getFaceVertexNormals(fAt, all, space);
  normals.clear();
  for (const MFloatVector& n : all) normals.append(MVector(n));
  return s;
}
namespace {
/// Edges between neighbouring corners of a face.
MIntArray EdgesAround(const MObject& mesh, const MIntArray& corners) {
  MIntArray found;
  const auto edges = EdgesOf(*GeometryOf(mesh));
  for (unsigned k = 0; k < corners.length(); ++k) {
    const int a = corners[k], b = corners[(k + 1) % corners.length()];
    for (std::size_t i = 0; i < edges.size(); ++i)
      if (edges[i] == std::pair(a, b) || edges[i] == std::pair(b, a)) found.append(int(i));
  }
  return found;
}
/// Faces that have both points next to each other.
MIntArray FacesAt(const MFnMesh& mesh, int a, int b) {
  MIntArray faces, v;
  for (int face = 0; face < mesh.numPolygons(); ++face) {
    mesh.getPolygonVertices(face, v);
    for (unsigned k = 0; k < v.length(); ++k) {
      const int c = v[k], e = v[(k + 1) % v.length()];
      if ((c == a && e == b) || (c == b && e == a)) faces.append(face);
    }
  }
  return faces;
}
}  // namespace
MStatus MItMeshPolygon::getEdges(MIntArray& edges) const {
  MIntArray v;
  const MStatus s = getVertices(v);
  return s == MS::kSuccess ? (edges = EdgesAround(fMesh.object(), v), s) : s;
}
MStatus MItMeshPolygon::getConnectedFaces(MIntArray& faces) const {
  MIntArray v;
  const MStatus s = getVertices(v);
  faces.clear();
  for (unsigned k = 0; k < v.length(); ++k)
    for (const int face : FacesAt(fMesh, v[k], v[(k + 1) % v.length()]))
      if (face != fAt && faces.indexOf(face) < 0) faces.append(face);
  return s;
}
bool MItMeshPolygon::onBoundary(MStatus* status) const {
  MIntArray v;
  const MStatus s = getVertices(v);
  if (status) *status = s;
  for (unsigned k = 0; k < v.length(); ++k)
    if (FacesAt(fMesh, v[k], v[(k + 1) % v.length()]).length() < 2) return true;
  return false;
}
bool MItMeshPolygon::hasUVs(MStatus* status) const {
  int id;
  return Ok(status, !isDone()), fMesh.getPolygonUVid(fAt, 0, id) == MS::kSuccess;
}
MStatus MItMeshPolygon::getUV(int vertex, float2& uv, const MString* set) const { return fMesh.getPolygonUV(fAt, vertex, uv[0], uv[1], set); }
MStatus MItMeshPolygon::getUVs(MFloatArray& u, MFloatArray& v, const MString* set) const {
  u.clear(), v.clear();
  float2 uv = {0, 0};
  for (unsigned i = 0; i < polygonVertexCount(); ++i) {
    if (const MStatus s = getUV(int(i), uv, set); s != MS::kSuccess) return s;
    u.append(uv[0]), v.append(uv[1]);
  }
  return St(!isDone());
}
MStatus MItMeshPolygon::getUVIndex(int vertex, int& index, const MString* set) const { return fMesh.getPolygonUVid(fAt, vertex, index, set); }
MStatus MItMeshPolygon::getArea(double& area, MSpace::Space space) const {
  MPointArray p;
  MStatus s;
  getPoints(p, space, &s);
  MVector sum;
  for (unsigned i = 2; i < p.length(); ++i) sum += (p[i - 1] - p[0]) ^ (p[i] - p[0]);
  return area = sum.length() / 2, s;
}
MStatus MItMeshPolygon::getTriangle(int t, MPointArray& points, MIntArray& vertices, MSpace::Space space) const {
  points.clear(), vertices.clear();
  if (t < 0 || t + 2 >= int(polygonVertexCount())) return MS::kInvalidParameter;
  for (const int i : {0, t + 1, t + 2}) points.append(point(i, space)), vertices.append(vertexIndex(i));
  return MS::kSuccess;
}
MItMeshEdge::MItMeshEdge(const MObject& mesh, MStatus* status) : fMesh(mesh, status) {}
MItMeshEdge::MItMeshEdge(const MDagPath& path, const MObject& component, MStatus* status) : fMesh(path, status), fOf(component) {}
bool MItMeshEdge::isDone(MStatus* status) const { return Ok(status), fAt >= fMesh.numEdges(); }
unsigned int MItMeshEdge::count(MStatus* status) const { return fOf.Count(static_cast<unsigned>(fMesh.numEdges(status))); }
int MItMeshEdge::index(MStatus* status) const { return Ok(status, !isDone()), fAt; }
int MItMeshEdge::index(int i, MStatus* status) const {
  int2 ends = {-1, -1};
  const MStatus s = fMesh.getEdgeVertices(fAt, ends);
  return status ? void(*status = s) : void(), ends[i != 0];
}
MStatus MItMeshEdge::setIndex(int i, int& previous) { return previous = fAt, fAt = i, St(!isDone()); }
MPoint MItMeshEdge::point(int i, MSpace::Space space, MStatus* status) const {
  MPoint p;
  const MStatus s = fMesh.getPoint(index(i), p, space);
  return status ? void(*status = s) : void(), p;
}
MPoint MItMeshEdge::center(MSpace::Space space, MStatus* status) const {
  const MPoint a = point(0, space, status);
  return a + (point(1, space) - a) * 0.5;
}
MStatus MItMeshEdge::getLength(double& length, MSpace::Space space) const {
  MStatus s;
  return length = point(0, space, &s).distanceTo(point(1, space)), s;
}
bool MItMeshEdge::isSmooth(MStatus* status) const { return fMesh.isEdgeSmooth(fAt, status); }
bool MItMeshEdge::onBoundary(MStatus* status) const {
  MIntArray faces;
  return getConnectedFaces(faces, status) < 2;
}
int MItMeshEdge::getConnectedFaces(MIntArray& faces, MStatus* status) const {
  faces = FacesAt(fMesh, index(0, status), index(1));
  return static_cast<int>(faces.length());
}
MStatus MItMeshEdge::numConnectedFaces(int& count) const {
  MIntArray faces;
  return count = getConnectedFaces(faces), St(!isDone());
}
MStatus MItMeshFaceVertex::next() {
  if (++fCorner >= int(fFace.polygonVertexCount())) fCorner = 0, fFace.next();
  return MS::kSuccess;
}
int MItMeshFaceVertex::faceVertId(MStatus* status) const { return Ok(status, !isDone()), fCorner; }

MStatus MItMeshVertex::getConnectedEdges(MIntArray& found) const {
  found.clear();
  const ShapePtr s = GeometryOf(fMesh.object());
  const auto edges = s ? EdgesOf(*s) : std::vector<std::pair<int, int>>();
  for (std::size_t i = 0; i < edges.size(); ++i)
    if (edges[i].first == fAt || edges[i].second == fAt) found.append(int(i));
  return St(!isDone());
}
MStatus MItMeshVertex::numConnectedEdges(int& count) const {
  MIntArray edges;
  const MStatus s = getConnectedEdges(edges);
  return count = int(edges.length()), s;
}
bool MItMeshVertex::onBoundary(MStatus* status) const {
  int faces = 0, edges = 0;
  const MStatus s = numConnectedFaces(faces);
  if (status) *status = s;
  return numConnectedEdges(edges), edges > faces;
}
MStatus MItMeshVertex::translateBy(const MVector& v, MSpace::Space space) { return setPosition(position(space) + v, space); }
MItMeshVertex::MItMeshVertex(const MObject& mesh, MStatus* status) : fMesh(mesh, status) {}
MItMeshVertex::MItMeshVertex(const MDagPath& path, const MObject& component, MStatus* status) : fMesh(path, status), fOf(component) {}
bool MItMeshVertex::isDone(MStatus* status) const { return Ok(status), fAt >= fMesh.numVertices(); }
unsigned int MItMeshVertex::count(MStatus* status) const { return fOf.Count(static_cast<unsigned>(fMesh.numVertices(status))); }
int MItMeshVertex::index(MStatus* status) const { return Ok(status, !isDone()), fAt; }
MStatus MItMeshVertex::setIndex(int i, int& previous) { return previous = fAt, fAt = i, St(i >= 0 && !isDone()); }
MPoint MItMeshVertex::position(MSpace::Space space, MStatus* status) const {
  MPoint p;
  const MStatus s = fMesh.getPoint(fAt, p, space);
  return status ? void(*status = s) : void(), p;
}
MStatus MItMeshVertex::setPosition(const MPoint& point, MSpace::Space space) {
  MPointArray all;
  const MStatus status = fMesh.getPoints(all, space);
  if (status != MS::kSuccess || isDone()) return MS::kFailure;
  return all[static_cast<unsigned>(fAt)] = point, fMesh.setPoints(all, space);
}
MStatus MItMeshVertex::getNormal(MVector& normal, MSpace::Space space) const {
  MFloatVectorArray all;
  if (fMesh.getVertexNormals(false, all, space) != MS::kSuccess || isDone()) return MS::kFailure;
  return normal = all[static_cast<unsigned>(fAt)], MS::kSuccess;
}
MStatus MItMeshVertex::getConnectedFaces(MIntArray& faces) const {
  faces.clear();
  for (int i = 0; i < fMesh.numPolygons(); ++i) {
    MIntArray v;
    fMesh.getPolygonVertices(i, v);
    if (std::find(v.begin(), v.end(), fAt) != v.end()) faces.append(i);
  }
  return St(!isDone());
}
MStatus MItMeshVertex::getConnectedVertices(MIntArray& vertices) const {
  MIntArray faces;
  const MStatus status = getConnectedFaces(faces);
  std::set<int> found;
  for (const int face : faces) {
    MIntArray v;
    fMesh.getPolygonVertices(face, v);
    for (unsigned i = 0; i < v.length(); ++i)
      if (v[i] == fAt) found.insert(v[(i + 1) % v.length()]), found.insert(v[(i + v.length() - 1) % v.length()]);
  }
  vertices.clear();
  for (const int v : found) vertices.append(v);
  return status;
}
MStatus MItMeshVertex::numConnectedFaces(int& count) const {
  MIntArray faces;
  const MStatus status = getConnectedFaces(faces);
  return count = static_cast<int>(faces.length()), status;
}

MItDependencyGraph::MItDependencyGraph(MObject& root, MFn::Type filter, Direction direction, Traversal traversal, Level, MStatus* status) {
  Ok(status, NodeOf(root) != nullptr);
  if (NodeOf(root)) Walk(nullptr, root, filter, direction, traversal);
}
MItDependencyGraph::MItDependencyGraph(MPlug& root, MFn::Type filter, Direction direction, Traversal traversal, Level, MStatus* status) {
  Ok(status, !root.isNull());
  if (!root.isNull()) Walk(&root, root.node(), filter, direction, traversal);
}
void MItDependencyGraph::Walk(const MPlug* from, const MObject& root, MFn::Type filter, Direction direction, Traversal traversal) {
  std::deque<Item> open{{root, from ? *from : MPlug(), 0}};
  std::set<const void*> seen;
  for (bool first = true; !open.empty(); first = false) {
    const Item item = open.front();
    open.pop_front();
    if (!seen.insert(item.node.thing.get()).second) continue;
    const std::size_t own = fItems.size();
    fItems.push_back(item);
    fFits.push_back(filter == MFn::kInvalid || item.node.hasFn(filter));
    const NodePtr node = NodeOf(item.node);
    std::vector<Item> next;
    const auto add = [&](const PlugKey& key, const PlugRef& other) {
      if (!first || !from || PlugRef{node.get(), key.first, key.second} == from->Ref()) next.push_back({Obj(other.node->Ptr()), MPlug(other), own});
    };
    if (direction == kUpstream) {
      for (const auto& [key, source] : node->inputs) add(key, source);
    } else {
      for (const auto& [key, to] : node->outputs)
        for (const PlugRef& plug : to) add(key, plug);
    }
    open.insert(traversal == kDepthFirst ? open.begin() : open.end(), next.begin(), next.end());
  }
  if (!fFits.empty() && !fFits[0]) next();
}
MStatus MItDependencyGraph::next() {
  const auto out = [&](std::size_t i) {
    for (; i != fItems[i].from; i = fItems[i].from)
      if (fPruned.count(fItems[i].from)) return true;
    return false;
  };
  do ++fAt;
  while (fAt < fItems.size() && (!fFits[fAt] || out(fAt)));
  return MS::kSuccess;
}
MStatus MItDependencyGraph::prune() { return isDone() ? MS::kFailure : (fPruned.insert(fAt), MS::kSuccess); }
bool MItDependencyGraph::isDone(MStatus* status) const { return Ok(status), fAt >= fItems.size(); }
MObject MItDependencyGraph::currentItem(MStatus* status) const { return Ok(status, !isDone()), isDone() ? MObject() : fItems[fAt].node; }
MPlug MItDependencyGraph::thisPlug(MStatus* status) const { return Ok(status, !isDone()), isDone() ? MPlug() : fItems[fAt].plug; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

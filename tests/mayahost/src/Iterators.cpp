// Iterators over meshes and along connections.
#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>

#include <algorithm>
#include <deque>

#include "Fn.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MItMeshPolygon::MItMeshPolygon(const MObject& mesh, MStatus* status) : fMesh(mesh, status) {}
MItMeshPolygon::MItMeshPolygon(const MDagPath& path, const MObject&, MStatus* status) : fMesh(path, status) {}
bool MItMeshPolygon::isDone(MStatus* status) const { return Ok(status), fAt >= fMesh.numPolygons(); }
MStatus MItMeshPolygon::next() { return ++fAt, MS::kSuccess; }
unsigned int MItMeshPolygon::count(MStatus* status) const { return static_cast<unsigned>(fMesh.numPolygons(status)); }
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

MItMeshVertex::MItMeshVertex(const MObject& mesh, MStatus* status) : fMesh(mesh, status) {}
MItMeshVertex::MItMeshVertex(const MDagPath& path, const MObject&, MStatus* status) : fMesh(path, status) {}
bool MItMeshVertex::isDone(MStatus* status) const { return Ok(status), fAt >= fMesh.numVertices(); }
unsigned int MItMeshVertex::count(MStatus* status) const { return static_cast<unsigned>(fMesh.numVertices(status)); }
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
  std::deque<Item> open{{root, from ? *from : MPlug()}};
  std::set<const void*> seen;
  for (bool first = true; !open.empty(); first = false) {
    const Item item = open.front();
    open.pop_front();
    if (!seen.insert(item.node.thing.get()).second) continue;
    if (filter == MFn::kInvalid || item.node.hasFn(filter)) fItems.push_back(item);
    const NodePtr node = NodeOf(item.node);
    std::vector<Item> next;
    const auto add = [&](const PlugKey& key, const PlugRef& other) {
      if (!first || !from || PlugRef{node.get(), key.first, key.second} == from->Ref()) next.push_back({Obj(other.node->Ptr()), MPlug(other)});
    };
    if (direction == kUpstream) {
      for (const auto& [key, source] : node->inputs) add(key, source);
    } else {
      for (const auto& [key, to] : node->outputs)
        for (const PlugRef& plug : to) add(key, plug);
    }
    open.insert(traversal == kDepthFirst ? open.begin() : open.end(), next.begin(), next.end());
  }
}
bool MItDependencyGraph::isDone(MStatus* status) const { return Ok(status), fAt >= fItems.size(); }
MObject MItDependencyGraph::currentItem(MStatus* status) const { return Ok(status, !isDone()), isDone() ? MObject() : fItems[fAt].node; }
MPlug MItDependencyGraph::thisPlug(MStatus* status) const { return Ok(status, !isDone()), isDone() ? MPlug() : fItems[fAt].plug; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE

#include "adaptor/maya/ShapeReading.h"

#include <maya/MDoubleArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

#include <set>
#include <utility>
#include <vector>

#include "adaptor/maya/Channels.h"

namespace orv::rws::adaptor::maya {

using util::Vector3;

namespace {

/// Of a curve or a surface that is no polyline, for each of its spans.
constexpr int kStepsASpan = 32;
/// Of a surface in all, each way.
constexpr int kSurfaceSteps = 64;

/// The points of a mesh of rigs as the host keeps them.
MFloatPointArray HostPoints(const util::CMesh& mesh) {
  MFloatPointArray points;
  points.setLength(static_cast<unsigned>(mesh.vertices.size()));
  for (unsigned i = 0; i < points.length(); ++i) {
    const auto& v = mesh.vertices[i];
    points[i] =
        MFloatPoint(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
  }
  return points;
}

MIntArray HostFaces(const util::CMesh& mesh) {
  MIntArray faces;
  faces.setLength(static_cast<unsigned>(mesh.faces.size()));
  for (unsigned i = 0; i < faces.length(); ++i) faces[i] = static_cast<int>(mesh.faces[i]);
  return faces;
}

MIntArray ThreeEach(const util::CMesh& mesh) {
  return MIntArray(static_cast<unsigned>(mesh.faces.size() / 3), 3);
}

bool IsSame(const util::CMesh& mesh, const float* points, const MIntArray& triangles) {
  if (mesh.faces.size() != triangles.length()) return false;
  for (unsigned i = 0; i < triangles.length(); ++i)
    if (static_cast<int>(mesh.faces[i]) != triangles[i]) return false;
  for (const auto& v : mesh.vertices) {
    if (static_cast<float>(v.x) != points[0] || static_cast<float>(v.y) != points[1] ||
        static_cast<float>(v.z) != points[2])
      return false;
    points += 3;
  }
  return true;
}

/// Where the spans of a curve begin and end, rising.
std::vector<double> SpanKnots(const MFnNurbsCurve& curve) {
  double start = 0.0, end = 0.0;
  MDoubleArray knots;
  curve.getKnotDomain(start, end);
  curve.getKnots(knots);
  std::set<double> spans = {start, end};
  for (unsigned i = 0; i < knots.length(); ++i)
    if (knots[i] > start && knots[i] < end) spans.insert(knots[i]);
  return {spans.begin(), spans.end()};
}

Vector3<double> At(const MFnNurbsCurve& curve, double param) {
  MPoint point;
  curve.getPointAtParam(param, point);
  return {point.x, point.y, point.z};
}

}  // namespace

MDagPath FindShape(const MDagPath& transform, MFn::Type type, bool hidden) {
  unsigned count = 0;
  transform.numberOfShapesDirectlyBelow(count);
  for (unsigned i = 0; i < count; ++i) {
    MDagPath shape = transform;
    shape.extendToShapeDirectlyBelow(i);
    if (!shape.hasFn(type)) continue;
    if (hidden || !MFnDagNode(shape).isIntermediateObject()) return shape;
  }
  return {};
}

MObject GeometryOf(const MObject& shape) {
  const bool isMesh = shape.hasFn(MFn::kMesh);
  if (!FindPlug(shape, isMesh ? "inMesh" : "create").isDestination()) return shape;
  return FindPlug(shape, isMesh ? "outMesh" : "local").asMObject();
}

std::shared_ptr<const util::CMesh> ReadMesh(const MObject& geometry,
                                            const std::shared_ptr<const util::CMesh>& known) {
  const MFnMesh host(geometry);
  const int count = host.numVertices();
  if (count == 0) return known && known->vertices.empty() ? known : MakeSharedMesh({});
  MIntArray counts, triangles;
  const float* points = host.getRawPoints(nullptr);
  if (!points || !host.getTriangles(counts, triangles)) return MakeSharedMesh({});
  if (known && static_cast<int>(known->vertices.size()) == count &&
      IsSame(*known, points, triangles))
    return known;
  util::CMesh mesh;
  mesh.vertices.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i, points += 3)
    mesh.vertices.push_back({points[0], points[1], points[2]});
  mesh.faces.reserve(triangles.length());
  for (unsigned i = 0; i < triangles.length(); ++i) mesh.faces.push_back(triangles[i]);
  return MakeSharedMesh(std::move(mesh));
}

std::shared_ptr<const util::CMesh> ReadSurface(const MObject& geometry,
                                               const std::shared_ptr<const util::CMesh>& known) {
  const MFnNurbsSurface host(geometry);
  double u0 = 0.0, u1 = 0.0, v0 = 0.0, v1 = 0.0;
  if (!host.getKnotDomain(u0, u1, v0, v1)) return MakeSharedMesh({});
  util::CMesh mesh;
  for (int i = 0; i <= kSurfaceSteps; ++i) {
    for (int j = 0; j <= kSurfaceSteps; ++j) {
      MPoint point;
      host.getPointAtParam(u0 + (u1 - u0) * i / kSurfaceSteps, v0 + (v1 - v0) * j / kSurfaceSteps,
                           point);
      mesh.vertices.push_back(
          {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)});
      if (i == kSurfaceSteps || j == kSurfaceSteps) continue;
      const int corner = i * (kSurfaceSteps + 1) + j, next = corner + kSurfaceSteps + 1;
      for (const int index : {corner, next, next + 1, corner, next + 1, corner + 1})
        mesh.faces.push_back(index);
    }
  }
  const bool isKnown = known && known->vertices == mesh.vertices && known->faces == mesh.faces;
  return isKnown ? known : MakeSharedMesh(std::move(mesh));
}

MObject MakeMesh(const util::CMesh& mesh, const MObject& transform) {
  MFnMesh host;
  return host.create(static_cast<int>(mesh.vertices.size()),
                     static_cast<int>(mesh.faces.size() / 3), HostPoints(mesh), ThreeEach(mesh),
                     HostFaces(mesh), transform);
}

bool FillMesh(const util::CMesh& mesh, const MDagPath& shape) {
  MPointArray points;
  for (const auto& v : mesh.vertices) points.append(MPoint(v.x, v.y, v.z));
  return MFnMesh(shape).createInPlace(static_cast<int>(mesh.vertices.size()),
                                      static_cast<int>(mesh.faces.size() / 3), points,
                                      ThreeEach(mesh), HostFaces(mesh));
}

std::shared_ptr<const Curve> ReadCurve(const MObject& geometry,
                                       const std::shared_ptr<const Curve>& known) {
  const MFnNurbsCurve host(geometry);
  Curve curve;
  curve.closed = host.form() != MFnNurbsCurve::kOpen;
  const std::vector<double> knots = SpanKnots(host);
  const int steps = host.degree() == 1 ? 1 : kStepsASpan;
  for (std::size_t i = 0; i + 1 < knots.size(); ++i)
    for (int j = 0; j < steps; ++j)
      curve.points.push_back(At(host, knots[i] + (knots[i + 1] - knots[i]) * j / steps));
  // The last point of a closed one is the first again.
  if (!curve.closed && !knots.empty()) curve.points.push_back(At(host, knots.back()));
  const bool isKnown = known && known->points == curve.points && known->closed == curve.closed;
  return isKnown ? known : std::make_shared<const Curve>(std::move(curve));
}

}  // namespace orv::rws::adaptor::maya

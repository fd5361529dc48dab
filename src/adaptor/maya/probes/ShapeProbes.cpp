// Meshes, curves, cameras.
#include <maya/MDGContext.h>
#include <maya/MDGContextGuard.h>
#include <maya/MDGModifier.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnCamera.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MTime.h>

#include "adaptor/maya/probes/Probe.h"
#include "adaptor/maya/probes/ProbeScene.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr auto kInDocs = ProbeSource::kDocumented;
constexpr auto kSupposed = ProbeSource::kBelief;

MObject SquareMesh(MObject& transform, double x) {
  MPointArray points;
  points.append(MPoint(0.0, 0.0, 0.0));
  points.append(MPoint(0.0, 0.0, 1.0));
  points.append(MPoint(1.0, 0.0, 1.0));
  points.append(MPoint(x, 0.0, 0.0));
  MIntArray counts, indices;
  counts.append(4);
  for (int i = 0; i < 4; ++i) indices.append(i);
  MFnMesh maker;
  return maker.create(4, 1, points, counts, indices, transform);
}

void MeshMade(ProbeRun& run) {
  MObject transform = ProbeTransform("probeMesh");
  const MObject shape = SquareMesh(transform, 1.0);
  MFnMesh fn(shape);
  run.Check(fn.numVertices() == 4 && fn.numPolygons() == 1, "it has other points or faces");
  run.Check(MFnDagNode(shape).parent(0) == transform, "it does not stand below the transform");
}

void MeshTriangles(ProbeRun& run) {
  MObject transform = ProbeTransform("probeTriangles");
  MFnMesh fn(SquareMesh(transform, 1.0));
  MIntArray counts, vertices;
  fn.getTriangles(counts, vertices);
  run.Check(counts.length() == 1 && counts[0] == 2 && vertices.length() == 6,
            "a square is not two triangles");
  run.Check(fn.numPolygons() == 1, "asking for triangles changes the mesh");
}

void SinglePoints(ProbeRun& run) {
  MObject transform = ProbeTransform("probeSingle");
  const double fine = 1.0 + 1e-10;
  MFnMesh fn(SquareMesh(transform, fine));
  MPoint point;
  fn.getPoint(3, point);
  run.Near(point.x, 1.0, 1e-7, "a point");
  run.Check(point.x == double(float(fine)), "points are not held in single precision");
}

void ShadedByCommand(ProbeRun& run) {
  MObject transform = ProbeTransform("probeShaded");
  MFnMesh fn(SquareMesh(transform, 1.0));
  run.Check(MGlobal::executeCommand("sets -e -forceElement \"initialShadingGroup\" \"" +
                                    fn.fullPathName() + "\"") == MStatus::kSuccess,
            "\"sets\" fails");
  MObjectArray shaders;
  MIntArray faces;
  fn.getConnectedShaders(0, shaders, faces);
  run.Check(shaders.length() == 1 && MFnDependencyNode(shaders[0]).name() == "initialShadingGroup",
            "a mesh does not tell its shader");
}

void CurveLength(ProbeRun& run) {
  MPointArray points;
  for (int i = 0; i < 4; ++i) points.append(MPoint(i, 0.0, 0.0));
  MDoubleArray knots;
  for (int i = 0; i < 4; ++i) knots.append(i);
  MFnNurbsCurve fn;
  MObject transform = ProbeTransform("probeLine");
  fn.create(points, knots, 1, MFnNurbsCurve::kOpen, false, false, transform);
  run.Near(fn.length(), 3.0, 1e-6, "the length of a line of 3");
  MPoint point;
  fn.getPointAtParam(fn.findParamFromLength(1.5), point);
  run.Near(point.x, 1.5, 1e-6, "its point at half the length");
}

void GeometryElsewhere(ProbeRun& run) {
  MDGModifier modifier;
  MObject square = ProbeTransform("probeBuilt");
  const MObject from = SquareMesh(square, 1.0);
  MObject other = ProbeTransform("probeFollower");
  const MObject to = SquareMesh(other, 5.0);
  modifier.connect(ProbePlug(from, "outMesh"), ProbePlug(to, "inMesh"));
  run.Check(modifier.doIt() == MStatus::kSuccess, "a mesh can't be connected to another");
  const MDGContext later(MTime(2.0, MTime::kSeconds));
  const MDGContextGuard guard(later);
  const MObject data = ProbePlug(to, "outMesh").asMObject();
  const MFnMesh fn(data);
  MIntArray counts, vertices;
  fn.getTriangles(counts, vertices);
  const float* const points = fn.getRawPoints(nullptr);
  run.Check(vertices.length() == 6, "a built mesh's data tells no triangles");
  if (points) run.Near(points[9], 1.0, 1e-6, "a point of it");
  run.Check(points != nullptr, "it tells no points");
}

void WhatIsUpstream(ProbeRun& run) {
  MObject node = ProbeTransform("probeUpstream");
  MDGModifier modifier;
  const MObject curve = modifier.createNode("animCurveTL");
  modifier.connect(ProbePlug(curve, "output"), ProbePlug(node, "translateX"));
  modifier.doIt();
  bool isCurveMet = false;
  for (MItDependencyGraph each(node, MFn::kInvalid, MItDependencyGraph::kUpstream,
                               MItDependencyGraph::kDepthFirst, MItDependencyGraph::kNodeLevel);
       !each.isDone(); each.next())
    isCurveMet = isCurveMet || each.currentItem() == curve;
  run.Check(isCurveMet, "a walk upstream does not meet the curve of a plug");
}

void LensUnits(ProbeRun& run) {
  MObject transform = ProbeTransform("probeEye");
  MFnCamera fn;
  fn.create(transform);
  fn.setHorizontalFilmAperture(1.0);
  fn.setFocalLength(25.4 / 2.0);
  run.Near(fn.horizontalFieldOfView(), std::acos(0.0), 1e-6,
           "the angle of a lens of half an inch on a film of one inch");
}

void LensPlugs(ProbeRun& run) {
  MObject transform = ProbeTransform("probeLens");
  MFnCamera fn;
  const MObject camera = fn.create(transform);
  ProbePlug(camera, "focalLength").setDouble(50.0);
  run.Near(fn.focalLength(), 50.0, 1e-6, "a focal length by its plug");
  ProbePlug(camera, "focusDistance").setDouble(200.0);
  run.Near(fn.focusDistance(), 200.0, 1e-6, "a focus distance by its plug");
}

void CameraLooksBack(ProbeRun& run) {
  MObject transform = ProbeTransform("probeLook");
  MFnCamera fn;
  fn.create(transform);
  const MVector view = fn.viewDirection(MSpace::kObject);
  run.Near(view.z, -1.0, 1e-9, "the Z of where a new camera looks");
}

}  // namespace

void AddShapeProbes(std::vector<Probe>& list) {
  const Probe probes[] = {
      {80, Feature::kTools, kInDocs, "MFnMesh::create makes a shape below a transform", MeshMade},
      {81, Feature::kTakes, kInDocs, "triangles are told without a change of the mesh",
       MeshTriangles},
      {82, Feature::kTakes, kSupposed, "points of meshes are in single precision", SinglePoints},
      {83, Feature::kTakes, kInDocs, "curves tell length and the place at one", CurveLength},
      {84, Feature::kTakes, kInDocs, "lenses are in millimetres, films in inches", LensUnits},
      {85, Feature::kTakes, kInDocs, "a lens can be set by plugs", LensPlugs},
      {88, Feature::kTakes, kSupposed, "built meshes can be read at other times",
       GeometryElsewhere},
      {89, Feature::kTakes, kInDocs, "what drives a node is found upstream", WhatIsUpstream},
      {87, Feature::kTools, kInDocs, "\"sets\" gives a mesh its shader", ShadedByCommand},
      {86, Feature::kTakes, kInDocs, "a camera looks along its negative Z", CameraLooksBack},
  };
  list.insert(list.end(), std::begin(probes), std::end(probes));
}

}  // namespace orv::rws::adaptor::maya

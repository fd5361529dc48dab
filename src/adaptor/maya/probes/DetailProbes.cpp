// Paths, plugs, shapes and keys in more detail: what the others leave.
#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MAnimCurveChange.h>
#include <maya/MColor.h>
#include <maya/MConditionMessage.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MFnSet.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MNamespace.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>
#include <maya/MTime.h>

#include "adaptor/maya/probes/Probe.h"
#include "adaptor/maya/probes/ProbeScene.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr auto kWritten = ProbeSource::kDocumented;
constexpr auto kGuessed = ProbeSource::kBelief;

MObject TriangleMesh(MObject transform) {
  MPointArray points;
  points.append(MPoint(0.0, 0.0, 0.0));
  points.append(MPoint(0.0, 0.0, 1.0));
  points.append(MPoint(1.0, 0.0, 0.0));
  MIntArray counts, indices;
  counts.append(3);
  for (int i = 0; i < 3; ++i) indices.append(i);
  MFnMesh maker;
  return maker.create(3, 1, points, counts, indices, transform);
}

void PathsToShapes(ProbeRun& run) {
  const MObject outer = ProbeTransform("probePathOuter");
  MObject inner = ProbeTransform("probePathInner", outer);
  const MObject shape = TriangleMesh(inner);
  MDagPath path = ProbePath(inner);
  unsigned count = 0;
  path.numberOfShapesDirectlyBelow(count);
  run.Check(path.isValid() && path.length() == 2 && count == 1 && path.childCount() == 1 &&
                path.child(0) == shape,
            "a path tells another length, or not the shape below");
  const MString name = path.fullPathName();
  run.Check(name == "|probePathOuter|probePathInner", "a full path has other signs");
  path.extendToShapeDirectlyBelow(0);
  run.Check(path.node() == shape && path.hasFn(MFn::kMesh), "it does not lead on to the shape");
  path.pop();
  run.Check(path.node() == inner, "pop does not lead back");
  path.push(shape);
  run.Check(path.node() == shape, "push does not lead to a child");
}

void PathsOfInstances(ProbeRun& run) {
  const MObject node = ProbeTransform("probeOnce");
  MDagPath path;
  MDagPath::getAPathTo(node, path);
  MDagPathArray all;
  MDagPath::getAllPathsTo(node, all);
  run.Check(all.length() == 1 && all[0] == path && path.instanceNumber() == 0,
            "a node that is no instance has several paths");
}

void PartsOfPlugs(ProbeRun& run) {
  const MObject node = ProbeTransform("probeParts");
  const MPlug plug = ProbePlug(node, "translateX");
  run.Check(plug.isChild() && plug.parent() == ProbePlug(node, "translate"),
            "translateX is no part of translate");
  run.Check(plug.partialName() == "tx", "its short name is another");
  run.Check(plug.attribute() == MFnDependencyNode(node).attribute("translateX"),
            "its attribute is another");
  run.Check(MFnUnitAttribute(plug.attribute()).unitType() == MFnUnitAttribute::kDistance,
            "it is no distance");
  run.Check(!plug.isDestination() && plug.source().isNull(), "it has a source");
  MPlug order = ProbePlug(node, "rotateOrder");
  order.setInt(2);
  run.Check(order.asInt() == 2 && order.asShort() == 2, "an enumeration is no number");
}

void WholeNumbers(ProbeRun& run) {
  const MObject node = ProbeTransform("probeNumber");
  MFnNumericAttribute maker;
  MObject attribute = maker.create("probeInt", "probeInt", MFnNumericData::kInt, 0.0);
  MFnDependencyNode fn(node);
  fn.addAttribute(attribute);
  ProbePlug(node, "probeInt").setInt(123456);
  run.Check(ProbePlug(node, "probeInt").asInt() == 123456, "a whole number comes back changed");
}

void TypesOfNodes(ProbeRun& run) {
  const MObject node = ProbeTransform("probeType");
  MFnDependencyNode fn(node);
  run.Check(fn.typeName() == "transform" && node.hasFn(MFn::kTransform) &&
                node.apiType() == MFn::kTransform && fn.typeId().id() != 0,
            "a transform is no transform");
  fn.setLocked(true);
  run.Check(fn.isLocked(), "a node can't be locked");
  fn.setLocked(false);
  run.Check(MObjectHandle(node).hashCode() == MObjectHandle(fn.object()).hashCode(),
            "two handles of a node have two hashes");
}

void SpacesOfNodes(ProbeRun& run) {
  MNamespace::addNamespace("probeBox");
  const MString before = MNamespace::currentNamespace();
  MNamespace::setCurrentNamespace("probeBox");
  const MObject node = ProbeTransform("probeInBox");
  MNamespace::setCurrentNamespace(before);
  MObjectArray held;
  MNamespace::getNamespaceObjects("probeBox", held);
  bool found = false;
  for (unsigned i = 0; i < held.length(); ++i) found = found || held[i] == node;
  run.Check(found, "a namespace does not tell its nodes");
  const MString space = MFnDependencyNode(node).parentNamespace();
  run.Check(space == "probeBox" || space == ":probeBox", "a node tells another namespace");
  MFnDependencyNode(node).setName(":probeOutOfBox");
  run.Check(MFnDependencyNode(node).name() == "probeOutOfBox", "a node can't leave its namespace");
  MNamespace::removeNamespace("probeBox");
  run.Check(!MNamespace::namespaceExists("probeBox"), "an empty namespace stays");
}

void ListsByName(ProbeRun& run) {
  const MObject node = ProbeTransform("probeListed");
  MSelectionList list;
  run.Check(MGlobal::getSelectionListByName("probeListed", list) == MStatus::kSuccess &&
                list.hasItem(node),
            "a name leads to another node");
  MGlobal::clearSelectionList();
  MGlobal::select(ProbePath(node), MObject::kNullObj, MGlobal::kAddToList);
  MGlobal::getActiveSelectionList(list);
  run.Check(list.hasItem(node), "select does not select");
  MGlobal::clearSelectionList();
}

void KeysOneByOne(ProbeRun& run) {
  const MObject node = ProbeTransform("probeKeys");
  MPlug plug = ProbePlug(node, "translateZ");
  MFnAnimCurve fn;
  fn.create(plug, MFnAnimCurve::kAnimCurveTL);
  constexpr auto kStraight = MFnAnimCurve::kTangentLinear;
  MAnimCurveChange change;
  const MTime late(2.0, MTime::kSeconds), early(1.0, MTime::kSeconds);
  fn.addKey(late, 5.0, kStraight, kStraight, &change);
  fn.addKey(early, 3.0, kStraight, kStraight, &change);
  unsigned at = 9;
  run.Check(fn.find(late, at) && at == 1, "keys are not in the order of their times");
  run.Check(fn.time(0) == early && fn.time(0) < late && fn.value(1) == 5.0 && fn.isTimeInput(),
            "a key has another time or value");
  fn.setInTangentType(1, MFnAnimCurve::kTangentStep, &change);
  fn.setOutTangentType(1, MFnAnimCurve::kTangentFlat, &change);
  run.Check(fn.outTangentType(1) == MFnAnimCurve::kTangentFlat && fn.inTangentType(0) == kStraight,
            "tangents are of another type");
  fn.setValue(0, 4.0, &change);
  fn.remove(1, &change);
  run.Check(fn.numKeys() == 1 && fn.value(0) == 4.0, "a key was not removed or set");
  change.undoIt();
  run.Check(fn.numKeys() == 0, "the change does not take everything back");
}

void UpAxis(ProbeRun& run) {
  const bool before = MGlobal::isYAxisUp();
  MGlobal::setZAxisUp();
  run.Check(!MGlobal::isYAxisUp(), "Y is up where Z was set");
  MGlobal::setYAxisUp();
  run.Check(MGlobal::isYAxisUp(), "Y is not up where it was set");
  if (!before) MGlobal::setZAxisUp();
}

void TicksOfTime(ProbeRun& run) {
  run.Check(MTime::ticksPerSecond() == 141120000.0 || MTime::ticksPerSecond() == 6000.0,
            "a second has another number of ticks");
}

void AnimationRange(ProbeRun& run) {
  const MTime start(0.0, MTime::kSeconds), end(8.0, MTime::kSeconds);
  MAnimControl::setAnimationStartEndTime(start, end);
  MAnimControl::setMinMaxTime(start, MTime(4.0, MTime::kSeconds));
  run.Near(MAnimControl::animationEndTime().as(MTime::kSeconds), 8.0, 1e-9, "the animation's end");
  run.Near(MAnimControl::animationStartTime().as(MTime::kSeconds), 0.0, 1e-9, "its start");
  MAnimControl::setAnimationStartTime(MTime(1.0, MTime::kSeconds));
  run.Near(MAnimControl::animationStartTime().as(MTime::kSeconds), 1.0, 1e-9, "a new start");
  run.Near(MAnimControl::maxTime().as(MTime::kSeconds), 4.0, 1e-9, "the range's end beside it");
}

void MeshesReplaced(ProbeRun& run) {
  MObject transform = ProbeTransform("probeReplaced");
  const MObject shape = TriangleMesh(transform);
  MPointArray points;
  for (int i = 0; i < 3; ++i) points.append(MPoint(i, 2.0, i * i));
  MIntArray counts, indices;
  counts.append(3);
  for (int i = 0; i < 3; ++i) indices.append(i);
  MFnMesh fn(shape);
  run.Check(fn.createInPlace(3, 1, points, counts, indices) == MStatus::kSuccess,
            "createInPlace fails");
  const float* const raw = fn.getRawPoints();
  run.Check(raw && raw[1] == 2.0f && raw[8] == 4.0f, "points are others, or in another order");
  MFnMesh copier;
  const MObject copy = copier.copy(shape, ProbeTransform("probeMeshCopy"));
  run.Check(!copy.isNull() && MFnMesh(copy).numVertices() == 3, "a mesh can't be copied");
  MFnDagNode dag(copy);
  dag.setIntermediateObject(true);
  run.Check(dag.isIntermediateObject(), "a shape can't be set aside");
}

void SurfacesAndCurves(ProbeRun& run) {
  MPointArray points;
  for (int i = 0; i < 4; ++i) points.append(MPoint(i / 2, 0.0, i % 2));
  MDoubleArray knots;
  knots.append(0.0);
  knots.append(1.0);
  MFnNurbsSurface surface;
  surface.create(points, knots, knots, 1, 1, MFnNurbsSurface::kOpen, MFnNurbsSurface::kOpen, false,
                 ProbeTransform("probeSurface"));
  double u0 = 9.0, u1 = 9.0, v0 = 9.0, v1 = 9.0;
  surface.getKnotDomain(u0, u1, v0, v1);
  MPoint middle;
  surface.getPointAtParam((u0 + u1) / 2.0, (v0 + v1) / 2.0, middle);
  run.Near(middle.x + middle.z, 1.0, 1e-6, "the middle of a square surface");
  MPointArray line;
  line.append(MPoint(0.0, 0.0, 0.0));
  line.append(MPoint(4.0, 0.0, 0.0));
  MFnNurbsCurve curve;
  curve.create(line, knots, 1, MFnNurbsCurve::kOpen, false, false, ProbeTransform("probeCurve"));
  MPointArray held;
  curve.getCVs(held);
  MDoubleArray heldKnots;
  curve.getKnots(heldKnots);
  double from = 9.0, to = 9.0;
  curve.getKnotDomain(from, to);
  run.Check(held.length() == 2 && heldKnots.length() == 2 && from == 0.0 && to == 1.0 &&
                curve.degree() == 1 && curve.form() == MFnNurbsCurve::kOpen,
            "a curve has other points or knots than it was made of");
  MFnNurbsCurve copied;
  const MObject other = ProbeTransform("probeCurveToo");
  copied.copy(curve.object(), other);
  MFnNurbsSurface copiedSurface;
  copiedSurface.copy(surface.object(), ProbeTransform("probeSurfaceToo"));
  copiedSurface.getPointAtParam((u0 + u1) / 2.0, (v0 + v1) / 2.0, middle);
  run.Near(middle.x + middle.z, 1.0, 1e-6, "the middle of a surface's copy");
  run.Check(copied.degree() == 1 && MFnDagNode(other).childCount() == 1,
            "a curve's copy is not below its transform");
}

void ColoursOfShaders(ProbeRun& run) {
  MFnLambertShader fn;
  const MObject shader = fn.create();
  run.Check(!shader.isNull(), "a shader can't be made");
  fn.setColor(MColor(0.25f, 0.5f, 0.75f));
  run.Near(fn.color().g, 0.5, 1e-6, "the green of a colour");
  MFnSet set;
  const MSelectionList none;
  run.Check(!set.create(none, MFnSet::kRenderableOnly).isNull(), "a set of shaded can't be made");
}

void NearPlane(ProbeRun& run) {
  MFnCamera fn;
  MObject transform = ProbeTransform("probeNear");
  fn.create(transform);
  fn.setNearClippingPlane(2.5);
  run.Near(fn.nearClippingPlane(), 2.5, 1e-9, "a near plane");
}

void ViewsDrawn(ProbeRun& run) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) return run.Skip("there are no windows");
  MStatus status;
  M3dView view = M3dView::active3dView(&status);
  run.Check(status == MStatus::kSuccess && view.refresh(true, true) == MStatus::kSuccess,
            "the active view can't be drawn");
}

void HeardConditions(ProbeRun& run) {
  MStatus status;
  const MCallbackId id = MConditionMessage::addConditionCallback(
      "playingBack", [](bool, void*) {}, nullptr, &status);
  run.Check(status == MStatus::kSuccess, "\"playingBack\" can't be heard");
  if (status == MStatus::kSuccess) MMessage::removeCallback(id);
}

}  // namespace

void AddDetailProbes(std::vector<Probe>& list) {
  const Probe probes[] = {
      {100, Feature::kTools, kWritten, "paths lead to shapes", PathsToShapes},
      {101, Feature::kTools, kWritten, "a node without instances has one path", PathsOfInstances},
      {102, Feature::kTakes, kWritten, "plugs tell parts, names and sources", PartsOfPlugs},
      {103, Feature::kStorage, kWritten, "nodes can hold whole numbers", WholeNumbers},
      {104, Feature::kStorage, kWritten, "nodes tell their type and can be locked", TypesOfNodes},
      {105, Feature::kImport, kGuessed, "namespaces tell their nodes, which can leave them",
       SpacesOfNodes},
      {106, Feature::kTools, kWritten, "nodes are found by name and selected", ListsByName},
      {107, Feature::kTakes, kWritten, "keys are in order, and each of their changes goes back",
       KeysOneByOne},
      {108, Feature::kTakes, kGuessed, "seconds have whole ticks", TicksOfTime},
      {109, Feature::kTakes, kWritten, "the animation's range is beside the playback's",
       AnimationRange},
      {110, Feature::kTools, kGuessed, "a mesh can be replaced, copied and set aside",
       MeshesReplaced},
      {111, Feature::kTakes, kWritten, "surfaces and curves tell what they were made of",
       SurfacesAndCurves},
      {112, Feature::kTools, kWritten, "shaders can be made and coloured", ColoursOfShaders},
      {113, Feature::kTools, kWritten, "cameras have a near plane", NearPlane},
      {114, Feature::kTakes, kWritten, "the active view can be drawn by force", ViewsDrawn},
      {116, Feature::kTakes, kWritten, "the up axis is told as it was set", UpAxis},
      {115, Feature::kTakes, kWritten, "playback can be heard", HeardConditions},
  };
  list.insert(list.end(), std::begin(probes), std::end(probes));
}

}  // namespace orv::rws::adaptor::maya

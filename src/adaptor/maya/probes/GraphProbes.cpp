// Nodes, attributes, undo of modifiers.
#include <maya/MDGModifier.h>
#include <maya/MDagModifier.h>
#include <maya/MEulerRotation.h>
#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MMatrix.h>
#include <maya/MNamespace.h>
#include <maya/MObjectHandle.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MVector.h>

#include "adaptor/maya/probes/Probe.h"
#include "adaptor/maya/probes/ProbeScene.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr auto kDoc = ProbeSource::kDocumented;
constexpr auto kBelieved = ProbeSource::kBelief;

void DataTypeNumbers(ProbeRun& run) {
  run.Check(int(MFnData::kString) == 4, "kString has another number");
  run.Check(int(MFnData::kStringArray) == 6, "kStringArray has another number");
  run.Check(int(MFnNumericData::kInt) == 7, "kInt has another number");
}

void DynamicText(ProbeRun& run) {
  const MObject node = ProbeTransform("probeTagged");
  MFnTypedAttribute maker;
  MObject attribute = maker.create("probeTag", "probeTag", MFnData::kString);
  maker.setHidden(true);
  maker.setStorable(true);
  MFnDependencyNode fn(node);
  run.Check(fn.addAttribute(attribute) == MStatus::kSuccess, "addAttribute fails");
  MPlug plug = ProbePlug(node, "probeTag");
  const char* const text = "Rig_01/Node \"a\" \\ b";
  plug.setString(text);
  run.Check(plug.asString() == text, "the text comes back changed");
  run.Check(fn.removeAttribute(attribute) == MStatus::kSuccess && !fn.hasAttribute("probeTag"),
            "removeAttribute leaves it");
}

void LegalNames(ProbeRun& run) {
  const MObject node = ProbeTransform("probeName");
  MFnDependencyNode fn(node);
  const MString given = fn.setName("4 Wheel");
  run.Check(given == fn.name(), "setName answers another name than the node has");
  run.Check(given != "4 Wheel", "an illegal name is taken as it is");
  const MObject other = ProbeTransform("probeOther");
  MFnDependencyNode(other).setName(given);
  run.Check(MFnDependencyNode(other).name() != given, "two nodes at the top have one name");
}

void SameNameBelow(ProbeRun& run) {
  const MObject a = ProbeTransform("probeA"), b = ProbeTransform("probeB");
  const MObject x = ProbeTransform("probeTwin", a), y = ProbeTransform("probeTwin", b);
  run.Check(MFnDagNode(x).name() == MFnDagNode(y).name(),
            "children of different parents can't have one name");
  run.Check(MFnDagNode(x).partialPathName() != MFnDagNode(y).partialPathName(),
            "their partial paths are the same");
}

void NullsFailSoftly(ProbeRun& run) {
  MStatus status;
  MFnDependencyNode none(MObject::kNullObj, &status);
  run.Check(status != MStatus::kSuccess, "a null object can be asked");
  const MPlug plug = ProbePlug(ProbeTransform("probeNull"), "noSuchPlug");
  run.Check(plug.isNull(), "a plug that does not exist is not null");
}

void TopNodes(ProbeRun& run) {
  const MObject node = ProbeTransform("probeTop");
  MFnDagNode fn(node);
  run.Check(fn.parentCount() == 1 && fn.parent(0) == fn.dagRoot(),
            "a node at the top is not the world's child");
}

void ModifierUndo(ProbeRun& run) {
  MDagModifier modifier;
  MObject node = modifier.createNode("transform");
  modifier.renameNode(node, "probeModified");
  run.Check(modifier.doIt() == MStatus::kSuccess, "doIt fails");
  const MObjectHandle handle(node);
  run.Check(handle.isValid(), "the node is not there");
  modifier.undoIt();
  run.Check(!handle.isValid(), "undoIt leaves the node");
  modifier.doIt();
  run.Check(handle.isValid() && MFnDependencyNode(node).name() == "probeModified",
            "a second doIt makes another node");
}

void DeleteUndo(ProbeRun& run) {
  MObject node = ProbeTransform("probeDeleted");
  ProbePlug(node, "translateX").setDouble(7.0);
  const MObjectHandle handle(node);
  MDagModifier modifier;
  modifier.deleteNode(node);
  modifier.doIt();
  run.Check(!handle.isValid() && handle.isAlive(),
            "a deleted node is valid, or gone for good while the modifier holds it");
  modifier.undoIt();
  run.Check(handle.isValid() && ProbePlug(node, "translateX").asDouble() == 7.0,
            "undoIt brings another node, or one with other values");
}

void DeleteForGood(ProbeRun& run) {
  MObject node = ProbeTransform("probeGone");
  const MObjectHandle handle(node);
  run.Check(MGlobal::deleteNode(node) == MStatus::kSuccess && !handle.isValid(),
            "MGlobal::deleteNode leaves it");
}

void ParentByCommand(ProbeRun& run) {
  const MObject parent = ProbeTransform("probeParent"), child = ProbeTransform("probeChild");
  ProbePlug(parent, "translateX").setDouble(10.0);
  ProbePlug(child, "translateX").setDouble(3.0);
  MDagModifier modifier;
  modifier.commandToExecute(MString("parent ") + MFnDagNode(child).fullPathName() + " " +
                            MFnDagNode(parent).fullPathName());
  run.Check(modifier.doIt() == MStatus::kSuccess && MFnDagNode(child).parent(0) == parent,
            "\"parent\" does not put the node below");
  run.Near(ProbePlug(child, "translateX").asDouble(), -7.0, 1e-9, "its local position");
  modifier.undoIt();
  run.Check(MFnDagNode(child).parent(0) == MFnDagNode(child).dagRoot(), "undoIt leaves it below");
}

void RowVectors(ProbeRun& run) {
  const double quarter = std::acos(0.0);
  const MVector turned =
      MVector(1.0, 0.0, 0.0) * MEulerRotation(0.0, 0.0, quarter, MEulerRotation::kXYZ).asMatrix();
  run.Near(turned.y, 1.0, 1e-12, "X turned by 90 degrees about Z: its Y");
  const MObject parent = ProbeTransform("probeOuter");
  const MObject child = ProbeTransform("probeInner", parent);
  ProbePlug(parent, "rotateZ").setDouble(quarter);
  ProbePlug(child, "translateX").setDouble(2.0);
  const MMatrix world = ProbePath(child).inclusiveMatrix();
  run.Near(world(3, 1), 2.0, 1e-9, "the Y of a child two to the side of a turned parent");
  const MMatrix local = MFnTransform(child).transformation().asMatrix();
  run.Near((local * ProbePath(parent).inclusiveMatrix())(3, 1), 2.0, 1e-9,
           "the same by local times parent");
}

void RotateOrders(ProbeRun& run) {
  const MObject node = ProbeTransform("probeOrder");
  ProbePlug(node, "rotateOrder").setInt(2);  // zxy
  ProbePlug(node, "rotateX").setDouble(0.3);
  ProbePlug(node, "rotateY").setDouble(-0.4);
  ProbePlug(node, "rotateZ").setDouble(0.5);
  const MMatrix expected = MEulerRotation(0.3, -0.4, 0.5, MEulerRotation::kZXY).asMatrix();
  const MMatrix found = MFnTransform(node).transformation().asMatrix();
  run.Check(found.isEquivalent(expected, 1e-9), "order 2 is not ZXY, or plugs are not in radians");
}

void HandlesOfNodes(ProbeRun& run) {
  const MObject a = ProbeTransform("probeHandleA"), b = ProbeTransform("probeHandleB");
  run.Check(MObjectHandle(a) == MObjectHandle(a) && !(MObjectHandle(a) == MObjectHandle(b)),
            "handles don't tell nodes apart");
}

void NodesByWalk(ProbeRun& run) {
  const MObject node = ProbeTransform("probeWalked");
  bool found = false;
  for (MItDependencyNodes it(MFn::kDependencyNode); !it.isDone(); it.next())
    found = found || it.thisNode() == node;
  run.Check(found, "MItDependencyNodes misses a transform");
}

void NamesInSpaces(ProbeRun& run) {
  MNamespace::addNamespace("probeSpace");
  MNamespace::setCurrentNamespace("probeSpace");
  const MObject node = ProbeTransform("probeWithin");
  MNamespace::setCurrentNamespace(":");
  run.Check(MFnDependencyNode(node).name() == "probeSpace:probeWithin",
            "a node's name does not begin with its namespace");
  MFnDependencyNode maker;
  MObject outside = maker.create("transform", "probeOutside");
  run.Check(MFnDependencyNode(outside).name() == "probeOutside",
            "\":\" does not lead back to the root");
}

void SelectionOrder(ProbeRun& run) {
  const MObject a = ProbeTransform("probeFirst"), b = ProbeTransform("probeSecond");
  MSelectionList list;
  list.add(ProbePath(b));
  list.add(ProbePath(a));
  MGlobal::setActiveSelectionList(list);
  MSelectionList found;
  MGlobal::getActiveSelectionList(found);
  MDagPath first;
  run.Check(
      found.length() == 2 && found.getDagPath(0, first) == MStatus::kSuccess && first.node() == b,
      "the selection comes back in another order");
  MGlobal::clearSelectionList();
}

void LockedPlugs(ProbeRun& run) {
  const MObject node = ProbeTransform("probeLocked");
  MPlug plug = ProbePlug(node, "translateX");
  plug.setLocked(true);
  run.Check(plug.isLocked(), "a locked plug does not say so");
}

void OwnNodes(ProbeRun& run) {
  const MObject node = ProbeTransform("probeOwn");
  run.Check(!MFnDependencyNode(node).isFromReferencedFile(),
            "a node of the scene counts as a reference's");
}

void VisibilityPlug(ProbeRun& run) {
  const MObject node = ProbeTransform("probeSeen");
  MPlug plug = ProbePlug(node, "visibility");
  run.Check(!plug.isNull() && plug.asBool(), "a new transform is not visible");
}

}  // namespace

void AddGraphProbes(std::vector<Probe>& list) {
  const Probe probes[] = {
      {20, Feature::kStorage, kDoc, "data types have their numbers", DataTypeNumbers},
      {21, Feature::kTools, kDoc, "text attributes can be added to nodes and removed", DynamicText},
      {22, Feature::kTools, kDoc, "setName makes names legal and unique and answers them",
       LegalNames},
      {23, Feature::kTools, kDoc, "children of different parents may have one name", SameNameBelow},
      {24, Feature::kTools, kDoc, "null objects are refused by a status", NullsFailSoftly},
      {25, Feature::kTools, kDoc, "nodes at the top are the world's children", TopNodes},
      {26, Feature::kTools, kDoc,
       "a modifier's undo takes a new node away and its redo brings it back", ModifierUndo},
      {27, Feature::kNodeEvents, kDoc, "a deleted node comes back as the same object", DeleteUndo},
      {28, Feature::kStorage, kDoc, "MGlobal::deleteNode deletes at once", DeleteForGood},
      {29, Feature::kTools, kBelieved, "\"parent\" in a modifier keeps the world pose",
       ParentByCommand},
      {30, Feature::kTakes, kDoc, "vectors are rows and a world matrix is local times parent",
       RowVectors},
      {31, Feature::kTakes, kDoc, "rotation plugs are in radians and in the order of rotateOrder",
       RotateOrders},
      {32, Feature::kTools, kDoc, "object handles tell nodes apart", HandlesOfNodes},
      {33, Feature::kStorage, kDoc, "a walk over all nodes meets each", NodesByWalk},
      {34, Feature::kImport, kBelieved, "names tell the namespace that was current", NamesInSpaces},
      {35, Feature::kTools, kDoc, "the selection keeps its order", SelectionOrder},
      {36, Feature::kTakes, kDoc, "locked plugs are told", LockedPlugs},
      {37, Feature::kStorage, kDoc, "a scene's own nodes are no reference's", OwnNodes},
      {38, Feature::kTools, kDoc, "transforms have a plug \"visibility\"", VisibilityPlug},
  };
  list.insert(list.end(), std::begin(probes), std::end(probes));
}

}  // namespace orv::rws::adaptor::maya

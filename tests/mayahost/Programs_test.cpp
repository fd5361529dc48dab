// Programs as others write them for the API, in their own ways of writing.
#include <gtest/gtest.h>
#include <maya/MAnimControl.h>
#include <maya/MAnimCurveChange.h>
#include <maya/MArgDatabase.h>
#include <maya/MArrayDataBuilder.h>
#include <maya/MColor.h>
#include <maya/MCommandResult.h>
#include <maya/MDGModifier.h>
#include <maya/MDagMessage.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnCompoundAttribute.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTransform.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MItKeyframe.h>
#include <maya/MItMeshEdge.h>
#include <maya/MItMeshVertex.h>
#include <maya/MItSelectionList.h>
#include <maya/MModelMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MUserEventMessage.h>
#include <maya/MVectorArray.h>

#include <cmath>
#include <cstdio>
#include <fstream>

#include "mayahost/Host.h"

namespace {
#define McheckErr(stat, msg)  \
  if (MS::kSuccess != stat) { \
    cerr << msg;              \
    return MS::kFailure;      \
  }

/// Weights and places in an array of compounds; their mean, and the weights again as an array.
class BlendNode : public MPxNode {
 public:
  static void* creator() { return new BlendNode; }
  static MStatus initialize() {
    MFnNumericAttribute nAttr;
    MFnCompoundAttribute cAttr;
    MFnUnitAttribute uAttr;
    MStatus stat;
    aWeight = nAttr.create("weight", "w", MFnNumericData::kFloat, 1.0, &stat);
    McheckErr(stat, "weight");
    aPos = nAttr.createPoint("position", "pos");
    aPoses = cAttr.create("poses", "ps");
    cAttr.addChild(aWeight), cAttr.addChild(aPos), cAttr.setArray(true);
    aTime = uAttr.create("time", "tm", MFnUnitAttribute::kTime, 0.0);
    aMean = nAttr.create("mean", "mn", MFnNumericData::k3Float);
    nAttr.setWritable(false);
    aWeights = nAttr.create("outWeights", "ow", MFnNumericData::kDouble);
    nAttr.setArray(true), nAttr.setUsesArrayDataBuilder(true), nAttr.setWritable(false);
    for (const MObject& attr : {aPoses, aTime, aMean, aWeights})
      CHECK_MSTATUS_AND_RETURN_IT(addAttribute(attr));
    for (const MObject& in : {aPoses, aWeight, aPos, aTime})
      attributeAffects(in, aMean), attributeAffects(in, aWeights);
    return MS::kSuccess;
  }
  MStatus compute(const MPlug& plug, MDataBlock& data) override {
    if (plug != aMean && plug.parent() != aMean && plug != aWeights) return MS::kUnknownParameter;
    MArrayDataHandle poses = data.inputArrayValue(aPoses);
    MArrayDataHandle out = data.outputArrayValue(aWeights);
    MArrayDataBuilder builder(&data, aWeights, poses.elementCount());
    MFloatVector sum;
    for (unsigned int i = 0; i < poses.elementCount(); i++, poses.next()) {
      MDataHandle pose = poses.inputValue();
      const float w = pose.child(aWeight).asFloat();
      float3& p = pose.child(aPos).asFloat3();
      sum += MFloatVector(p) * w;
      builder.addElement(poses.elementIndex()).set(static_cast<double>(w));
    }
    out.set(builder);
    out.setAllClean();
    sum.x += static_cast<float>(data.inputValue(aTime).asTime().as(MTime::kSeconds));
    data.outputValue(aMean).asFloatVector() = sum;
    return data.setClean(plug);
  }
  static MObject aWeight, aPos, aPoses, aTime, aMean, aWeights;
};
MObject BlendNode::aWeight, BlendNode::aPos, BlendNode::aPoses, BlendNode::aTime, BlendNode::aMean,
    BlendNode::aWeights;

/// A locator that keeps a value itself.
class Marker : public MPxLocatorNode {
 public:
  static void* creator() { return new Marker; }
  static MStatus initialize() {
    MFnNumericAttribute nAttr;
    size = nAttr.create("size", "sz", MFnNumericData::kDouble, 1.0);
    nAttr.setInternal(true);
    return addAttribute(size);
  }
  bool setInternalValueInContext(const MPlug& plug, const MDataHandle& handle,
                                 MDGContext&) override {
    if (plug != size) return false;
    return m_kept = handle.asDouble() * 10, true;
  }
  bool getInternalValueInContext(const MPlug& plug, MDataHandle& handle, MDGContext&) override {
    if (plug == size) handle.set(m_kept);
    return plug == size;
  }
  static MObject size;

 private:
  double m_kept = 1;
};
MObject Marker::size;

class BakeCmd : public MPxCommand {
 public:
  static void* creator() { return new BakeCmd; }
  static MSyntax newSyntax() {
    MSyntax syntax;
    syntax.addFlag("-e", "-endTime", MSyntax::kTime);
    syntax.addFlag("-at", "-attribute", MSyntax::kString);
    syntax.makeFlagMultiUse("-at");
    syntax.setObjectType(MSyntax::kSelectionList, 1);
    syntax.useSelectionAsDefault(true);
    return syntax;
  }
  MStatus doIt(const MArgList& args) override {
    MStatus status;
    MArgDatabase argData(syntax(), args, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MTime end = argData.flagArgumentMTime("-e", 0);
    MSelectionList list;
    argData.getObjects(list);
    for (MItSelectionList it(list, MFn::kTransform); !it.isDone(); it.next()) {
      MObject node;
      it.getDependNode(node);
      for (unsigned i = 0; i < argData.numberOfFlagUses("-at"); ++i) {
        MArgList one;
        argData.getFlagArgumentList("-at", i, one);
        MPlug plug = MFnDependencyNode(node).findPlug(one.asString(0), true, &status);
        if (plug.isFreeToChange() != MPlug::kFreeToChange) return MS::kFailure;
        const double now = plug.asDouble();
        MFnAnimCurve curve;
        curve.create(plug, &m_wires, &status);
        CHECK_MSTATUS_AND_RETURN_IT(status);
        for (MTime t(0.0, MTime::uiUnit()); t <= end; t++)
          curve.addKeyframe(t, now + t.value(), &m_change);
        appendToResult(curve.name());
      }
    }
    return MS::kSuccess;
  }
  MStatus undoIt() override { return m_change.undoIt(), m_wires.undoIt(); }
  MStatus redoIt() override { return m_wires.doIt(), m_change.redoIt(); }
  bool isUndoable() const override { return true; }

 private:
  MAnimCurveChange m_change;
  MDGModifier m_wires;
};

class PlacesFile : public MPxFileTranslator {
 public:
  static void* creator() { return new PlacesFile; }
  bool haveReadMethod() const override { return true; }
  bool haveWriteMethod() const override { return true; }
  MString defaultExtension() const override { return "places"; }
  MStatus writer(const MFileObject& file, const MString& options, FileAccessMode mode) override {
    std::ofstream out(file.expandedFullName().asChar());
    MSelectionList list;
    MGlobal::getActiveSelectionList(list);
    MDagPath path;
    for (unsigned i = 0; mode == kExportActiveAccessMode && i < list.length(); ++i)
      if (list.getDagPath(i, path))
        out << path.partialPathName() << " " << MFnTransform(path).translation(MSpace::kWorld).x;
    return out << "\n" << options << "\n" ? MS::kSuccess : MS::kFailure;
  }
  MStatus reader(const MFileObject& file, const MString&, FileAccessMode) override {
    std::ifstream in(file.expandedFullName().asChar());
    std::string name;
    double x = 0;
    if (!(in >> name >> x)) return MS::kFailure;
    MFnTransform made;
    made.create();
    made.setName(MString("in_") + name.c_str());
    return made.setTranslation(MVector(x, 0, 0), MSpace::kTransform);
  }
};

MString g_log;
void Changed(MNodeMessage::AttributeMessage message, MPlug& plug, MPlug& other, void*) {
  if (message & MNodeMessage::kAttributeSet) g_log += "set " + plug.partialName() + "; ";
  if (message & MNodeMessage::kConnectionMade)
    g_log += (message & MNodeMessage::kIncomingDirection ? "from " : "to ") + other.name() + "; ";
}
void Hung(MDagPath& child, MDagPath& parent, void*) {
  g_log += MFnDependencyNode(child.node()).name() + " below " + parent.fullPathName() + "; ";
}
void Renamed(MObject& node, const MString& before, void*) {
  g_log += before + " is " + MFnDependencyNode(node).name() + "; ";
}
void Said(void* text) {
  g_log += static_cast<const char*>(text);
}

MStatus initialize(MObject obj) {
  MFnPlugin plugin(obj, "me", "1.0", "Any");
  plugin.registerNode("blendPose", 0x80070, &BlendNode::creator, &BlendNode::initialize);
  plugin.registerNode("marker", 0x80071, &Marker::creator, &Marker::initialize,
                      MPxNode::kLocatorNode);
  plugin.registerFileTranslator("places", NULL, PlacesFile::creator, "", "all=1");
  return plugin.registerCommand("bake", BakeCmd::creator, BakeCmd::newSyntax);
}
MStatus uninitialize(MObject obj) {
  MFnPlugin plugin(obj);
  plugin.deregisterFileTranslator("places");
  plugin.deregisterCommand("bake");
  plugin.deregisterNode(0x80071);
  return plugin.deregisterNode(0x80070);
}

class Programs : public testing::Test {
 protected:
  void SetUp() override { mayahost::Reset(); }
};
#define EXPECT_MEL(line, result) EXPECT_EQ(mayahost::Type(line), result) << line

TEST_F(Programs, RunAPlugInOfEachKind) {
  ASSERT_TRUE(mayahost::Load("theirs", initialize));
  mayahost::Type("createNode blendPose -n bp; setAttr bp.poses[0].weight 0.5");
  mayahost::Type("setAttr bp.poses[2].weight 0.25; setAttr bp.poses[2].position 8 4 0");
  EXPECT_MEL("getAttr bp.mean", "2 1 0");
  EXPECT_MEL("getAttr bp.outWeights[2]; getAttr -s bp.outWeights", "2");
  mayahost::Type("connectAttr time1.outTime bp.time; currentTime 24");
  EXPECT_MEL("getAttr bp.mean0", "3");
  mayahost::Type("createNode marker -n m");
  mayahost::Type("setAttr mShape.size 0.5");
  EXPECT_MEL("getAttr mShape.size", "5");
  mayahost::Type("setAttr m.tx 3");
  const std::string still = mayahost::Dump();
  EXPECT_MEL("bake -e 4 -at tx -at rotateX m", "m_translateX m_rotateX");
  EXPECT_MEL("keyframe -q -vc m.tx", "3 4 5 6 7");
  EXPECT_MEL("keyframe -q -kc -t \"1:2\" m.tx", "2");
  const std::string baked = mayahost::Dump();
  mayahost::Undo();
  EXPECT_EQ(mayahost::Dump(), still);
  mayahost::Redo();
  EXPECT_EQ(mayahost::Dump(), baked);
  const std::string file = testing::TempDir() + "mayahost.places";
  mayahost::Type("select m; file -f -type \"places\" -es \"" + file + "\"; file -i \"" + file +
                 "\"");
  EXPECT_MEL("getAttr in_m.tx", "7");
  std::remove(file.c_str());
  mayahost::Type("file -f -new");
  EXPECT_TRUE(mayahost::Unload("theirs", uninitialize));
}

TEST_F(Programs, HearOfChanges) {
  g_log.clear();
  MObject nothing;
  MCallbackIdArray ids;
  ids.append(MNodeMessage::addNameChangedCallback(nothing, Renamed));
  ids.append(MDagMessage::addParentAddedCallback(Hung));
  MUserEventMessage::registerUserEvent("ping");
  char ping[] = "ping; ", selected[] = "selected; ";
  ids.append(MUserEventMessage::addUserEventCallback("ping", Said, ping));
  ids.append(MModelMessage::addCallback(MModelMessage::kActiveListModified, Said, selected));
  mayahost::Type("createNode transform -n a; createNode transform -n b; parent b a; rename b c");
  MSelectionList list;
  list.add("c");
  MObject node;
  list.getDependNode(0, node);
  ids.append(MNodeMessage::addAttributeChangedCallback(node, Changed));
  mayahost::Type("setAttr c.ty 2; connectAttr a.tx c.tz; select c");
  MUserEventMessage::postUserEvent("ping");
  EXPECT_EQ(g_log,
            "a below ; b below ; b below |a; b is c; set ty; from a.translateX; selected; ping; ");
  EXPECT_EQ(MMessage::removeCallbacks(ids), MS::kSuccess);
  MUserEventMessage::deregisterUserEvent("ping");
}

TEST_F(Programs, AskByCommands) {
  MDoubleArray numbers;
  MStringArray names;
  MString text;
  int count = 7;
  mayahost::Type("polyCube -n box -w 2 -h 4 -d 6; spaceLocator -n loc; move 1 2 3 loc");
  mayahost::Type("xform -ro 0 90 0 box; parent loc box; group -n all box; camera -n cam -fl 50");
  MGlobal::executeCommand("xform -q -ws -t |all|box|loc", numbers);
  ASSERT_EQ(numbers.length(), 3u);
  EXPECT_NEAR(numbers[2], 3, 1e-12);
  MGlobal::executeCommand("listRelatives -ad -f all", names);
  EXPECT_EQ(names, MStringArray(
                       {"|all|box|boxShape", "|all|box|loc|locShape", "|all|box|loc", "|all|box"}));
  EXPECT_EQ(MGlobal::executeCommand("nodeType box", count), MS::kFailure) << "no number";
  EXPECT_EQ(count, 7);
  EXPECT_TRUE(MGlobal::executeCommand("objExists box", count));
  EXPECT_EQ(count, 1);
  mayahost::Type(
      "addAttr -ln mode -at \"enum\" -en \"off:slow=3:fast\" -k 1 box; setAttr box.mode 4");
  EXPECT_MEL("attributeQuery -n box -le mode; listAttr -ud box", "mode");
  EXPECT_MEL("setKeyframe -t 1 -v 0 -at tx -itt linear -ott linear box", "1");
  EXPECT_MEL("setKeyframe -t 11 -v 10 -at tx -itt linear -ott linear box; getAttr -t 6 box.tx",
             "5");
  EXPECT_MEL("listConnections -s 1 -d 0 -p 1 box.tx", "box_translateX.output");
  EXPECT_MEL("camera -q -fl cam", "50");
  mayahost::Type("currentUnit -t 59.94fps");
  EXPECT_EQ(MTime::uiUnit(), MTime::k59_94FPS);
  MCommandResult result;
  MGlobal::executeCommand("getAttr box.t", result);
  EXPECT_TRUE(result.getResult(numbers) && numbers.length() == 3);
  MDagPath path;
  MSelectionList list;
  list.add("box");
  list.getDagPath(0, path);
  MFnMesh mesh(path);
  int2 ends;
  mesh.getEdgeVertices(0, ends);
  int open = 0;
  for (MItMeshEdge it(path); !it.isDone(); it.next()) open += it.onBoundary();
  EXPECT_EQ(mesh.numEdges() * 100 + open * 10 + ends[1], 1201);
  MPoint near;
  mesh.getClosestPoint(MPoint(0, 9, 0), near);
  EXPECT_TRUE(near.isEquivalent(MPoint(0, 2, 0)));
  const std::string file = testing::TempDir() + "mayahost.programs";
  mayahost::Type("select -cl");
  const std::string before = mayahost::Dump();
  mayahost::Type("file -rename \"" + file + "\"; file -save; file -f -o \"" + file + "\"");
  EXPECT_EQ(mayahost::Dump(), before);
  std::remove(file.c_str());
}

TEST_F(Programs, MovePartsOfShapesAndEditKeys) {
  MGlobal::executeCommand("polyCube -name box");
  MSelectionList list;
  ASSERT_EQ(list.add("box.vtx[2:3]"), MS::kSuccess);
  list.add("box.f[0]");
  EXPECT_NE(MSelectionList(list).add("box.vtx[99]"), MS::kSuccess);
  MGlobal::setActiveSelectionList(list);
  MGlobal::getActiveSelectionList(list);
  MDagPath path;
  MObject component;
  int moved = 0;
  for (MItSelectionList it(list, MFn::kMeshVertComponent); !it.isDone(); it.next()) {
    EXPECT_TRUE(it.hasComponents());
    ASSERT_EQ(it.getDagPath(path, component), MS::kSuccess);
    EXPECT_TRUE(path.node().hasFn(MFn::kMesh));
    for (MItMeshVertex vertex(path, component); !vertex.isDone(); vertex.next(), ++moved) {
      EXPECT_EQ(vertex.count(), 2u);
      vertex.translateBy(MVector(0, 1, 0), MSpace::kObject);
    }
  }
  EXPECT_EQ(moved, 2);
  MPointArray points;
  MFnMesh(path).getPoints(points);
  for (unsigned i = 0; i < points.length(); ++i)
    EXPECT_EQ(points[i].y > 1.0, i == 2 || i == 3) << i;
  MFnSingleIndexedComponent part;
  MObject made = part.create(MFn::kMeshVertComponent);
  MIntArray which;
  for (const int i : {5, 1, 2, 0}) which.append(i);
  part.addElements(which);
  EXPECT_EQ(part.elementCount(), 4);
  EXPECT_EQ(part.element(3), 5);
  EXPECT_EQ(part.componentType(), MFn::kMeshVertComponent);
  list.clear();
  list.add(path, made);
  MStringArray names;
  list.getSelectionStrings(names);
  ASSERT_EQ(names.length(), 2u);
  EXPECT_STREQ(names[0].asChar(), "box.vtx[0:2]");
  EXPECT_STREQ(names[1].asChar(), "box.vtx[5]");

  MFnAnimCurve curve;
  MObject keys =
      curve.create(path.transform(), MFnDependencyNode(path.transform()).attribute("tx"));
  for (int i = 0; i < 3; ++i) curve.addKeyframe(MTime(i, MTime::kFilm), i);
  for (MItKeyframe key(keys); !key.isDone(); key.next()) key.setValue(key.value() * 2.0);
  EXPECT_EQ(curve.value(2), 4.0);
}

TEST_F(Programs, ReckonWithValues) {
  MTime t = 24.0;
  EXPECT_TRUE(t == MTime(1, MTime::kSeconds) && ++t > MTime(1.0, MTime::kSeconds));
  MString path("|grp|ball:left"), text;
  MStringArray parts;
  EXPECT_TRUE(path.rindex('|') == 4 && path.substring(1, 3) == "grp" && path.indexW(":") == 9);
  EXPECT_TRUE(path.split('|', parts) && parts.length() == 2);
  text.format("^1s is ^2s, not ^1s", "sky", parts[0]);
  EXPECT_EQ(text, "sky is grp, not sky");
  EXPECT_EQ(MString(L"\u00e9").asWChar()[0], L'\u00e9');
  const double rows[2][3] = {{1, 2, 3}, {4, 5, 6}};
  MVectorArray vectors(rows, 2);
  vectors += vectors;
  EXPECT_EQ(vectors[3], MVector(4, 5, 6));
  MMatrix m;
  m[3][0] = 5;
  EXPECT_EQ((MFloatPoint(1, 1, 1) * MFloatMatrix(m.matrix)).x, 6.0F);
  const MQuaternion q = MVector::xAxis.rotateTo(MVector::yAxis);
  EXPECT_TRUE(MVector::xAxis.rotateBy(q).isEquivalent(MVector::yAxis, 1e-12));
  EXPECT_TRUE(q.log().exp().isEquivalent(q, 1e-12));
  float hue, saturation, value;
  MColor(MColor::kHSV, 200, 0.5F, 0.8F).get(MColor::kHSV, hue, saturation, value);
  EXPECT_NEAR(hue + saturation + value, 201.3, 1e-4);
  MFnCamera camera;
  camera.create();
  EXPECT_TRUE(camera.set(MPoint(0, 0, 10), MVector(1, 0, -1), MVector(0, 1, 0), 1.0, 1.5));
  MDagPath eye;
  camera.getPath(eye);
  EXPECT_TRUE(MFnCamera(eye).viewDirection(MSpace::kWorld).isParallel(MVector(1, 0, -1), 1e-9));
  EXPECT_NEAR(camera.horizontalFieldOfView() * camera.aspectRatio(), 1.5, 1e-9);
  // A plane as a cubic surface.
  MPointArray net;
  for (int i = 0; i < 16; ++i) net.append(i / 4, 0.5 * (i / 4), i % 4);
  const MDoubleArray knots({0, 0, 0, 1, 1, 1});
  MFnNurbsSurface surface;
  const auto open = MFnNurbsSurface::kOpen;
  surface.create(net, knots, knots, 3, 3, open, open, false);
  MPoint p;
  surface.getPointAtParam(0.5, 0.25, p);
  EXPECT_TRUE(p.isEquivalent(MPoint(1.5, 0.75, 0.75), 1e-12));
  EXPECT_TRUE(surface.normal(0.3, 0.6).isParallel(MVector(1, -2, 0), 1e-6));
}
}  // namespace

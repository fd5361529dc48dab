// The stand-in, used as other people's plug-ins and scripts use their host.
#include <gtest/gtest.h>
#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MArgDatabase.h>
#include <maya/MDagModifier.h>
#include <maya/MDagPathArray.h>
#include <maya/MFileIO.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnSet.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnTransform.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MNodeMessage.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MPxNode.h>
#include <maya/MSceneMessage.h>

#include <cmath>
#include <cstdio>

#include "mayahost/Host.h"

namespace {

class MayaHost : public testing::Test {
 protected:
  void SetUp() override { mayahost::Reset(); }
  MObject Named(const char* name) {
    MSelectionList list;
    MObject node;
    list.add(name);
    list.getDependNode(0, node);
    return node;
  }
};

// A node and a command as they stand in tutorials.
class TwiceNode : public MPxNode {
 public:
  static void* Creator() { return new TwiceNode; }
  static MStatus Initialize() {
    MFnNumericAttribute number;
    s_in = number.create("inValue", "iv", MFnNumericData::kDouble, 1.0);
    number.setKeyable(true);
    s_out = number.create("outValue", "ov", MFnNumericData::kDouble, 0.0);
    number.setWritable(false);
    number.setStorable(false);
    CHECK_MSTATUS_AND_RETURN_IT(addAttribute(s_in));
    CHECK_MSTATUS_AND_RETURN_IT(addAttribute(s_out));
    return attributeAffects(s_in, s_out);
  }
  MStatus compute(const MPlug& plug, MDataBlock& data) override {
    if (plug != s_out) return MS::kUnknownParameter;
    ++s_computed;
    MDataHandle out = data.outputValue(s_out);
    out.asDouble() = 2 * data.inputValue(s_in).asDouble();
    return data.setClean(plug);
  }
  static MObject s_in, s_out;
  static int s_computed;
};
MObject TwiceNode::s_in, TwiceNode::s_out;
int TwiceNode::s_computed = 0;

class MoveCommand : public MPxCommand {
 public:
  static void* Creator() { return new MoveCommand; }
  static MSyntax Syntax() {
    MSyntax syntax;
    syntax.addFlag("-by", "-moveBy", MSyntax::kDouble);
    syntax.addArg(MSyntax::kString);
    return syntax;
  }
  MStatus doIt(const MArgList& list) override {
    MStatus status;
    MArgDatabase args(syntax(), list, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    m_name = args.commandArgumentString(0);
    m_by = args.isFlagSet("-by") ? args.flagArgumentDouble("-by", 0) : 1.0;
    return redoIt();
  }
  MStatus redoIt() override { return Step(m_by); }
  MStatus undoIt() override { return Step(-m_by); }
  bool isUndoable() const override { return true; }

 private:
  MStatus Step(double by) {
    MSelectionList list;
    MDagPath path;
    if (list.add(m_name) != MS::kSuccess || MS::kSuccess != list.getDagPath(0, path))
      return MS::kFailure;
    MFnTransform fn(path);
    setResult(fn.getTranslation(MSpace::kTransform).x + by);
    return fn.translateBy(MVector(by, 0, 0), MSpace::kTransform);
  }
  MString m_name;
  double m_by = 0;
};

MStatus Begin(MObject object) {
  MFnPlugin plugin(object, "Somebody", "1.0", "Any");
  plugin.registerNode("twice", 0x70001, TwiceNode::Creator, TwiceNode::Initialize);
  return plugin.registerCommand("moveIt", MoveCommand::Creator, MoveCommand::Syntax);
}
MStatus End(MObject object) {
  MFnPlugin plugin(object);
  plugin.deregisterCommand("moveIt");
  return plugin.deregisterNode(0x70001);
}

TEST_F(MayaHost, RunsAForeignPlugIn) {
  ASSERT_TRUE(mayahost::Load("others", Begin));
  EXPECT_EQ(mayahost::Registered(), (std::vector<std::string>{"command moveIt", "node twice"}));
  MDagModifier modifier;
  const MObject top = modifier.createNode("transform");
  modifier.renameNode(top, "cart");
  ASSERT_EQ(modifier.doIt(), MS::kSuccess);
  const std::string still = mayahost::Dump();

  // Commands, by the queue.
  EXPECT_EQ(mayahost::Type("moveIt -by 2.5 cart"), "2.5");
  EXPECT_EQ(mayahost::Type("getAttr cart.tx"), "2.5");
  EXPECT_EQ(mayahost::Type("moveIt \"cart\""), "3.5");
  EXPECT_EQ(mayahost::UndoQueue().size(), 2u);
  mayahost::Type("undo;undo");
  EXPECT_EQ(mayahost::Dump(), still);
  EXPECT_TRUE(mayahost::Redo());
  EXPECT_EQ(mayahost::Type("getAttr cart.translate"), "2.5 0 0");
  mayahost::Type("moveIt -wrong cart");
  EXPECT_TRUE(mayahost::Failed());

  // A chain: keys, a node that doubles, a transform.
  MFnDependencyNode twice;
  twice.create("twice", "doubler");
  MPlug in = twice.findPlug("iv", false), out = twice.findPlug("outValue", false),
        height(top, MFnDependencyNode(top).attribute("ty"));
  MFnAnimCurve curve;
  ASSERT_FALSE(curve.create(in).isNull());
  EXPECT_EQ(curve.typeName(), "animCurveTU");
  curve.addKey(MTime(0.0, MTime::kSeconds), 1.0, MFnAnimCurve::kTangentLinear,
               MFnAnimCurve::kTangentLinear);
  curve.addKey(MTime(2.0, MTime::kSeconds), 5.0, MFnAnimCurve::kTangentLinear,
               MFnAnimCurve::kTangentLinear);
  MDGModifier wires;
  wires.connect(out, height);
  ASSERT_EQ(MS::kSuccess, wires.doIt());
  MAnimControl::setCurrentTime(MTime(1.0, MTime::kSeconds));
  EXPECT_NEAR(height.asDouble(), 6.0, 1e-12);
  const int computed = TwiceNode::s_computed;
  EXPECT_NEAR(height.asDouble(), 6.0, 1e-12);
  EXPECT_EQ(TwiceNode::s_computed, computed) << "what is clean is not computed again";
  MDGContext later(MTime(2.0, MTime::kSeconds));
  EXPECT_NEAR(height.asDouble(later), 10.0, 1e-12);
  EXPECT_NEAR(height.asDouble(), 6.0, 1e-12);
  MDagPath path;
  MDagPath::getAPathTo(top, path);
  EXPECT_NEAR(path.inclusiveMatrix()(3, 1), 6.0, 1e-12);
  EXPECT_EQ(height.setValue(1.0), MS::kFailure) << "it has an input";
  EXPECT_TRUE(MAnimUtil::isAnimated(in));
  std::string upstream;
  MObject root = top;
  for (MItDependencyGraph it(root, MFn::kInvalid, MItDependencyGraph::kUpstream); !it.isDone();
       it.next())
    upstream += MFnDependencyNode(it.currentItem()).typeName().asChar() + std::string(" ");
  EXPECT_EQ(upstream, "transform twice animCurveTU ");

  // It lives in a file, and a type that is in use can't go.
  EXPECT_FALSE(mayahost::Unload("others", End));
  ASSERT_TRUE(mayahost::Load("others2", [](MObject o) {
    return MFnPlugin(o).registerCommand("moveIt", MoveCommand::Creator, MoveCommand::Syntax);
  }));
  const std::string file = testing::TempDir() + "mayahost.scene", before = mayahost::Dump();
  ASSERT_EQ(MFileIO::saveAs(file.c_str()), MS::kSuccess);
  ASSERT_EQ(MFileIO::newFile(true), MS::kSuccess);
  EXPECT_TRUE(Named("cart").isNull());
  ASSERT_EQ(MFileIO::open(file.c_str(), nullptr, true), MS::kSuccess);
  EXPECT_EQ(mayahost::Dump(), before);
  EXPECT_NEAR(MPlug(Named("cart"), MFnDependencyNode(Named("cart")).attribute("ty")).asDouble(),
              6.0, 1e-12);
  MFileIO::newFile(true);
  EXPECT_TRUE(mayahost::Unload("others", End));
  EXPECT_TRUE(mayahost::Registered().empty());
  // Without its plug-in the node is kept as it stands.
  ASSERT_EQ(MFileIO::open(file.c_str(), nullptr, true), MS::kSuccess);
  ASSERT_EQ(MFileIO::save(), MS::kSuccess);
  EXPECT_NE(mayahost::SceneText().find("node twice \"doubler\""), std::string::npos);
  ASSERT_TRUE(mayahost::Load("others", [](MObject o) {
    return MFnPlugin(o).registerNode("twice", 0x70001, TwiceNode::Creator, TwiceNode::Initialize);
  }));
  MFileIO::open(file.c_str(), nullptr, true);
  EXPECT_EQ(mayahost::Dump(), before);
  MFileIO::newFile(true);
  EXPECT_TRUE(
      mayahost::Unload("others", [](MObject o) { return MFnPlugin(o).deregisterNode(0x70001); }));
  std::remove(file.c_str());
}

TEST_F(MayaHost, TakesEditsBackToTheByte) {
  const std::string empty = mayahost::Dump();
  mayahost::Type(
      "createNode transform -n body; createNode transform -n wheel -p body; createNode transform "
      "-n wheel;");
  mayahost::Type(
      "setAttr body.t 1 2 3; setAttr body.ry 90; setAttr body.ro 2; parent \"|wheel\" body");
  EXPECT_FALSE(mayahost::Failed());
  EXPECT_EQ(mayahost::Type("ls -type transform wheel*"), "wheel wheel1");
  const MObject wheel = Named("wheel1");
  MDagPath path;
  MDagPath::getAPathTo(wheel, path);
  EXPECT_TRUE(path.inclusiveMatrix().isEquivalent(MMatrix(), 1e-12))
      << "parent keeps the place in the world";
  const MObjectHandle handle(wheel);
  const std::string full = mayahost::Dump();
  mayahost::Type("delete body");
  EXPECT_FALSE(handle.isValid());
  EXPECT_TRUE(handle.isAlive());
  EXPECT_FALSE(path.isValid());
  mayahost::Undo();
  EXPECT_EQ(mayahost::Dump(), full);
  EXPECT_TRUE(path.isValid());
  mayahost::Type("instance body");
  MDagPathArray paths;
  MDagPath::getAllPathsTo(wheel, paths);
  EXPECT_EQ(paths.length(), 2u);
  EXPECT_EQ(paths[1].instanceNumber(), 1u);
  while (mayahost::Undo()) {
  }
  EXPECT_EQ(mayahost::Dump(), empty);
  while (mayahost::Redo()) {
  }
  mayahost::Undo();
  EXPECT_EQ(mayahost::Dump(), full);

  // Keys by a change that is undone, a queue that is short, off, flushed.
  MFnAnimCurve curve;
  MPlug plug = MFnDependencyNode(wheel).findPlug("rotateX", false);
  MDGModifier modifier;
  curve.create(plug, &modifier);
  const std::string bare = mayahost::Dump();
  MAnimCurveChange change;
  for (int i = 0; i < 9; ++i)
    curve.addKey(MTime(i, MTime::kFilm), i * i * 0.1, MFnAnimCurve::kTangentSmooth,
                 MFnAnimCurve::kTangentSmooth, &change);
  const std::string keyed = mayahost::Dump();
  change.undoIt();
  EXPECT_EQ(mayahost::Dump(), bare);
  change.redoIt();
  EXPECT_EQ(mayahost::Dump(), keyed);
  // Smooth tangents of a parabola meet it between its inner keys.
  EXPECT_NEAR(curve.evaluate(MTime(3.5, MTime::kFilm)), 3.5 * 3.5 * 0.1, 1e-12);
  change.undoIt();
  modifier.undoIt();
  EXPECT_EQ(mayahost::Dump(), full);
  mayahost::Type("undoInfo -infinity 0 -length 2; setAttr body.tx 5");
  mayahost::Type("setAttr body.tx 6");
  mayahost::Type("setAttr body.tx 7");
  EXPECT_EQ(mayahost::UndoQueue().size(), 2u);
  mayahost::Type("undoInfo -stateWithoutFlush 0; setAttr body.tx 8");
  EXPECT_EQ(mayahost::UndoQueue().size(), 2u);
  mayahost::Type("flushUndo");
  EXPECT_EQ(mayahost::Type("undoInfo -q -undoQueueEmpty"), "1");
}

std::string g_heard;
template <int N>
void Hear(void*) {
  g_heard += std::to_string(N) + " ";
}

TEST_F(MayaHost, FailsSoftlyAndTellsInOrder) {
  MStatus status = MS::kSuccess;
  MObject nothing;
  MFnMesh mesh(nothing, &status);
  EXPECT_EQ(status, MS::kInvalidParameter);
  EXPECT_TRUE(MS::kSuccess != status && status != MStatus::kSuccess && !status);
  EXPECT_EQ(mesh.numVertices(&status), 0);
  EXPECT_EQ(status, MS::kFailure);
  EXPECT_EQ(MFnDependencyNode(nothing).name(), "");
  EXPECT_TRUE(MFnDagNode().object().isNull());
  EXPECT_EQ(MPlug().setValue(1.0), MS::kFailure);
  EXPECT_EQ(MPlug().asDouble(&status), 0.0);
  EXPECT_TRUE(MFnDependencyNode(Named("persp")).findPlug("nonsense", false, &status).isNull());
  EXPECT_EQ(status, MS::kInvalidParameter);
  MFnCamera camera(Named("persp"), &status);
  EXPECT_FALSE(status) << "a transform is no camera";
  mayahost::Type("nonsense 1");
  EXPECT_TRUE(mayahost::Failed());
  status = MS::kFailure;
  status.perror("it failed");
  EXPECT_EQ(mayahost::Said().back().find("status: it failed"), 0u);

  EXPECT_EQ(MTime().unit(), MTime::kFilm);
  MTime::setUIUnit(MTime::k23_976FPS);
  EXPECT_EQ(MTime(24).as(MTime::kSeconds), 1.0);
  EXPECT_NEAR(MTime(24000, MTime::uiUnit()).as(MTime::kSeconds), 1001.0, 1e-9);

  // A quad with a corner that single precision can't hold, under a moved transform.
  MPointArray points({MPoint(0, 0, 0), MPoint(10, 0, 0), MPoint(10, 0.1, 10), MPoint(0, 0, 10)});
  MObject owner = MFnTransform().create();
  MFnTransform(owner).setTranslation(MVector(0, 2, 0), MSpace::kTransform);
  mesh.create(4, 1, points, MIntArray({4}), MIntArray({0, 1, 2, 3}), owner, &status);
  ASSERT_EQ(status, MS::kSuccess);
  MPoint corner;
  mesh.getPoint(2, corner);
  EXPECT_EQ(corner.y, static_cast<double>(0.1f));
  MIntArray counts, triangles;
  mesh.getTriangles(counts, triangles);
  EXPECT_EQ(triangles.length(), 6u);
  MItMeshVertex vertex(mesh.object());
  vertex.next();
  MIntArray beside;
  vertex.getConnectedVertices(beside);
  EXPECT_EQ(beside, MIntArray({0, 2}));
  EXPECT_EQ(vertex.position().x, 10.0);
  MItMeshPolygon polygon(mesh.object());
  EXPECT_EQ(polygon.polygonVertexCount(), 4u);
  polygon.next();
  EXPECT_TRUE(polygon.isDone());
  MDagPath path;
  MDagPath::getAPathTo(mesh.object(), path);
  MFloatPoint hit;
  float far = 0;
  EXPECT_TRUE(MFnMesh(path).closestIntersection(MFloatPoint(1, 5, 2), MFloatVector(0, -1, 0), NULL,
                                                NULL, false, MSpace::kWorld, 100, false, NULL, hit,
                                                &far, NULL, NULL, NULL, NULL));
  EXPECT_NEAR(hit.y, 2.0, 0.1);
  EXPECT_EQ(mesh.getPoint(0, corner, MSpace::kWorld), MS::kInvalidParameter)
      << "an object has no place in the world";

  using M = MSceneMessage;
  const MCallbackId ids[] = {
      M::addCallback(M::kBeforeNew, Hear<1>),      M::addCallback(M::kAfterNew, Hear<2>),
      M::addCallback(M::kBeforeOpen, Hear<5>),     M::addCallback(M::kAfterOpen, Hear<6>),
      M::addCallback(M::kBeforeSave, Hear<12>),    M::addCallback(M::kAfterSave, Hear<13>),
      M::addCallback(M::kBeforeImport, Hear<3>),   M::addCallback(M::kAfterImport, Hear<4>),
      M::addCallback(M::kAfterReference, Hear<15>)};
  const std::string file = testing::TempDir() + "mayahost2.scene";
  g_heard.clear();
  MFileIO::saveAs(file.c_str());
  MFileIO::newFile(true);
  MFileIO::open(file.c_str(), NULL, true);
  MFileIO::import(file.c_str(), NULL, false, "more");
  MFileIO::reference(file.c_str(), false, false, "ref");
  MFileIO::open("/nowhere/nothing", NULL, true);
  EXPECT_EQ(g_heard, "12 13 1 2 5 6 3 4 15 5 ");
  EXPECT_FALSE(Named("more:transform1").isNull());
  const MObject referenced = Named("ref:transform1");
  EXPECT_TRUE(MFnDependencyNode(referenced).isFromReferencedFile());
  mayahost::Type("delete ref:transform1");
  EXPECT_TRUE(mayahost::Failed());
  const std::string driven = mayahost::Type(
      "createNode transform -n drv; createNode transform -n fol; setDrivenKeyframe -cd drv.ty -dv "
      "0 -v 0 -itt linear -ott linear fol.rx;"
      "setDrivenKeyframe -cd drv.ty -dv 10 -v 90 -itt linear -ott linear fol.rx; setAttr drv.ty 5; "
      "getAttr fol.rx");
  EXPECT_NEAR(std::stod("0" + driven), 45, 1e-9);
  // What is done to a referenced node is the scene's: it survives unloading, saving and opening.
  mayahost::Type(
      "group -em -n holder; parent ref:transform1 holder; setAttr ref:transform1.ty 7; setKeyframe "
      "-v 4 -at tx ref:transform1");
  const std::string outer = testing::TempDir() + "mayahost3.scene";
  const auto kept = [] {
    return mayahost::Type("getAttr ref:transform1.ty") +
           mayahost::Type("getAttr ref:transform1.tx") +
           mayahost::Type("listRelatives -p ref:transform1") +
           mayahost::Type("listConnections ref:transform1.tx");
  };
  const std::string before = kept();
  EXPECT_EQ(before, "74holdertransform1_translateX");
  for (int round = 0; round < 2; ++round) {
    MFileIO::saveAs(outer.c_str());
    MFileIO::open(outer.c_str(), NULL, true);
    EXPECT_EQ(kept(), before);
    mayahost::Type("file -ur \"" + file + "\"");
    EXPECT_TRUE(Named("ref:transform1").isNull());
    if (round == 1) MFileIO::saveAs(outer.c_str()), MFileIO::open(outer.c_str(), NULL, true);
    mayahost::Type("file -lr \"" + file + "\"");
    EXPECT_EQ(kept(), before);
  }
  std::remove(outer.c_str());
  for (const MCallbackId id : ids) EXPECT_EQ(MMessage::removeCallback(id), MS::kSuccess);
  EXPECT_EQ(MMessage::removeCallback(ids[0]), MS::kFailure);
  std::remove(file.c_str());
}

TEST_F(MayaHost, KeepsAttributesOfAllKinds) {
  using mayahost::Type;
  Type(
      "createNode network -n s; addAttr -ln da -dt doubleArray s; addAttr -ln sa -dt stringArray "
      "s; addAttr -ln lim -nn \"The Limit\" -max 2 -smx 1 s");
  Type("undoInfo -ock -cn block");
  Type(
      "setAttr s.da -type doubleArray 3 1.5 2 3; setAttr s.sa -type stringArray 2 \"one two\" "
      "three");
  Type("aliasAttr power s.lim; setAttr s.power 1");
  Type("undoInfo -cck");
  Type("setAttr s.power 9");
  EXPECT_TRUE(mayahost::Failed()) << "past its maximum";
  mayahost::Undo();
  EXPECT_EQ(Type("getAttr s.da"), "") << "a chunk is one step";
  mayahost::Redo();
  const std::string attributes = testing::TempDir() + "mayahost4.scene";
  MFileIO::saveAs(attributes.c_str());
  MFileIO::open(attributes.c_str(), NULL, true);
  EXPECT_EQ(Type("getAttr s.da") + "|" + Type("getAttr s.sa") + "|" + Type("getAttr s.power") +
                "|" + Type("attributeQuery -n s -nn lim") + "|" +
                Type("attributeQuery -n s -smx lim"),
            "1.5 2 3|one two three|1|The Limit|1");
  std::remove(attributes.c_str());
  MFnDependencyNode node;
  node.create("network", "store");
  MFnTypedAttribute typed;
  MFnNumericAttribute number;
  MStringArray words;
  words.append("one \"quoted\"");
  words.append("two\nlines");
  node.addAttribute(typed.create("words", "wd", MFnData::kStringArray));
  node.addAttribute(typed.create("text", "tx", MFnData::kString));
  node.addAttribute(number.create("place", "pl", MFnNumericData::k3Double));
  node.addAttribute(number.create("count", "ct", MFnNumericData::kInt));
  number.setArray(true);
  EXPECT_EQ(node.addAttribute(number.create("count", "cx", MFnNumericData::kInt)), MS::kFailure)
      << "the name is taken";
  MFnStringArrayData data;
  node.findPlug("words", false).setValue(data.create(words));
  node.findPlug("text", false).setValue(MString("a\\b \"c\""));
  node.findPlug("place", false).child(1).setValue(0.1);
  node.findPlug("count", false).elementByLogicalIndex(7).setValue(-3);
  node.findPlug("text", false).setLocked(true);
  EXPECT_EQ(node.findPlug("text", false).setValue(MString("x")), MS::kFailure);
  EXPECT_EQ(node.findPlug("count", false).numElements(), 1u);
  MSelectionList members;
  members.add("persp");
  MFnSet set;
  set.create(members);
  MFnNurbsCurve curve;
  curve.create(MPointArray({MPoint(0, 0, 0), MPoint(3, 4, 0), MPoint(3, 4, 5)}),
               MDoubleArray({0, 1, 2}), 1, MFnNurbsCurve::kOpen, false, false);
  EXPECT_NEAR(curve.length(), 10.0, 1e-6);
  EXPECT_NEAR(curve.findParamFromLength(7.5), 1.5, 1e-6);
  const std::string file = testing::TempDir() + "mayahost3.scene", before = mayahost::Dump();
  MFileIO::saveAs(file.c_str());
  MFileIO::open(file.c_str(), NULL, true);
  EXPECT_EQ(mayahost::Dump(), before);
  MFnDependencyNode again(Named("store"));
  EXPECT_EQ(MFnStringArrayData(again.findPlug("wd", false).asMObject()).array(), words);
  EXPECT_EQ(again.findPlug("count", false)[0].asInt(), -3);
  EXPECT_EQ(again.findPlug("text", false).asString(), "a\\b \"c\"");

  // The rig of hot keys, boxes and shelves.
  EXPECT_EQ(mayahost::Type("hotkeySet -current \"mine\"; hotkeySet -q -current"), "mine");
  mayahost::Type("hotkey -k \"Space\" -ctl -alt -name \"Go\"");
  EXPECT_EQ(mayahost::Type("hotkey -q -name -ctl -alt \"Space\""), "Go");
  EXPECT_EQ(mayahost::Type("confirmDialog -title \"A\" -message \"b; \\\"c\\\"\" -button \"Ok\";"),
            "Ok");
  EXPECT_EQ(mayahost::Said().back(), "box: A|b; \"c\"");
  std::remove(file.c_str());
}

}  // namespace

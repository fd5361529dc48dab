// Shapes of the user's as rigs meet them: built by other nodes, changing over time, of NURBS.
#include <maya/MDGModifier.h>
#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MPxNode.h>

#include "MayaFixture.h"
#include "adaptor/Performance.h"
#include "adaptor/maya/Channels.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/CSnapshot_Shape.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

/// A level square of 10 m that stands as high as its input says.
class LiftNode final : public MPxNode {
 public:
  static void* Make() { return new LiftNode; }
  static MStatus Initialize() {
    MFnUnitAttribute unit;
    MFnTypedAttribute typed;
    s_height = unit.create("height", "ht", MFnUnitAttribute::kDistance, 0.0);
    s_mesh = typed.create("lifted", "li", MFnData::kMesh);
    typed.setWritable(false);
    addAttribute(s_height);
    addAttribute(s_mesh);
    return attributeAffects(s_height, s_mesh);
  }
  MStatus compute(const MPlug& plug, MDataBlock& data) override {
    if (plug != s_mesh) return MS::kUnknownParameter;
    ++s_computed;
    const double y = data.inputValue(s_height).asDistance().asCentimeters();
    MPointArray corners;
    for (const auto& [x, z] : {std::pair(-500, -500), {-500, 500}, {500, 500}, {500, -500}})
      corners.append(MPoint(x, y, z));
    MFnMeshData maker;
    const MObject mesh = maker.create();
    const MIntArray counts = {4}, corner = {0, 1, 2, 3};
    MFnMesh().create(4, 1, corners, counts, corner, mesh);
    MDataHandle out = data.outputValue(s_mesh);
    out.set(mesh);
    return data.setClean(plug);
  }
  static MStatus Load(MObject plugin) {
    return MFnPlugin(plugin).registerNode("lift", MTypeId(0x1234), Make, Initialize);
  }
  static MStatus Unload(MObject plugin) {
    return MFnPlugin(plugin).deregisterNode(MTypeId(0x1234));
  }
  static MObject s_height, s_mesh;
  static int s_computed;
};
MObject LiftNode::s_height, LiftNode::s_mesh;
int LiftNode::s_computed = 0;

class MayaShapes : public testing::Test {
 protected:
  MayaShapes() {
    EXPECT_TRUE(mayahost::Load("lift", LiftNode::Load));
    rig = host.Maya().CreateMeshNode({owner, "Rig", "Rig"}, nullptr, nullptr, 0);
  }
  ~MayaShapes() override {
    host.Maya().SceneGone();
    MFileIO::newFile(true);
    EXPECT_TRUE(mayahost::Unload("lift", LiftNode::Unload));
  }
  /// A ground that a node builds; what lifts it.
  MPlug Lifted(const char* name) {
    const MObject transform = MayaFixture::NewTransform(name, MObject::kNullObj);
    MDagModifier modifier;
    const MObject mesh = modifier.createNode("mesh", transform);
    const MObject lift = modifier.MDGModifier::createNode("lift");
    modifier.connect(maya::FindPlug(lift, "lifted"), maya::FindPlug(mesh, "inMesh"));
    modifier.doIt();
    return maya::FindPlug(lift, "height");
  }
  static void Animate(const MPlug& plug, double perSecond) {
    MDGModifier modifier;
    const MObject curve = maya::CurveFor(plug, modifier);
    modifier.doIt();
    for (const double time : {0.0, 4.0}) maya::PutKey(curve, time, time * perSecond, nullptr);
  }
  void Begin() {
    util::ReturnValue<std::vector<CInterface*>> result(instances);
    host.Maya().BeginUndoBlock("Take");
    host.Maya().BeginRecording(0.0, result);
  }
  void End() {
    host.Maya().EndRecording();
    host.Maya().EndUndoBlock();
    host.Maya().ClearUndoHistory();
  }
  double HeightOf(const char* name, double time) {
    CoreNode* const node = host.UserNode(name);
    rws::CSnapshot_Mesh* const mesh = node->GetSnapshotMesh(time);
    rws::RayHit hit;
    const bool met = mesh && mesh->Intersect({0.5, 100, 0.25}, {0, -1, 0}, 1000.0, hit);
    node->ReleaseSnapshot(mesh);
    return met ? hit.point.y : NAN;
  }
  void MoveRig(double time, double y) {
    Matrix<double> pose;
    pose.setTranslation({0, y, 0});
    static_cast<maya::CMayaNode*>(rig)->SetWorldPose(time, pose, true);
  }

  MayaFixture host;
  CInterface* const owner = reinterpret_cast<CInterface*>(&host);
  std::vector<CInterface*> instances = {owner};
  CoreNode* rig = nullptr;
};

TEST_F(MayaShapes, StandWhereTheirConstructionPutsThemAtTheTicksTime) {
  Animate(Lifted("Tide"), 100.0);
  Lifted("Still");
  MDGModifier modifier;
  modifier.connect(maya::FindPlug(static_cast<maya::CMayaNode*>(rig)->GetObject(), "ty"),
                   Lifted("Raft"));
  const MObject rider = MayaFixture::NewTransform("Rider", MObject::kNullObj);
  modifier.connect(maya::FindPlug(static_cast<maya::CMayaNode*>(rig)->GetObject(), "ty"),
                   maya::FindPlug(rider, "ty"));
  modifier.doIt();
  EXPECT_NEAR(HeightOf("Tide", 2.0), 2.0, 1e-6) << "outside of a take";
  Begin();
  for (const double time : {0.5, 1.0, 3.0}) {
    EXPECT_NEAR(HeightOf("Tide", time), time, 1e-6) << "the host's time is not moved";
    EXPECT_EQ(HeightOf("Still", time), 0.0);
    MoveRig(time, 7.0 * time);
    EXPECT_NEAR(HeightOf("Raft", time), 7.0 * time, 1e-5) << "in the frame that moves it";
    auto* const carried = static_cast<maya::CMayaNode*>(host.UserNode("Rider"));
    EXPECT_NEAR(carried->GetWorldPose(time).translation().y, 7.0 * time, 1e-9);
  }
  LiftNode::s_computed = 0;
  HeightOf("Tide", 3.5);
  EXPECT_EQ(LiftNode::s_computed, 1);
  for (int i = 0; i < 5; ++i) HeightOf("Still", 3.0 + i), HeightOf("Tide", 3.5);
  EXPECT_EQ(LiftNode::s_computed, 1) << "once a take, or a time";
  End();
}

TEST_F(MayaShapes, SurfacesOfNurbsCarryACarAsMeshesDo) {
  const auto drive = [](bool asSurface) {
    MayaFixture world;
    MPointArray corners;
    for (const auto& [x, z] : {std::pair(-500, -500), {-500, 500}, {500, -500}, {500, 500}})
      corners.append(MPoint(x, 0.125 * x, z));
    const MObject transform = MayaFixture::NewTransform("Slope", MObject::kNullObj);
    const MDoubleArray knots = {0, 1};
    const MIntArray counts = {4}, face = {0, 1, 3, 2};
    if (asSurface)
      MFnNurbsSurface().create(corners, knots, knots, 1, 1, MFnNurbsSurface::kOpen,
                               MFnNurbsSurface::kOpen, false, transform);
    else
      MFnMesh().create(4, 1, corners, counts, face, transform);
    Performance car(world, "4WheelerExt");
    CoreNode* const gravity = world.Maya().FindNode(car.rig, "GravityDirectionMesh");
    EXPECT_TRUE(gravity->SetParent(world.UserNode("Slope")));
    return car.Resimulate();
  };
  const Poses onMesh = drive(false);
  ExpectAlike(onMesh, drive(true), "on a surface of the same plane", 1e-5);
  const auto& body = onMesh.at("CarBodyMesh");
  EXPECT_GT((body.back().translation() - body.front().translation()).length(), 0.1);
}

TEST_F(MayaShapes, CurvesOfNurbsHaveTheLengthAndPlacesOfTheHosts) {
  const MPointArray points = [] {
    MPointArray list;
    for (int i = 0; i < 7; ++i) list.append(MPoint(100.0 * i, 80.0 * (i % 2), 150.0 * (i % 3)));
    return list;
  }();
  const MDoubleArray knots = {0, 0, 0, 1, 2, 3, 4, 4, 4};
  const MObject transform = MayaFixture::NewTransform("Bend", MObject::kNullObj);
  MFnNurbsCurve curve;
  curve.create(points, knots, 3, MFnNurbsCurve::kOpen, false, false, transform);
  host.Place("Bend", {{1, 2, 3}, {0, 0.6, 0, 0.8}, {1, 1, 1}});
  CoreNode* const node = host.UserNode("Bend");
  rws::CSnapshot_Shape* const shape = node->GetSnapshotShape(0.0);
  ASSERT_NE(shape, nullptr);
  const Matrix<double> pose = static_cast<maya::CMayaNode*>(node)->GetWorldPose(0.0);
  const double length = curve.length();
  EXPECT_NEAR(shape->GetLength(), length, 1e-3 * length);
  for (const double at : {0.0, 0.2, 0.5, 0.9, 1.0}) {
    MPoint point;
    curve.getPointAtParam(curve.findParamFromLength(at * length), point);
    const auto expected = pose.transformPoint(util::Vector3<double>(point.x, point.y, point.z));
    EXPECT_LT((shape->GetPoint(at) - expected).length(), 1e-3 * length) << at;
  }
  node->ReleaseSnapshot(shape);
}

}  // namespace
}  // namespace orv::tests

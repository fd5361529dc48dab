// Takes of rigs in Maya: the same poses as without a host, and nothing left of one that is undone.
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>

#include <functional>
#include <sstream>

#include "MayaFixture.h"
#include "adaptor/HeadlessFixture.h"
#include "adaptor/Performance.h"
#include "adaptor/maya/Channels.h"
#include "core/interface/CCameraPlugin.h"
#include "core/services/Log.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

MPlug PlugOf(CoreNode* node, const char* name) {
  return maya::FindPlug(static_cast<maya::CMayaNode*>(node)->GetObject(), name);
}

/// The lines in which two dumps differ, for who reads a failure.
std::string Difference(const std::string& a, const std::string& b) {
  std::stringstream left(a), right(b);
  std::string l, r, text;
  while (std::getline(left, l), std::getline(right, r), left || right) {
    if (l != r && text.size() < 2000) text += "- " + l + "\n+ " + r + "\n";
    if (!left) l.clear();
    if (!right) r.clear();
  }
  return text;
}

TEST(MayaTake, PosesAreThoseOfTheHostWithoutAProgramAtEveryRate) {
  for (const double fps : {24.0, 25.0, 30.0, 24000.0 / 1001.0}) {
    for (const char* kind : {"4WheelerExt", "MotionFilterCam"}) {
      SCOPED_TRACE(kind + std::string(" at ") + std::to_string(fps));
      HeadlessFixture plain;
      const Poses expected = Performance(plain, kind, fps).Resimulate();
      for (const bool zUp : {false, true}) {
        const bool inMetres = zUp == (fps > 24.5);
        MayaFixture host({zUp, inMetres ? MDistance::kMeters : MDistance::kCentimeters});
        Performance there(host, kind, fps);
        const Poses first = there.Resimulate();
        ExpectAlike(expected, first, zUp ? "Z up" : "Y up");
        EXPECT_EQ(there.Resimulate(), first) << "bit for bit within a session";
      }
    }
  }
}

TEST(MayaTake, EveryRigPerformsAsWithoutAProgramAndAfterASave) {
  for (rws::CCameraPlugin* tool : rws::addon::AllRigs()) {
    SCOPED_TRACE(tool->GetId());
    HeadlessFixture plain;
    const Poses expected = Performance(plain, tool->GetId()).Resimulate();
    MayaFixture host({true, MDistance::kCentimeters});
    Performance there(host, tool->GetId());
    ExpectAlike(expected, there.Resimulate(), "the first run");
    there.SaveAndOpen();
    ExpectAlike(expected, there.Resimulate(), "after a save");
  }
}

Matrix<double> Pose() {
  Matrix<double> pose = Matrix<double>::rotationAxisAngle(50.0, 0.36, 0.8, 0.48);
  pose.setTranslation({1, 2, 3});
  return pose;
}

TEST(MayaTake, UndoLeavesTheSceneAsItWasToTheByte) {
  for (const char* kind : {"4WheelerExt", "MotionFilterCam"}) {
    SCOPED_TRACE(kind);
    MayaFixture host;
    Performance car(host, kind);
    const std::string before = mayahost::Dump();
    const Poses poses = car.Resimulate();
    const std::string taken = mayahost::Dump();
    EXPECT_NE(taken, before);
    EXPECT_TRUE(mayahost::Undo());
    EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
    EXPECT_TRUE(mayahost::Redo());
    EXPECT_EQ(mayahost::Dump(), taken) << Difference(taken, mayahost::Dump());
    // A retake over the keys of the one before.
    car.rig->SetTrack(0, {});
    const Poses other = car.Resimulate();
    EXPECT_NE(other, poses);
    EXPECT_TRUE(mayahost::Undo());
    EXPECT_EQ(mayahost::Dump(), taken) << Difference(taken, mayahost::Dump());
    EXPECT_EQ(car.Read(), poses) << "to the bit";
    EXPECT_TRUE(mayahost::Redo());
    EXPECT_EQ(car.Read(), other);
    EXPECT_TRUE(mayahost::Undo());
    EXPECT_TRUE(mayahost::Undo());
    EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
  }
}

TEST(MayaTake, ShowsTheTakeAndPutsBackWhatHasNoCurve) {
  MayaFixture host;
  auto& adaptor = host.Maya();
  CoreNode* const body = adaptor.CreateMeshNode({nullptr, "Body", "Body"}, nullptr, nullptr, 0);
  CInterface* const owner = reinterpret_cast<CInterface*>(&host);
  CoreNode* const rig = adaptor.CreateMeshNode({owner, "Rig", "4 Rig"}, nullptr, nullptr, 0);
  EXPECT_EQ(rig->GetSceneName(), "_4_Rig");
  EXPECT_EQ(rig->GetName(), "Rig");
  EXPECT_TRUE(rig->SetParent(body));
  CoreNode* const camera = adaptor.CreateCameraNode({owner, "Eye", "Eye"}, nullptr, 40.0, 0.1);
  const auto plugOfLens = [&](const char* name) {
    MDagPath path;
    MSelectionList list;
    list.add(camera->GetSceneName().c_str());
    list.getDagPath(0, path);
    path.extendToShape();
    return MFnDependencyNode(path.node()).findPlug(name, true);
  };
  const double focal = plugOfLens("focalLength").asDouble();
  const std::string before = mayahost::Dump();
  MAnimControl::setAutoKeyMode(true);
  std::vector<CInterface*> instances = {owner};
  util::ReturnValue<std::vector<CInterface*>> result(instances);
  adaptor.BeginUndoBlock("Take");
  adaptor.BeginRecording(0.0, result);
  EXPECT_FALSE(MAnimControl::autoKeyMode());
  Matrix<double> pose;
  pose.setTranslation({1, 2, 3});
  rws::CSnapshot* const snapshot = rig->GetSnapshot(1.0);
  snapshot->SetMatrix(pose.data());
  auto* const eye = static_cast<maya::CMayaNode*>(camera);
  eye->SetLensValue(rws::adaptor::LensValue::kFocusDistance, 1.0, 7.0);
  eye->SetLensValue(rws::adaptor::LensValue::kFieldOfView, 1.0, 20.0);
  EXPECT_EQ(PlugOf(rig, "tx").asDouble(), 0.0) << "ahead of the write of the time";
  adaptor.SetCurrentTime(1.0);
  EXPECT_EQ(PlugOf(rig, "tx").asDouble(), 1.0);
  EXPECT_NEAR(plugOfLens("focusDistance").asDouble(), 700.0, 1e-9);
  EXPECT_NEAR(plugOfLens("focalLength").asDouble() * std::tan(util::kPi / 18.0),
              12.7 * plugOfLens("verticalFilmAperture").asDouble(), 1e-9);
  EXPECT_NEAR(eye->GetLensValue(rws::adaptor::LensValue::kFieldOfView, 0.0), 40.0, 1e-9);
  EXPECT_EQ(maya::ToSeconds(MAnimControl::currentTime()), 1.0);
  EXPECT_FALSE(rig->HasKeys());
  EXPECT_FALSE(adaptor.HostUndo()) << "in a take";
  rig->ReleaseSnapshot(snapshot);
  adaptor.EndRecording();
  EXPECT_EQ(PlugOf(rig, "tx").asDouble(), 1.0) << "as keys";
  EXPECT_NE(plugOfLens("focalLength").asDouble(), focal) << "as keys";
  adaptor.CancelUndoBlock();
  adaptor.SetCurrentTime(0.0);
  EXPECT_TRUE(MAnimControl::autoKeyMode());
  MAnimControl::setAutoKeyMode(false);
  EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
  EXPECT_FALSE(adaptor.HostRedo());
}

TEST(MayaTake, ARigWithLockedLayeredOrConstrainedChannelsStaysOut) {
  const char* const kDriven = "is driven by a constraint, a layer or another node";
  struct Case {
    const char* mel;
    std::string words;
  };
  const Case cases[] = {
      {"setAttr -lock 1 NODE.ty", "ty is locked"},
      {"setAttr -lock 1 NODE.rotate", "rx is locked"},
      {"createNode animLayer -n Layer; createNode addDoubleLinear -n Blend; "
       "connectAttr Blend.output NODE.ty",
       std::string("ty ") + kDriven},
      {"createNode pointConstraint -n Hold; connectAttr Hold.constraintTranslate NODE.translate",
       std::string("tx ") + kDriven},
      {"createNode animCurveUL -n Driven; connectAttr Mover.rx Driven.input; "
       "connectAttr Driven.output NODE.tz",
       std::string("tz ") + kDriven},
  };
  for (const auto& [mel, words] : cases) {
    SCOPED_TRACE(mel);
    MayaFixture host;
    Performance car(host, "4WheelerExt");
    CoreNode* const chief = car.Nodes().front();
    std::string line = mel;
    for (std::size_t at = line.find("NODE"); at != line.npos; at = line.find("NODE"))
      line.replace(at, 4, chief->GetSceneName());
    const std::size_t depth = mayahost::UndoQueue().size();
    mayahost::Type(line);
    ASSERT_FALSE(mayahost::Failed());
    const std::string before = mayahost::Dump();
    EXPECT_EQ(car.core.BeginResimulation(0.0, 1.0), 0);
    while (car.core.StepResimulation()) continue;
    car.core.EndResimulation();
    EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
    const std::vector<std::string> warnings = host.Maya().TakeWarnings();
    ASSERT_EQ(warnings.size(), 1u) << "named once";
    EXPECT_NE(warnings[0].find(chief->GetSceneName()), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[0].find(words), std::string::npos) << warnings[0];
    while (mayahost::UndoQueue().size() > depth) EXPECT_TRUE(mayahost::Undo());
    EXPECT_FALSE(car.Resimulate().empty());
    EXPECT_TRUE(host.Maya().TakeWarnings().empty());
  }
}

TEST(MayaTake, InstancesAndJointsStandWhereTheHostShowsThem) {
  for (const bool zUp : {false, true}) {
    MayaFixture host({zUp, MDistance::kCentimeters});
    const auto name = [](CoreNode* node) { return static_cast<maya::CMayaNode*>(node); };
    const auto shows = [&](CoreNode* node, const Matrix<double>& pose, const char* what) {
      SCOPED_TRACE(what);
      const Matrix<double> shown = host.Maya().GetSpace().WorldToRig(host.HostWorld(node, 1.0));
      for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(name(node)->GetWorldPose(1.0)[i], pose[i], 1e-9) << i;
        EXPECT_NEAR(shown[i], pose[i], 1e-9) << i;
      }
    };
    // A leaf below two branches.
    mayahost::Type("createNode transform -n Left");
    mayahost::Type("createNode transform -n Right");
    mayahost::Type("createNode transform -n Leaf -p Left");
    host.Place("Left", {{1, 2, 3}, {0, 0.6, 0, 0.8}, {1, 1, 1}});
    host.Place("Right", {{-4, 0, 1}, {0.6, 0, 0, 0.8}, {1, 1, 1}});
    CoreNode* const left = host.UserNode("Left");
    CoreNode* const right = host.UserNode("Right");
    MObject leaf = name(left->GetChild(0) ? host.UserNode("|Left|Leaf") : nullptr)->GetObject();
    EXPECT_TRUE(MFnDagNode(name(right)->GetObject()).addChild(leaf, MFnDagNode::kNextPos, true));
    CoreNode* const first = host.UserNode("|Left|Leaf");
    CoreNode* const second = host.UserNode("|Right|Leaf");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_FALSE(first->IsSame(second));
    EXPECT_EQ(first->GetParent(), left);
    EXPECT_EQ(second->GetParent(), right);
    name(first)->SetWorldPose(1.0, Pose(), false);
    shows(first, Pose(), "the first");
    shows(second,
          name(right)->GetWorldPose(1.0) * (name(left)->GetWorldPose(1.0).affineInverse() * Pose()),
          "the second");
    // A joint with an orientation and an order of the user's, then elsewhere.
    mayahost::Type("createNode joint -n Root");
    mayahost::Type("createNode joint -n Tip -p Root");
    for (const char* joint : {"Root", "Tip"}) {
      CoreNode* const node = host.UserNode(joint);
      PlugOf(node, "jointOrientX").setDouble(0.4);
      PlugOf(node, "jointOrientZ").setDouble(-1.1);
      PlugOf(node, "rotateAxisY").setDouble(0.3);
      PlugOf(node, "rotateOrder").setShort(4);
      Matrix<double> pose = Pose();
      for (const double time : {0.0, 1.0, 2.0}) {
        pose.setTranslation({time, 5, 0.5});
        name(node)->SetWorldPose(time, pose, true);
      }
      pose.setTranslation({1, 5, 0.5});
      shows(node, pose, "keyed");
      EXPECT_EQ(PlugOf(node, "rotateOrder").asInt(), 4);
      EXPECT_TRUE(node->SetParent(second));
      shows(node, pose, "below an instance");
      EXPECT_TRUE(node->SetParent(host.UserNode("Mover")));
      shows(node, pose, "moved");
    }
  }
}

TEST(MayaTake, FiltersTheAnglesOfTheLatestTakeAndTakesThatBack) {
  MayaFixture host;
  Performance car(host, "4WheelerExt");
  car.Resimulate();
  MFnAnimCurve turned(maya::CurveOf(PlugOf(car.Nodes().front(), "ry")));
  for (unsigned i = 20; i < turned.numKeys(); ++i) turned.setValue(i, turned.value(i) + 4.0 * M_PI);
  const double before = turned.value(19), after = turned.value(20);
  EXPECT_GT(std::abs(after - before), 3.0 * M_PI);
  const std::string jumped = mayahost::Dump();
  host.Maya().BeginUndoBlock("Filter");
  host.Maya().FilterCurves();
  host.Maya().EndUndoBlock();
  for (unsigned i = 1; i < turned.numKeys(); ++i)
    EXPECT_LT(std::abs(turned.value(i) - turned.value(i - 1)), M_PI);
  const std::string filtered = mayahost::Dump();
  EXPECT_TRUE(host.Maya().HostUndo());
  EXPECT_EQ(mayahost::Dump(), jumped) << Difference(jumped, mayahost::Dump());
  EXPECT_TRUE(host.Maya().HostRedo());
  EXPECT_EQ(mayahost::Dump(), filtered);
}

TEST(MayaTake, OfCopiesWithATagTheNameDecidesElseTheFirst) {
  MayaFixture host;
  auto& adaptor = host.Maya();
  CoreNode* const hook = host.UserNode("Hook");
  EXPECT_TRUE(adaptor.TagNode(hook, "Rig/Hook"));
  mayahost::Type("duplicate -n Copy Hook");
  CInterface* const owner = reinterpret_cast<CInterface*>(&host);
  EXPECT_EQ(adaptor.ClaimTaggedNodes({owner, "Hook", "Copy"}, "Rig/Hook"), host.UserNode("Copy"));
  EXPECT_EQ(adaptor.ClaimTaggedNodes({owner, "Hook", "Gone"}, "Rig/Hook"), hook);
  EXPECT_EQ(adaptor.ClaimTaggedNodes({owner, "Hook", "Hook"}, "Rig/Hoo"), nullptr);
}

TEST(MayaTake, TurnsOffWhatWouldDisturbATakeAndPaintsAsItGoes) {
  MayaFixture host;
  const auto cached = [] { return mayahost::Type("evaluator -q -name \"cache\" -enable"); };
  Performance car(host, "4WheelerExt");
  for (const bool on : {true, false}) {
    mayahost::Type(std::string("evaluator -name \"cache\" -enable ") + (on ? "1" : "0"));
    MAnimControl::setAutoKeyMode(on);
    EXPECT_EQ(car.core.BeginResimulation(0.0, 1.0), 0);
    EXPECT_EQ(cached(), "0");
    EXPECT_FALSE(MAnimControl::autoKeyMode());
    const int painted = mayahost::Refreshes();
    for (int i = 0; i < 20; ++i) host.Maya().SetCurrentTime(i / 24.0);
    EXPECT_GT(mayahost::Refreshes(), painted);
    car.core.EndResimulation();
    EXPECT_EQ(cached(), on ? "1" : "0");
    EXPECT_EQ(MAnimControl::autoKeyMode(), on);
  }
  MAnimControl::setAutoKeyMode(false);
}

/// A step of undo without a rig.
class Block {
 public:
  Block(MayaFixture& host, const char* name) {
    host.Maya().BeginUndoBlock(name);
    id = host.Maya().GetUndoBlock();
    host.Maya().FindSceneNode("Hook")->Rename(name);
    host.Maya().FindSceneNode(name)->Rename("Hook");
    host.Maya().PushUndo(new Step(log, name));
    host.Maya().EndUndoBlock();
  }
  std::vector<std::string> log;
  int id = 0;

 private:
  struct Step final : rws::CUndo {
    Step(std::vector<std::string>& l, std::string n) : log(l), name(std::move(n)) {}
    void Undo(bool) override { log.push_back(name + " undone"); }
    void Redo() override { log.push_back(name + " redone"); }
    std::vector<std::string>& log;
    std::string name;
  };
};

TEST(MayaTake, AQueueThatWasTrimmedFlushedOrOffNeverTakesAnotherBlockBack) {
  MayaFixture host;
  const std::vector<std::string> undone = {"One undone"};
  Block one(host, "One");
  mayahost::Type("undoInfo -state off");
  Block two(host, "Two");
  mayahost::Type("undoInfo -state on");
  Block three(host, "Three");
  EXPECT_FALSE(host.Maya().UndoBlock(two.id)) << "not in the queue";
  EXPECT_TRUE(host.Maya().UndoBlock(three.id));
  EXPECT_EQ(three.log.size(), 1u);
  EXPECT_FALSE(host.Maya().UndoBlock(two.id));
  mayahost::Undo();  // the entry of One: Two stands between
  EXPECT_TRUE(one.log.empty());
  EXPECT_TRUE(two.log.empty());
  host.Maya().ClearUndoHistory();
  EXPECT_TRUE(mayahost::UndoQueue().empty());
  EXPECT_FALSE(host.Maya().HostUndo());

  Block four(host, "Four");
  mayahost::Type("flushUndo");
  EXPECT_FALSE(host.Maya().HostUndo());
  Block five(host, "Five");
  EXPECT_TRUE(host.Maya().HostUndo());
  EXPECT_EQ(five.log, std::vector<std::string>{"Five undone"});
  EXPECT_TRUE(host.Maya().HostRedo());
  mayahost::Type("undoInfo -infinity off -length 2");
  Block six(host, "Six");
  Block seven(host, "Seven");
  EXPECT_TRUE(host.Maya().HostUndo());
  EXPECT_TRUE(host.Maya().HostUndo());
  EXPECT_FALSE(host.Maya().HostUndo()) << "trimmed";
  EXPECT_TRUE(four.log.empty());
  EXPECT_EQ(five.log.size(), 2u);
  EXPECT_EQ(six.log, std::vector<std::string>{"Six undone"});
  mayahost::Type("undoInfo -infinity on");
  host.Maya().ClearUndoHistory();
}

TEST(MayaTake, NodesThatTheHostDeletesComeBackWithTheirKeys) {
  MayaFixture host;
  Performance car(host, "4WheelerExt");
  const Poses taken = car.Resimulate();
  const NodeList nodes = car.Nodes();
  CoreNode* const last = nodes.back();
  const std::string name = last->GetSceneName();
  mayahost::Type("delete " + name);
  EXPECT_FALSE(last->IsValid());
  EXPECT_EQ(car.Nodes().size(), nodes.size() - 1);
  car.Resimulate();
  EXPECT_TRUE(mayahost::Undo());  // the take without it
  EXPECT_TRUE(mayahost::Undo());
  EXPECT_TRUE(last->IsValid());
  EXPECT_EQ(car.Nodes(), nodes);
  ExpectAlike(taken, car.Resimulate(), "after it came back");
}

TEST(MayaTake, EveryEditIsUndoneAndRedoneToTheByte) {
  for (const bool zUp : {false, true}) {
    MayaFixture host({zUp, MDistance::kCentimeters});
    auto& adaptor = host.Maya();
    CInterface* const owner = reinterpret_cast<CInterface*>(&host);
    CoreNode* const body = adaptor.CreateMeshNode({owner, "Body", "Body"}, nullptr, nullptr, 0);
    CoreNode* const lens = adaptor.CreateCameraNode({owner, "Lens", "Lens"}, body, 40.0, 0.1);
    auto* const mover = static_cast<maya::CMayaNode*>(host.UserNode("Mover"));
    auto* const hook = static_cast<maya::CMayaNode*>(host.UserNode("Hook"));
    util::CMesh triangle;
    triangle.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}};
    triangle.faces = {0, 1, 2};
    const std::vector<std::pair<const char*, std::function<void()>>> edits = {
        {"keys",
         [&] {
           for (const double time : {0.0, 1.0, 3.0})
             hook->SetWorldPose(
                 time, rws::adaptor::Compose({{time, 2, 0}, {0, 0.6, 0, 0.8}, {1, 1, 1}}), true);
         }},
        {"a pose without keys",
         [&] { static_cast<maya::CMayaNode*>(body)->SetWorldPose(0.0, Pose(), false); }},
        {"a keyed node below another", [&] { EXPECT_TRUE(mover->SetParent(body)); }},
        {"and to the top", [&] { EXPECT_TRUE(hook->SetParent(nullptr)); }},
        {"a lens",
         [&] {
           static_cast<maya::CMayaNode*>(lens)->SetLensValue(rws::adaptor::LensValue::kFieldOfView,
                                                             0.0, 60.0);
         }},
        {"a mesh", [&] { static_cast<maya::CMayaNode*>(body)->SetMesh(triangle); }},
        {"a colour",
         [&] {
           static_cast<maya::CMayaNode*>(body)->SetColour({1.0f, 0.5f, 0.25f});
         }},
        {"a copy of it",
         [&] {
           adaptor.DuplicateNode(body, {owner, "Copy", "Copy"}, mover);
         }},
        {"a copy with keys",
         [&] {
           adaptor.DuplicateNode(hook, {owner, "Hook", "Hook"}, nullptr);
         }},
        {"no mesh", [&] { EXPECT_TRUE(adaptor.TakeMeshAway(body)); }},
        {"a tag", [&] { EXPECT_TRUE(adaptor.TagNode(body, "Rig/Body")); }},
        {"a name", [&] { hook->Rename("Crook"); }},
        {"out of sight", [&] { body->Hide(); }},
        {"a selection", [&] { lens->Select(); }},
        {"a range that grows", [&] { adaptor.SetTimeRange(-1.0, 90.0); }},
        {"an import with a shader",
         [&] {
           NodeList nodes;
           util::ReturnValue<NodeList> result(nodes);
           EXPECT_EQ(adaptor.ImportNodes(host.ImportFile(), "In_", result), "");
           EXPECT_NE(mayahost::Dump().find("In_Lid_shaderSG"), std::string::npos);
         }},
        {"nothing left", [&] { body->deleteMe(); }}};
    for (const auto& [name, edit] : edits) {
      SCOPED_TRACE(name);
      const std::string before = mayahost::Dump();
      const Matrix<double> pose = mover->GetWorldPose(3.0);
      adaptor.BeginUndoBlock(name);
      edit();
      adaptor.EndUndoBlock();
      const std::string after = mayahost::Dump();
      EXPECT_NE(after, before);
      for (int i = 0; i < 16 && mover->IsValid(); ++i)
        EXPECT_NEAR(mover->GetWorldPose(3.0)[i], pose[i], 1e-9);
      for (int turn = 0; turn < 2; ++turn) {
        EXPECT_TRUE(adaptor.HostUndo());
        EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
        EXPECT_TRUE(adaptor.HostRedo());
        EXPECT_EQ(mayahost::Dump(), after) << Difference(after, mayahost::Dump());
      }
    }
    adaptor.ClearUndoHistory();
  }
}

/// Nodes, keys, a take, other parents and copies in one block, as far as the host lets them come.
void EditAll(MayaFixture& host) {
  auto& adaptor = host.Maya();
  CInterface* const owner = reinterpret_cast<CInterface*>(&host);
  auto* const hook = static_cast<maya::CMayaNode*>(host.UserNode("Hook"));
  adaptor.BeginUndoBlock("All");
  auto* const body = static_cast<maya::CMayaNode*>(
      adaptor.CreateMeshNode({owner, "Body", "Body"}, nullptr, nullptr, 0));
  auto* const eye = static_cast<maya::CMayaNode*>(
      adaptor.CreateCameraNode({owner, "Eye", "Eye"}, body, 40.0, 0.1));
  hook->SetWorldPose(1.0, Pose(), true);
  host.UserNode("Mover")->SetParent(body);
  std::vector<CInterface*> instances = {owner};
  util::ReturnValue<std::vector<CInterface*>> result(instances);
  adaptor.BeginRecording(0.0, result);
  if (eye) eye->SetLensValue(rws::adaptor::LensValue::kFieldOfView, 1.0, 20.0);
  if (body) {
    rws::CSnapshot* const snapshot = body->GetSnapshot(1.0);
    snapshot->SetMatrix(rws::adaptor::Compose({{1, 2, 3}, {}, {1, 1, 1}}).data());
    body->ReleaseSnapshot(snapshot);
  }
  adaptor.SetCurrentTime(1.0);
  adaptor.EndRecording();
  adaptor.FilterCurves();
  adaptor.DuplicateNode(hook, {owner, "Hook", "Hook"}, nullptr);
  if (body) body->SetColour({1.0f, 0.5f, 0.25f});
  adaptor.EndUndoBlock();
}

TEST(MayaTake, WhatTheHostRefusesIsToldAndNothingOfItStays) {
  for (const bool undoing : {false, true})
    for (int refused = 1;; ++refused) {
      SCOPED_TRACE((undoing ? "undo " : "do ") + std::to_string(refused));
      MayaFixture host;
      std::string told;
      const int listener = rws::core::AddLogListener(
          [&told](rws::core::LogLevel, const std::string& text) { told += text + "\n"; });
      const std::string before = mayahost::Dump();
      mayahost::FailModifier(undoing ? 0 : refused);
      EditAll(host);
      const int edits = mayahost::FailModifier(undoing ? refused : 0);
      host.Maya().HostUndo();
      const int runs = mayahost::FailModifier(0);
      rws::core::RemoveLogListener(listener);
      if ((undoing ? runs : edits) < refused) {
        EXPECT_GT(refused, 9);
        break;
      }
      EXPECT_NE(told, "");
      host.Maya().SetCurrentTime(0.0);
      if (!undoing) {
        EXPECT_EQ(mayahost::Dump(), before) << Difference(before, mayahost::Dump());
      }
    }
}

TEST(MayaTake, KeepsTheUsersOrderAndPivotsAndTurnsOnAcrossWholeTurns) {
  MayaFixture host({true, MDistance::kCentimeters});
  auto& adaptor = host.Maya();
  CInterface* const owner = reinterpret_cast<CInterface*>(&host);
  CoreNode* const body = adaptor.CreateMeshNode({owner, "Body", "Body"}, nullptr, nullptr, 0);
  EXPECT_EQ(PlugOf(body, "rotateOrder").asInt(), 0) << "in a scene with Z up";
  MGlobal::setYAxisUp();
  CoreNode* const upright = adaptor.CreateMeshNode({owner, "Up", "Up"}, nullptr, nullptr, 0);
  EXPECT_EQ(PlugOf(upright, "rotateOrder").asInt(), 2) << "zxy with Y up";
  MGlobal::setZAxisUp();
  PlugOf(body, "rotateOrder").setShort(3);
  for (const char* pivot : {"rotatePivotX", "scalePivotY", "rotateAxisZ", "rotatePivotTranslateY"})
    PlugOf(body, pivot).setDouble(0.7);
  const auto pose = [](int frame) {
    Matrix<double> m = Matrix<double>::rotationAxisAngle(50.0 * frame, 0.36, 0.8, 0.48);
    m.setTranslation({0.1 * frame, 1, 2});
    return m;
  };
  // Under a node that moves, which it does not follow.
  CoreNode* const free =
      adaptor.CreateMeshNode({owner, "Free", "Free"}, host.UserNode("Mover"), nullptr, 0);
  PlugOf(free, "inheritsTransform").setBool(false);
  std::vector<CInterface*> instances = {owner};
  util::ReturnValue<std::vector<CInterface*>> result(instances);
  adaptor.BeginUndoBlock("Take");
  adaptor.BeginRecording(0.0, result);
  for (int frame = 0; frame <= 60; ++frame)
    for (CoreNode* node : {body, free})
      static_cast<maya::CMayaNode*>(node)->SetWorldPose(frame / 24.0, pose(frame), true);
  adaptor.EndRecording();
  adaptor.EndUndoBlock();
  for (const int frame : {0, 7, 31, 60}) {
    for (CoreNode* node : {body, free}) {
      const Matrix<double> rig = static_cast<maya::CMayaNode*>(node)->GetWorldPose(frame / 24.0);
      const Matrix<double> shown =
          adaptor.GetSpace().WorldToRig(host.HostWorld(node, frame / 24.0));
      for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(rig[i], pose(frame)[i], 1e-12);
        EXPECT_NEAR(shown[i], pose(frame)[i], 1e-9);
      }
    }
  }
  double least = 1e9, most = -1e9;
  for (const char* name : {"rx", "ry", "rz"}) {
    const MFnAnimCurve keys(maya::CurveOf(PlugOf(body, name)));
    ASSERT_EQ(keys.numKeys(), 61u);
    EXPECT_FALSE(keys.isWeighted());
    for (unsigned i = 0; i < 61; ++i) {
      EXPECT_EQ(keys.inTangentType(i), MFnAnimCurve::kTangentLinear);
      least = std::min(least, keys.value(i)), most = std::max(most, keys.value(i));
      EXPECT_LT(std::abs(keys.value(i) - keys.value(i > 0 ? i - 1 : 0)), M_PI);
    }
  }
  EXPECT_GT(most - least, 4.0 * M_PI) << "over whole turns";
  adaptor.ClearUndoHistory();
}

}  // namespace
}  // namespace orv::tests

// What every rig must hold on the real core: one instantiation per kind of the list.
#include <iostream>

#include "core/services/Resources.h"
#include "rigs/BareRig.h"
#include "rigs/RigSuite.h"

namespace orv::tests {
namespace {

class Rigs : public testing::TestWithParam<std::string> {
 protected:
  /// A rig whose every setting that has a memory is in use.
  static std::unique_ptr<RigScene> NewScene(double fps = 25.0) {
    auto world = std::make_unique<RigScene>(GetParam(), fps);
    if (GetParam() == "Spline Speed-Controller") world->LayRail();
    if (GetParam() == "Firepower") world->LoadGun();
    if (GetParam() == "CrawlerTracks") world->LayTrack();
    for (auto* element : world->rig->GetConfig().GetElements()) {
      const std::string& label = element->GetLabel();
      if (EndsWith(label, " Change Limit")) world->Edit(label, "4");
      if (EndsWith(label, " Integrate")) world->Edit(label, "1");
      if (EndsWith(label, "Transl Response Factor")) world->Edit(label, "0.3");
    }
    return world;
  }
  static rws::core::InstanceManager& Manager(RigScene& world) {
    return static_cast<rws::core::InstanceManager&>(world.core());
  }
  static util::xml::Tag Record(RigScene& world) {
    util::xml::Tag record("RWT_Plugin");
    world.rig->WriteRecord(record);
    return record;
  }
};

std::vector<std::string> Kinds() {
  std::vector<std::string> kinds;
  for (auto* kind : AllKinds()) kinds.push_back(kind->GetId());
  return kinds;
}
INSTANTIATE_TEST_SUITE_P(Rigs, Rigs, testing::ValuesIn(Kinds()),
                         [](const auto& kind) { return TestName(kind.param); });

TEST_P(Rigs, AResimulationRepeatsATakeBitForBitAlsoInAReopenedSceneAndFromItsMiddleOn) {
  for (const double fps : {24.0, 25.0, 30.0, 50.0, 59.94, 60.0}) {
    auto world = NewScene(fps);
    world->Take(3, 60);
    const auto taken = world->PosesOf(0, 70);
    world->Resimulate(3, 60);
    EXPECT_EQ(world->PosesOf(0, 70), taken) << fps;
    world->Reopen();
    EXPECT_EQ(world->PosesOf(0, 70), taken) << fps;
    if (Kind(GetParam()).Extension(rws::kTellReplay, nullptr, nullptr) <= 0)
      world->Resimulate(25, 60);
    EXPECT_EQ(world->PosesOf(0, 70), taken) << fps;
    world->Resimulate(3, 60);
    EXPECT_EQ(world->PosesOf(0, 70), taken) << fps;
    const std::string file = world->Saved();
    world->Resimulate(3, 60);
    EXPECT_EQ(world->Saved(), file) << fps;
  }
}

/// A version of a kind's simulation and what a fixed take comes to by it.
struct KnownPoses {
  std::intptr_t version;
  std::uint64_t bits;  ///< of all doubles, where the machine's maths library is the known one
  std::uint64_t micrometres;  ///< elsewhere
};

const std::map<std::string, KnownPoses> kKnownPoses{
    {"MotionFilterCam", {1, 9791510670389082405u, 1959454311059355609u}},
    {"SteadyCam", {1, 17920373638002075316u, 15735258135319098321u}},
    {"DirectInputLink", {1, 221668762544827789u, 11983521190051260298u}},
    {"1DPositioner", {1, 14089227784804472797u, 7706366633830842622u}},
    {"1DRotator", {1, 1697762778440169669u, 18399534326298479851u}},
    {"1DScaler", {1, 2522848683829941935u, 9117487856127847459u}},
    {"4WheelerExt", {1, 5833738401733978330u, 13110030002525125697u}},
    {"Spline Speed-Controller", {1, 8785206611188334692u, 10889804356967546686u}},
    {"Firepower", {1, 16845156057852623079u, 17595907227699037757u}},
    {"CrawlerTracks", {1, 11487274984739010811u, 15225053181923617927u}},
    {"HandheldCam", {1, 12135550358232710950u, 17314876352522029841u}},
    {"Pendulum", {1, 2106122724992720036u, 6867015200588460931u}},
    {"Turntable", {1, 14459474795708479789u, 14490501074165224070u}}};

/// Of what the machine's maths library makes of some thousand numbers: another one's last bit may
/// be another.
std::uint64_t MathsLibrary() {
  HostScene::Matrix row;
  HostScene::Poses values;
  for (int i = 1; i < 4000; ++i) {
    const double x = 0.0137 * i;
    const double results[] = {
        std::sin(x),  std::cos(x),         std::tan(x),        std::exp(-x),
        std::log(x),  std::pow(x, 0.3),    std::atan2(x, 3.0), std::acos(1 / (1 + x)),
        std::cbrt(x), std::asin(x / 56.0), std::fmod(x, 0.7),  std::hypot(x, 2.0)};
    std::copy(std::begin(results), std::end(results), std::begin(row.m));
    values[""].push_back(row);
  }
  return HostScene::HashBits(values);
}
constexpr std::uint64_t kKnownMathsLibrary = 1645315686346920022u;

/// A change to a rig's motion is to be a choice, and to be known to what was performed before it.
TEST_P(Rigs, AFixedTakeGivesTheKnownPosesOfItsVersion) {
  const std::intptr_t version = Kind(GetParam()).Extension(rws::kTellSimulation, nullptr, nullptr);
  ASSERT_GE(version, 1) << GetParam() << " tells no version: derive its factory from RigFactory";
  auto world = NewScene();
  world->Take(0, 50);
  const auto poses = world->PosesOf(0, 50);
  const std::uint64_t bits = HostScene::HashBits(poses), rounded = HostScene::Hash(poses);
  const std::string newRow = "{\"" + GetParam() + "\", {" + std::to_string(version) + ", " +
                             std::to_string(bits) + "u, " + std::to_string(rounded) + "u}}";
  ASSERT_TRUE(kKnownPoses.count(GetParam())) << "a new kind: give it the row " << newRow;
  const KnownPoses& known = kKnownPoses.at(GetParam());
  for (const auto& row : kKnownPoses) EXPECT_NO_THROW(Kind(row.first)) << row.first << " is gone";
  const std::uint64_t library = MathsLibrary();
  const bool sameLibrary = library == kKnownMathsLibrary;
  if (!sameLibrary) std::cerr << "another maths library, " << library << ": micrometres count\n";
  const bool same = sameLibrary ? bits == known.bits : rounded == known.micrometres;
  EXPECT_TRUE(same || version != known.version)
      << GetParam() << " comes to other poses, and its simulation is still version " << version
      << ". If that is meant, raise the version (the number behind RigFactory, or the "
         "attribute simulation of a template's file) and put here the new row\n"
      << newRow << (sameLibrary ? "" : "\nwith bits of a machine with the known maths library");
  EXPECT_EQ(version, known.version) << "the version was raised and the row was not: put\n"
                                    << newRow;
  EXPECT_TRUE(same || version == known.version) << "these are the poses of the new version";
}

TEST_P(Rigs, ARetakeKeepsWhatLiesBeforeItAndUndoAndRedoGiveTheSavedFileByteForByte) {
  auto world = NewScene();
  auto& adaptor = world->session.GetAdaptor();
  const std::string fresh = world->Saved();
  world->Take(0, 30);
  const std::size_t shorter = world->Stored().flatten().size();
  ASSERT_TRUE(adaptor.HostUndo());
  world->Take(0, 60);
  const std::string taken = world->Saved();
  EXPECT_NE(taken, fresh);
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(world->Saved(), fresh);
  ASSERT_TRUE(adaptor.HostRedo());
  EXPECT_EQ(world->Saved(), taken);

  const auto first = world->PosesOf(0, 30);
  world->Take(30, 80);
  const auto kept = world->PosesOf(0, 30);  // a rig may have made nodes since
  for (const auto& [node, poses] : first) EXPECT_EQ(kept.at(node), poses) << node;
  const auto retaken = world->PosesOf(0, 80);
  world->Resimulate(30, 80);
  EXPECT_EQ(world->PosesOf(0, 80), retaken);
  ASSERT_TRUE(adaptor.HostUndo() && adaptor.HostUndo());
  EXPECT_EQ(world->Saved(), taken);
  world->Resimulate(20, 30);
  EXPECT_EQ(world->Stored().flatten().size(), shorter) << "what lay behind it is forgotten";
}

TEST_P(Rigs, ARenamedAndAClonedRigGoOnAsTheSame) {
  auto world = NewScene();
  world->Take(0, 20);
  auto& manager = Manager(*world);
  std::string problem;
  rws::core::Instance* clone = manager.Clone(manager.Find("Rig"), problem);
  ASSERT_TRUE(clone) << problem;
  const std::string name = clone->GetInstanceName();
  EXPECT_EQ(manager.Rename(manager.Find("Rig"), "Other"), "");
  EXPECT_TRUE(world->PosesOf(0, 20, "Rig_Attached").empty());
  world->Resimulate(0, 20);
  EXPECT_EQ(world->PosesOf(0, 20, "Other_"), world->PosesOf(0, 20, name + "_"));
}

TEST_P(Rigs, ADeletedRigLeavesNoNodeAndUndoBringsAllOfItBack) {
  auto world = NewScene();
  world->Take(10, 25);
  const auto onlyTake = world->PosesOf(0, 25);
  world = nullptr;  // one core at a time
  world = NewScene();
  const auto fresh = world->PosesOf(0, 25);
  world->Take(0, 20);
  const std::string before = world->Saved();
  auto& manager = Manager(*world);
  auto& adaptor = world->session.GetAdaptor();
  manager.Delete(manager.Find("Rig"), true);
  EXPECT_TRUE(world->PosesOf(0, 0).empty());
  EXPECT_TRUE(manager.List(false).empty());
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(world->Saved(), before);
  world->Resimulate(0, 20);
  EXPECT_EQ(world->Saved(), before);
  // Steps of the rig that was can't reach the one that is: it forgets what they would take back.
  ASSERT_TRUE(adaptor.HostUndo() && adaptor.HostUndo());
  world->MeetAgain();
  for (const auto& track : world->rig->GetTracks()) EXPECT_TRUE(track.samples.empty());
  EXPECT_EQ(world->PosesOf(0, 25), fresh);
  world->Take(10, 25);
  EXPECT_EQ(world->PosesOf(0, 25), onlyTake);
  while (adaptor.HostUndo()) {
  }
  EXPECT_TRUE(manager.List(false).empty());
}

TEST_P(Rigs, EveryProfileThatComesWithTheRigCanBeAppliedAndUndone) {
  auto world = NewScene();
  const std::string before = world->Saved();
  const std::string folder = ":/data/" + Kind(GetParam()).GetDataFolder() + "/configprofiles";
  int applied = 0;
  for (const std::string& path : rws::core::ListResources(folder, "ocp")) {
    const std::string name = path.substr(folder.size() + 1, path.size() - folder.size() - 5);
    EXPECT_EQ(world->core().LoadProfile("Rig", name), "") << name;
    world->Take(0, 5);
    ++applied;
  }
  EXPECT_GE(applied, 1);
  while (applied > 0 && world->Saved() != before && world->session.GetAdaptor().HostUndo()) {
  }
  EXPECT_EQ(world->Saved(), before);
}

TEST_P(Rigs, HiddenNodesComeBackWithUndoAndAfterATakeAndStayHiddenInAReopenedScene) {
  auto world = NewScene();
  auto& adaptor = world->session.GetAdaptor();
  const auto hidden = [&] {
    int count = 0;
    for (auto* node : world->scene().GetNodes()) count += !node->IsVisible();
    return count;
  };
  const auto has = [&](const std::string& label) {
    return !world->rig->GetConfig().FindAll(label).empty();
  };
  const int usually = hidden();
  for (const std::string label :
       {"Hide Helpers", "Hide Camera", "Hide FollowCam", "Hide AttachedCam"}) {
    if (!has(label)) continue;
    world->Edit(label, "1");
    EXPECT_GT(hidden(), usually) << label;
    ASSERT_TRUE(adaptor.HostUndo());
    EXPECT_EQ(hidden(), usually) << label;
    ASSERT_TRUE(adaptor.HostRedo());
    EXPECT_GT(hidden(), usually) << label;
    world->Edit(label, "1");  // no change, as when a profile is applied
    ASSERT_TRUE(adaptor.HostUndo());
    EXPECT_GT(hidden(), usually) << label;
    world->Reopen();
    EXPECT_GT(hidden(), usually) << label;
    world->Edit(label, "0");
    EXPECT_EQ(hidden(), usually) << label;
  }
  if (!has("Hide Helpers During Recording")) return;
  world->Edit("Hide Helpers During Recording", "1");
  world->Take(0, 3, [&] { EXPECT_GT(hidden(), usually); });
  EXPECT_EQ(hidden(), usually);
  if (!has("Hide Helpers")) return;
  world->Edit("Hide Helpers", "1");  // the animator's own doing is left alone
  world->Take(3, 5);
  EXPECT_GT(hidden(), usually);
}

TEST_P(Rigs, WhatIsSavedOfTheParametersComesBackFromTheBlobAlone) {
  auto world = NewScene();
  const util::xml::Tag fresh = Record(*world);
  for (auto* element : world->rig->GetConfig().GetElements()) {
    using Kind = rws::core::ConfigElement::Kind;
    const auto& range = element->GetRange();
    if (element->GetKind() == Kind::kSpinner || element->GetKind() == Kind::kSpinnerInt)
      element->SetNumber(std::floor(range.min + 0.37 * (range.max - range.min)));
    if (element->GetKind() == Kind::kComboBox)
      element->SetNumber(std::floor(0.37 * static_cast<double>(element->GetItems().size() - 1)));
    // Of a ground that a car has not kept there is nothing to keep.
    if (element->GetKind() == Kind::kCheckBox && element->GetLabel() != "Store Ground Mesh Data")
      element->SetNumber(1.0 - element->GetNumber());
  }
  const auto saved = world->Stored().flatten();
  BareRig opened(Manager(*world), GetParam());
  EXPECT_EQ(opened.Open(fresh, saved), 0);
  EXPECT_EQ(opened.Save(), saved);
}

TEST_P(Rigs, ABlobThatIsOldForeignOrDamagedLeavesTheDefaults) {
  auto world = NewScene();
  world->Take(0, 3);
  const auto taken = world->Stored().flatten();
  const util::xml::Tag record = Record(*world);
  int restored = 0;
  const auto savedAfter = [&](const std::vector<unsigned char>& blob) {
    BareRig opened(Manager(*world), GetParam());
    restored = opened.Open(record, blob);
    return opened.Save();
  };
  const auto fresh = savedAfter({});
  EXPECT_EQ(restored, 0);
  // Long blobs are tried at places that are not all of one kind.
  const std::size_t stride = taken.size() / 400 * 2 + 1;
  for (std::size_t size = 1; size < taken.size(); size += 7 * stride) {
    EXPECT_EQ(savedAfter({taken.begin(), taken.begin() + static_cast<long>(size)}), fresh) << size;
    EXPECT_EQ(restored, 1) << size;  // told, so that the scene keeps its record
  }

  util::DataChunk chunk(taken.data(), taken.size());
  const std::string name = chunk.name;
  const std::string plain = name.substr(0, name.find_last_not_of("0123456789") + 1);
  const int version = std::stoi(name.substr(plain.size()));
  const std::string tooOld = plain + (version == 8101 ? "8100" : "99");
  for (const std::string& other :
       {tooOld, "Other" + name.substr(plain.size()), plain, name + "x"}) {
    chunk.name = other;
    EXPECT_EQ(savedAfter(chunk.flatten()), fresh) << other;
    EXPECT_EQ(restored, other == tooOld ? 0 : 1) << other;
  }
  chunk.name = plain + std::to_string(version + 1);  // newer is read
  EXPECT_EQ(savedAfter(chunk.flatten()), taken);
  // No byte of a payload can make a history that is out of order or not finite.
  for (std::size_t at = 60; at < taken.size(); at += stride) {
    auto bent = taken;
    bent[at] = 0xff;
    const auto saved = savedAfter(bent);
    EXPECT_TRUE(saved == savedAfter(saved)) << at;
    EXPECT_EQ(restored, 0) << at;
  }
}

TEST_P(Rigs, NoSnapshotIsKeptAndANeededNodeThatIsMissingIsTold) {
  RigScene world(GetParam());
  BareRig& rig = Strip(world);
  world.Take(0, 3);
  EXPECT_EQ(rig.openSnapshots, 0);
  const util::xml::Tag record = Record(world);
  int needed = 0;
  for (const std::string name : {"CarBodyMesh", "FollowCam", "RelativeCageMesh", "CarriageNode",
                                 "Arm", "Plate", "Camera", "barrel", "driveWheel"}) {
    if (needed > 0 || !world.scene().Find("Rig_" + name)) continue;
    BareRig opened(Manager(world), GetParam());
    opened.refused = "FindNode " + name;
    EXPECT_EQ(opened.Open(record, {}), 1) << name;
    ++needed;
  }
  EXPECT_EQ(needed, 1);
}

}  // namespace
}  // namespace orv::tests

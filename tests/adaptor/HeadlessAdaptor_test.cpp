#include "adaptor/headless/HeadlessAdaptor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "util/MeshRays.h"
#include "util/ReturnValue.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor;
using namespace rws::adaptor::headless;
using Nodes = std::vector<HostNode*>;
using rws::core::CoreNode;

TEST(HeadlessAdaptor, JoinsTheSelectionsOfAGroup) {
  Scene scene;
  HeadlessAdaptor adaptor(scene);
  Nodes n;
  for (const char* name : {"a", "b", "c"}) n.push_back(&adaptor.HandOut(scene.AddNode(name)));
  n[0]->Select();
  n[1]->Extension(rws::kBeginGroupSelection, nullptr, nullptr);
  n[1]->Select();
  n[2]->Select();
  n[2]->Select();
  n[1]->Extension(rws::kEndGroupSelection, nullptr, nullptr);
  EXPECT_EQ(adaptor.GetSelection(), (Nodes{n[1], n[2]}));
  n[2]->Select();
  EXPECT_EQ(adaptor.GetSelection(), Nodes{n[2]});
  adaptor.HostUndo();
  EXPECT_EQ(adaptor.GetSelection(), (Nodes{n[1], n[2]}));
  adaptor.HostUndo();
  adaptor.HostUndo();
  EXPECT_EQ(adaptor.GetSelection(), Nodes{n[0]});
  adaptor.HostRedo();
  EXPECT_EQ(adaptor.GetSelection(), Nodes{n[1]});
  adaptor.DiscardNode(n[1]);
  EXPECT_TRUE(adaptor.GetSelection().empty());

  // A group within one block comes and goes as one.
  adaptor.BeginUndoBlock("Select all");
  n[0]->Extension(rws::kBeginGroupSelection, nullptr, nullptr);
  for (HostNode* node : {n[2], n[0], n[2]}) node->Select();
  n[0]->Extension(rws::kEndGroupSelection, nullptr, nullptr);
  adaptor.EndUndoBlock();
  adaptor.HostUndo();
  EXPECT_TRUE(adaptor.GetSelection().empty());
  adaptor.HostRedo();
  EXPECT_EQ(adaptor.GetSelection(), (Nodes{n[2], n[0]}));
}

/// A scene in which nodes of two rigs and of a user become, go, change hands and come back.
class Crowd {
 public:
  static constexpr unsigned kKinds = 5;  ///< of what `Do` does

  void Do(unsigned kind, unsigned dice) {
    CoreNode* const some = all.empty() ? nullptr : all[dice / 8 % all.size()];
    adaptor.BeginUndoBlock("block");
    if (kind == 0 || !some) {
      auto* const parent = some && some->IsValid() && dice % 3 == 0 ? some : nullptr;
      auto* const made =
          adaptor.CreateMeshNode({OwnerOf(dice), NameOf(dice), ""}, parent, nullptr, 0);
      adaptor.TagNode(made, "tag" + std::to_string(all.size()));
      all.push_back(made);
    } else if (kind == 1) {
      some->deleteMe();
    } else if (kind == 2) {
      some->Rename(NameOf(dice));
    } else if (kind == 3) {
      some->SetParent(all[dice % all.size()]);
    } else {
      adaptor.ClaimTaggedNodes({OwnerOf(dice % 2), NameOf(dice), ""}, some->GetTag());
    }
    adaptor.EndUndoBlock();
  }

  /// What a look at every node that ever was, in the order of their making, finds.
  void Check() {
    for (const unsigned owner : {0u, 1u, 2u}) {
      std::vector<CoreNode*> own, found;
      for (CoreNode* node : all)
        if (node->IsValid() && node->GetOwner() == OwnerOf(owner)) own.push_back(node);
      util::ReturnValue<std::vector<CoreNode*>> result(found);
      adaptor.GetNodesOfOwner(OwnerOf(owner), result);
      EXPECT_EQ(found, own);
      for (const char* name : {"a", "a_2", "b", "c"}) {
        const auto at = std::find_if(own.begin(), own.end(),
                                     [&](CoreNode* node) { return node->GetName() == name; });
        EXPECT_EQ(adaptor.FindNode(OwnerOf(owner), name), at == own.end() ? nullptr : *at);
      }
    }
  }

  std::vector<std::string> Tree() {
    std::vector<std::string> names;
    for (const SceneNode* node : scene.GetNodes())
      names.push_back(node->GetName() + "<" +
                      (node->GetParent() ? node->GetParent()->GetName() : ""));
    return names;
  }

  static rws::CInterface* OwnerOf(unsigned dice) {
    alignas(16) static char identities[32];
    return dice % 3 == 2 ? nullptr
                         : reinterpret_cast<rws::CInterface*>(identities + 16 * (dice % 3));
  }
  static std::string NameOf(unsigned dice) { return std::string(1, "abc"[dice / 5 % 3]); }

  Scene scene;
  HeadlessAdaptor adaptor{scene};
  std::vector<CoreNode*> all;
};

TEST(HeadlessAdaptor, FindsNodesAsALookAtAllOfThemWouldThroughAnyHistory) {
  std::mt19937 random(5);
  for (int run = 0; run < 20; ++run) {
    Crowd crowd;
    std::vector<std::vector<std::string>> trees;
    for (int i = 0; i < 60; ++i) {
      trees.push_back(crowd.Tree());
      const auto blocks = crowd.adaptor.GetUndo().entryNames().size();
      crowd.Do(random() % Crowd::kKinds, static_cast<unsigned>(random() >> 8));
      if (crowd.adaptor.GetUndo().entryNames().size() == blocks) trees.pop_back();
      crowd.Check();
      if (HasFailure()) return;
    }
    trees.push_back(crowd.Tree());
    const std::size_t last = trees.size() - 1;
    for (std::size_t i = last; i-- > 0; crowd.Check()) {
      ASSERT_TRUE(crowd.adaptor.HostUndo());
      ASSERT_EQ(crowd.Tree(), trees[i]);
    }
    for (std::size_t i = 1; i <= last; ++i, crowd.Check()) {
      ASSERT_TRUE(crowd.adaptor.HostRedo());
      ASSERT_EQ(crowd.Tree(), trees[i]);
    }
  }
}

TEST(HeadlessAdaptor, NodesOfOneMeshShareItsRays) {
  Scene scene;
  HeadlessAdaptor adaptor(scene);
  util::CMesh mesh;
  mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  mesh.faces = {0, 1, 2};
  auto* const a = static_cast<HeadlessNode*>(adaptor.CreateMeshNode({}, nullptr, &mesh, 0));
  auto* const b = static_cast<HeadlessNode*>(adaptor.CreateMeshNode({}, nullptr, nullptr, 0));
  EXPECT_EQ(b->Extension(rws::kShareMesh, a, nullptr), 1);
  EXPECT_EQ(a->GetRays(0.0), b->GetRays(0.0));
  mesh.faces.insert(mesh.faces.end(), {0, 2, 1});
  a->SetMesh(mesh);
  EXPECT_EQ(a->GetRays(0.0)->triangleCount(), 2);
  EXPECT_EQ(b->GetRays(0.0)->triangleCount(), 1);
}

TEST(HeadlessAdaptor, LeavesTheTagsOfRigsThatAreKeptUnopened) {
  Scene scene;
  HeadlessAdaptor adaptor(scene);
  std::string shown;
  adaptor.SetMessageHandler([&](const std::string&, const std::string& text) { shown = text; });
  for (const char* tag : {"Car_01/Body", "Car_01", "Car_011/Body", "XCar_01/Body"})
    scene.AddNode("n").SetTag(tag);
  adaptor.KeepTagsOf({"Boat_01", "Car_01"});
  adaptor.GatherNodes();
  EXPECT_NE(scene.FindTagged("Car_01/Body"), nullptr);
  EXPECT_EQ(scene.FindTagged("Car_01"), nullptr);
  EXPECT_EQ(scene.FindTagged("Car_011/Body"), nullptr);
  EXPECT_NE(shown.find("\n\nn_2\nn_3\nn_4\n"), std::string::npos) << shown;
}

TEST(HeadlessAdaptor, PoolsItsSnapshotsAndTellsOfTime) {
  Scene scene;
  HeadlessAdaptor adaptor(scene);
  HeadlessNode& node = adaptor.HandOut(scene.AddNode("a"));
  rws::CSnapshot* const first = node.GetSnapshot(1.0);
  rws::CSnapshot* const second = node.GetSnapshot(2.0);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->GetTime(), 1.0);
  node.ReleaseSnapshot(first);
  node.ReleaseSnapshot(first);
  EXPECT_EQ(node.GetSnapshot(3.0), first);
  EXPECT_NE(node.GetSnapshot(4.0), first) << "a snapshot released twice was handed out twice";
  EXPECT_EQ(second->GetTime(), 2.0);
  std::vector<double> times;
  adaptor.SetTimeHandler([&](double time) { times.push_back(time); });
  adaptor.SetCurrentTime(2.0);
  EXPECT_EQ(times, std::vector<double>{2.0});
}

TEST(HeadlessAdaptor, TellsAnyNumberOfObserversWhichMayLeaveMeanwhile) {
  struct Observer : HostObserver {
    explicit Observer(HeadlessAdaptor& adaptor) : adaptor(adaptor) {}
    void OnTree() override { Note("tree"); }
    void OnTime(double time) override { Note("time " + std::to_string(std::lround(time))); }
    void OnSelection() override { Note("selection"); }
    void OnRefresh() override { Note("refresh"); }
    void Note(const std::string& what) {
      told += what + ";";
      if (what == leaveAt) adaptor.GetObservers().Remove(*this);
    }
    HeadlessAdaptor& adaptor;
    std::string told, leaveAt;
  };
  Scene scene, next;
  HeadlessAdaptor adaptor(scene);
  Observer first(adaptor), second(adaptor);
  first.leaveAt = "selection";
  for (Observer* observer : {&first, &second}) adaptor.GetObservers().Add(*observer);
  HeadlessNode& node = adaptor.HandOut(scene.AddNode("a"));
  adaptor.SetCurrentTime(3.0);
  adaptor.RefreshViews();
  node.Select();
  EXPECT_EQ(first.told, "tree;time 3;refresh;selection;");
  adaptor.BeginUndoBlock("");
  node.Rename("b");
  adaptor.EndUndoBlock();
  adaptor.HostUndo();
  adaptor.HostUndo();
  EXPECT_EQ(second.told, "tree;time 3;refresh;selection;tree;tree;selection;");
  second.told.clear();
  adaptor.SetScene(next);
  scene.AddNode("of no interest");
  next.AddNode("c");
  EXPECT_EQ(first.told, "tree;time 3;refresh;selection;");
  EXPECT_EQ(second.told, "tree;selection;time 0;tree;");
}

TEST(HeadlessAdaptor, ForgetsDeletedTreesOnlyWithTheHistory) {
  Scene scene;
  HeadlessAdaptor adaptor(scene);
  alignas(16) static char identity[16];
  auto* const rig = reinterpret_cast<rws::CInterface*>(identity);
  CoreNode* const body = adaptor.CreateMeshNode({rig, "Body", "Body"}, nullptr, nullptr, 0);
  HeadlessNode& prop = adaptor.HandOut(scene.AddNode("Prop", scene.Find("Body")));
  adaptor.BeginUndoBlock("Attributes");
  prop.Hide();
  prop.Rename("Thing");
  prop.SetParent(nullptr);
  prop.SetParent(body);
  adaptor.EndUndoBlock();
  adaptor.BeginUndoBlock("Delete");
  body->deleteMe();
  adaptor.EndUndoBlock();
  scene.AddNode("Body");
  adaptor.HostUndo();
  EXPECT_EQ(body->GetSceneName(), "Body_2") << "the name was given away meanwhile";
  EXPECT_TRUE(prop.IsValid());
  adaptor.HostRedo();
  EXPECT_FALSE(prop.IsValid());
  EXPECT_EQ(prop.GetSceneName(), "Thing");
  adaptor.ClearUndoHistory();
  EXPECT_EQ(prop.GetSceneName(), "");
  EXPECT_EQ(prop.GetParent(), nullptr);
  EXPECT_EQ(prop.GetChildCount(), 0);
  EXPECT_FALSE(prop.SetParent(nullptr));

  // Steps on a node that was discarded behind their back do nothing.
  HeadlessNode& gone = adaptor.HandOut(scene.AddNode("Gone"));
  adaptor.BeginUndoBlock("Attributes");
  gone.Hide();
  gone.SetParent(adaptor.FindSceneNode("Body"));
  adaptor.TagNode(&gone, "x");
  gone.SetWorldPose(0.0, {}, true);
  adaptor.EndUndoBlock();
  adaptor.DiscardNode(&gone);
  EXPECT_TRUE(adaptor.HostUndo());
  EXPECT_TRUE(adaptor.HostRedo());
  EXPECT_EQ(scene.GetNodeCount(), 1u);
}

TEST(HeadlessAdaptor, KeepsTheOpenDocumentWhenAnotherCannotBeRead) {
  const std::string path = testing::TempDir() + "document_" + std::to_string(::getpid()) + ".gltf";
  HeadlessDocument document;
  Lens lens;
  document.GetScene().AddNode("Eye").SetLens(lens);
  document.GetScene().SetFrameRate(30.0);
  std::string error;
  EXPECT_FALSE(document.Open("/nowhere/x.glb", error));
  EXPECT_NE(error.find("/nowhere/x.glb"), std::string::npos) << error;
  EXPECT_EQ(document.GetAdaptor().GetFrameRate(), 30.0);
  error.clear();
  EXPECT_FALSE(document.Save("/nowhere/x.glb", error));
  EXPECT_NE(error.find("/nowhere/x.glb"), std::string::npos) << error;

  HeadlessNode* const eye = document.GetAdaptor().FindSceneNode("Eye");
  alignas(16) static char identity[16];
  auto* const rig = reinterpret_cast<rws::CInterface*>(identity);
  document.GetAdaptor().TagNode(eye, "Cam/Eye");
  document.GetAdaptor().ClaimTaggedNodes({rig, "Eye", ""}, "Cam/Eye");
  std::vector<rws::CInterface*> instances = {rig};
  util::ReturnValue<std::vector<rws::CInterface*>> result(instances);
  document.GetAdaptor().BeginRecording(0.0, result);
  eye->SetLensValue(LensValue::kFocusDistance, 0.5, 9.0);
  document.GetAdaptor().EndRecording();
  ASSERT_TRUE(document.Save(path, error)) << error;
  const auto warnings = document.TakeWarnings();
  ASSERT_EQ(warnings.size(), 1u) << "keys that the file can't hold are told of";
  EXPECT_NE(warnings[0].find("Eye"), std::string::npos);

  document.Close();
  EXPECT_EQ(document.GetScene().GetNodeCount(), 0u);
  ASSERT_TRUE(document.Open(path, error)) << error;
  EXPECT_EQ(document.GetAdaptor().GetFrameRate(), 30.0);
  std::vector<CoreNode*> roots;
  util::ReturnValue<std::vector<CoreNode*>> imported(roots);
  EXPECT_EQ(document.GetAdaptor().ImportNodes(path, "in_", imported), "");
  ASSERT_EQ(roots.size(), 1u);
  EXPECT_EQ(roots[0]->GetTag(), "") << "the tag names a rig of the other scene";
  EXPECT_NE(document.GetScene().FindTagged("Cam/Eye"), nullptr);
  std::remove(path.c_str());
}

}  // namespace
}  // namespace orv::tests

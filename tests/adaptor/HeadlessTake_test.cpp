// That a take's poses are the same bits while it runs, as keys, and in a file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "util/AVar_Matrix.h"
#include "util/ReturnValue.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor;
using namespace rws::adaptor::headless;
using rws::CInterface;
using util::Matrix;
using util::Quat;

bool SameBits(const Matrix<double>& a, const Matrix<double>& b) {
  return std::memcmp(a.m, b.m, sizeof(a.m)) == 0;
}

/// An animated, unevenly scaled parent of a user's; below it a chain of three nodes of one rig; a
/// user's node below the middle one and below the last.
class TakeScene {
 public:
  explicit TakeScene(double fps, unsigned seed = 1) : m_random(seed) {
    scene().SetFrameRate(fps);
    SceneNode& stage = scene().AddNode("Stage");
    AddKeys(stage, 6);
    SceneNode* parent = &stage;
    for (const char* name : {"A", "B", "C"}) {
      auto* node = static_cast<HeadlessNode*>(adaptor().CreateMeshNode(
          {Rig(), name, std::string("Rig_") + name}, &adaptor().NodeFor(*parent), nullptr, 0));
      adaptor().TagNode(node, std::string("Rig/") + name);
      chain.push_back(node);
      parent = node->GetSceneNode();
      parent->SetPose(Decompose(RandomPose()));
    }
    for (HeadlessNode* above : {chain[1], chain[2]}) {
      SceneNode& prop = scene().AddNode("Prop", above->GetSceneNode());
      prop.SetPose(Decompose(RandomPose()));
    }
    AddKeys(scene().AddNode("Other"), 3);
    Rewrap();
  }

  Scene& scene() { return m_document.GetScene(); }
  HeadlessAdaptor& adaptor() { return m_document.GetAdaptor(); }
  HeadlessDocument& document() { return m_document; }
  static CInterface* Rig() {
    alignas(16) static char identity[16];
    return reinterpret_cast<CInterface*>(identity);
  }
  double Frame(int i) { return i * adaptor().GetFrameDuration(); }

  Matrix<double> RandomPose() {
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    const Quat<double> q =
        Quat<double>(unit(m_random), unit(m_random), unit(m_random), unit(m_random)).normalized();
    Matrix<double> m = q.toMatrix();
    for (int i = 0; i < 3; ++i) m.setAxisRow(i, m.axisRow(i) * (1.3 + unit(m_random)));
    m.setTranslation({9 * unit(m_random), 9 * unit(m_random), 9 * unit(m_random)});
    return m;
  }

  void Rewrap() {
    all.clear();
    for (SceneNode* node : scene().GetNodes())
      all.push_back(adaptor().FindSceneNode(node->GetName()));
  }

  /// A random pose. Unevenly scaled parents shear, which no node can hold; the place is exact.
  void Write(HeadlessNode* node, double time, bool key) {
    rws::CSnapshot* const snapshot = node->GetSnapshot(time);
    const Matrix<double> wish = RandomPose();
    key ? snapshot->SetKey(wish.data()) : snapshot->SetMatrix(wish.data());
    Matrix<double> read;
    snapshot->GetMatrix(read.data());
    adaptor().ReleaseSnapshot(snapshot);
    EXPECT_LT((read.translation() - wish.translation()).length(), 1e-10);
  }
  /// Poses of all nodes at the frames first to last.
  std::vector<Matrix<double>> Poses(int first, int last) {
    std::vector<Matrix<double>> poses;
    for (int i = first; i <= last; ++i)
      for (HeadlessNode* node : all) poses.push_back(node->GetWorldPose(Frame(i)));
    return poses;
  }

  void Begin(int frame) {
    adaptor().BeginUndoBlock("Record");
    std::vector<CInterface*> instances = {Rig()};
    util::ReturnValue<std::vector<CInterface*>> result(instances);
    adaptor().BeginRecording(Frame(frame), result);
    for (HeadlessNode* node : chain) node->StartTake(Frame(frame));
  }
  void End() {
    adaptor().EndRecording();
    adaptor().EndUndoBlock();
  }
  /// Writes the chain's nodes of one frame in the order of `order`, digits into the chain.
  void StepFrame(int frame, const char* order) {
    for (; *order; ++order) Write(chain[*order - '0'], Frame(frame), frame % 2 == 0);
  }

  std::vector<HeadlessNode*> chain;
  std::vector<HeadlessNode*> all;

 private:
  void AddKeys(SceneNode& node, int count) {
    for (const ChannelPath path :
         {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale}) {
      std::vector<double> times, values;
      for (int i = 0; i < count; ++i) {
        // Numbers of a file: singles.
        times.push_back(static_cast<float>(0.37 * i));
        const Trs pose = Decompose(RandomPose());
        const auto& q = pose.rotation;
        const auto v = path == ChannelPath::kTranslation ? pose.translation : pose.scale;
        const double numbers[] = {v.x, v.y, v.z, 0.0};
        const double rotation[] = {q.x, q.y, q.z, q.w};
        for (int k = 0; k < ComponentCount(path); ++k)
          values.push_back(
              static_cast<float>(path == ChannelPath::kRotation ? rotation[k] : numbers[k]));
      }
      Channel channel(path);
      ASSERT_TRUE(channel.SetKeys(times, values));
      node.SetChannel(channel);
    }
  }

  HeadlessDocument m_document;
  std::mt19937 m_random;
};

void ExpectSameBits(const std::vector<Matrix<double>>& a, const std::vector<Matrix<double>>& b,
                    const char* what) {
  ASSERT_EQ(a.size(), b.size());
  int different = 0;
  for (std::size_t i = 0; i < a.size(); ++i) different += !SameBits(a[i], b[i]);
  EXPECT_EQ(different, 0) << what << ", of " << a.size();
}

TEST(HeadlessTake, ReadsTheSameBitsDuringTheTakeAsKeysAndFromAFile) {
  const std::string path = testing::TempDir() + "take_" + std::to_string(::getpid()) + ".glb";
  for (const double fps : {24.0, 25.0, 30.0, 50.0, 59.94, 60.0}) {
    for (const char* order : {"012", "210", "102"}) {
      SCOPED_TRACE(testing::Message() << fps << " fps, order " << order);
      TakeScene take(fps);
      const auto before = take.Poses(0, 40);
      const auto started = take.Poses(5, 5);
      take.Begin(5);
      ExpectSameBits(take.Poses(5, 5), started, "the start, before anything is written");
      std::vector<Matrix<double>> during;
      for (int i = 6; i <= 30; ++i) {
        take.StepFrame(i, order);
        const auto frame = take.Poses(i, i);
        during.insert(during.end(), frame.begin(), frame.end());
      }
      ExpectSameBits(take.Poses(6, 30), during, "the whole take, before its end");
      ExpectSameBits(take.Poses(5, 5), started, "the start, before the end");
      const auto behind = take.Poses(31, 40);
      take.End();
      ExpectSameBits(take.Poses(6, 30), during, "as keys");
      ExpectSameBits(take.Poses(5, 5), started, "the start as a key");
      ExpectSameBits(take.Poses(31, 40), behind, "behind the last sample");
      const auto after = take.Poses(0, 40);
      std::vector<Matrix<double>> scenes;
      for (int i = 0; i <= 40; ++i)
        for (HeadlessNode* node : take.all)
          scenes.push_back(node->GetSceneNode()->WorldMatrix(take.Frame(i)));
      ExpectSameBits(scenes, after, "as the scene has them");

      EXPECT_TRUE(take.adaptor().HostUndo());
      ExpectSameBits(take.Poses(0, 40), before, "undone");
      EXPECT_TRUE(take.adaptor().HostRedo());
      ExpectSameBits(take.Poses(0, 40), after, "redone");

      std::string error;
      ASSERT_TRUE(take.document().Save(path, error)) << error;
      ASSERT_TRUE(take.document().Open(path, error)) << error;
      take.Rewrap();
      ExpectSameBits(take.Poses(6, 30), during, "from the file");
    }
  }
  std::remove(path.c_str());
}

TEST(HeadlessTake, RetakesFromTheMiddleAndRepeatsItselfBitForBit) {
  TakeScene take(30.0);
  for (HeadlessNode* node : take.chain) node->Extension(rws::kWrittenByRig, nullptr, nullptr);
  const auto run = [&](int first, int last, unsigned seed) {
    TakeScene random(30.0, seed);  // the poses of a run depend on its seed and on what it reads
    std::vector<Matrix<double>> poses;
    take.Begin(first);
    for (int i = first + 1; i <= last; ++i) {
      for (HeadlessNode* node : take.chain) {
        // As rigs do that keep a node's own scale: read before the write, in the same frame.
        Matrix<double> m = random.RandomPose();
        m.setRowLengths(node->GetWorldPose(take.Frame(i)).rowLengths() * 1.01);
        EXPECT_TRUE(node->SetWorldPose(take.Frame(i), m, true));
      }
      const auto frame = take.Poses(i, i);
      poses.insert(poses.end(), frame.begin(), frame.end());
    }
    take.End();
    return poses;
  };
  const auto first = run(0, 30, 5);
  const auto early = take.Poses(0, 12);
  ExpectSameBits(run(0, 30, 5), first, "a resimulation");
  const auto retake = run(12, 20, 9);
  ExpectSameBits(take.Poses(0, 12), early, "keys before the retake");
  ExpectSameBits(take.Poses(13, 20), retake, "the retake");
  for (HeadlessNode* node : take.chain)
    EXPECT_EQ(node->GetSceneNode()->GetChannel(ChannelPath::kScale)->GetTimes().back(),
              take.Frame(20));
  ExpectSameBits(run(12, 20, 9), retake, "the retake resimulated");
  EXPECT_EQ(take.scene().Find("Other")->GetChannel(ChannelPath::kScale)->GetKeyCount(), 3u);
  EXPECT_EQ(take.scene().Find("Prop")->HasKeys(), false);
  take.adaptor().HostUndo();
  take.adaptor().HostUndo();
  ExpectSameBits(take.Poses(1, 30), first, "both retakes undone");
}

TEST(HeadlessTake, TakesSamplesInAnyOrderAndReadsBetweenThem) {
  TakeScene take(25.0);
  HeadlessNode* const root = take.chain[0];
  root->SetParent(nullptr);
  take.Begin(0);
  for (const int frame : {1, 3, 7, 5, 3, 4, 6, 2}) take.StepFrame(frame, "0");
  const auto during = take.Poses(0, 8);
  util::AVar_Matrix<double> expected;
  for (int i = 0; i <= 7; ++i) expected.set(take.Frame(i), root->GetWorldPose(take.Frame(i)));
  for (double frame = 0.25; frame < 7.0; frame += 0.5) {
    const double t = frame * take.adaptor().GetFrameDuration();
    EXPECT_TRUE(SameBits(root->GetWorldPose(t), expected.value(t))) << frame;
    EXPECT_TRUE(SameBits(root->GetLocalPose(t), expected.value(t))) << frame;
  }
  take.End();
  ExpectSameBits(take.Poses(0, 8), during, "as keys");
}

TEST(HeadlessTake, RestsUntilTheFrameBeforeALateFirstWrite) {
  TakeScene take(25.0);
  HeadlessNode* const late = take.chain[2];
  const Matrix<double> rest = Compose(late->GetSceneNode()->GetPose());
  take.Begin(0);
  for (int i = 1; i <= 20; ++i) take.StepFrame(i, i < 10 ? "01" : "012");
  auto* const born = static_cast<HeadlessNode*>(
      take.adaptor().CreateMeshNode({TakeScene::Rig(), "Shell", "Rig_Shell"}, nullptr, nullptr, 0));
  take.Write(born, take.Frame(20), false);
  take.End();
  EXPECT_TRUE(SameBits(late->GetSceneNode()->LocalMatrix(take.Frame(9)), rest));
  EXPECT_FALSE(SameBits(late->GetSceneNode()->LocalMatrix(take.Frame(10)), rest));
  const Channel* const keys = born->GetSceneNode()->GetChannel(ChannelPath::kScale);
  ASSERT_NE(keys, nullptr) << "a node made in the take belongs to it";
  EXPECT_EQ(keys->GetTimes(), std::vector<double>{take.Frame(20)});
}

TEST(HeadlessTake, RefusesAloudWhatNoNodeCanHold) {
  TakeScene take(25.0);
  Trs flat;
  flat.scale = {1.0, 0.0, 1.0};
  take.chain[1]->GetSceneNode()->SetPose(flat);
  const auto before = take.Poses(1, 1);
  take.Begin(0);
  rws::CSnapshot* const snapshot = take.chain[2]->GetSnapshot(take.Frame(1));
  snapshot->SetKey(take.RandomPose().data());
  take.adaptor().ReleaseSnapshot(snapshot);
  take.End();
  ExpectSameBits(take.Poses(1, 1), before, "a child of a flat parent");
  const auto warnings = take.adaptor().TakeWarnings();
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].rfind("1 poses were not written, the first for node Rig_C at 0.04 s", 0),
            0u)
      << warnings[0];
  EXPECT_FALSE(take.chain[1]->SetParent(take.chain[2]));
}

}  // namespace
}  // namespace orv::tests

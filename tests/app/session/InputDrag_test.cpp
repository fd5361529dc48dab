// Recorded inputs that are changed by hand while the rigs follow.
#include "app/session/anyhost/InputDrag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/DocumentScene.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"

namespace orv::tests {
namespace {

using Drag = app::InputDrag;
using DragKeys = std::vector<std::vector<double>>;

constexpr double kDragFrame = 0.04, kDragLength = 6.0;
constexpr double kWhole = std::numeric_limits<double>::infinity();

class InputDrag : public testing::Test {
 protected:
  InputDrag() {
    rws::core::DataRoot::Set(folder.path);
    document.NewScene();
    AddRigs(document);
    SetRangeEnd(document, kDragLength);
    rig = document.GetCore().FindInstance("Car");
    for (int i = 0; i < 3; ++i) {
      Drag::Track track;
      for (double t = 0.0; t <= kDragLength; t += kDragFrame) track.set(t, 0.4 * std::sin(t + i));
      rig->SetTrack(i, track);
    }
    app::Resimulate(document.GetCore(), {0.0, kDragLength}, app::Monitor());
  }

  DragKeys AllKeys() {
    DragKeys keys;
    for (rws::core::CoreNode* node : rig->GetNodes())
      for (int path = 0; path < 3; ++path)
        if (const auto* channel =
                document.GetScene()
                    .Find(node->GetSceneName())
                    ->GetChannel(static_cast<rws::adaptor::headless::ChannelPath>(path))) {
          keys.push_back(channel->GetTimes());
          keys.push_back(channel->GetValues());
        }
    return keys;
  }
  ~InputDrag() override { rws::core::DataRoot::Set(""); }
  std::size_t Steps() { return document.GetAdaptor().GetUndo().entryNames().size(); }

  TempFolder folder;
  app::SceneDocument document;
  rws::core::Instance* rig = nullptr;
};

TEST_F(InputDrag, EqualASimulationOfAllAndAreOneStepOrNone) {
  std::mt19937 random(11);
  const auto some = [&random](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  auto& core = document.GetCore();
  for (int round = 0; round < 12; ++round) {
    const auto tracks = rig->GetTracks();
    const DragKeys keys = AllKeys();
    const std::size_t steps = Steps();
    const double time = some(0.0, kDragLength);
    core.GetAdaptor()->SetCurrentTime(2.0);
    Drag drag(core);
    for (int move = 0; move < 4; ++move) {
      const int input = static_cast<int>(random() % 3);
      Drag::Edited edited{rig->GetIdentity(), input, tracks[static_cast<std::size_t>(input)]};
      const double from = round == 0 ? 0.0 : std::floor(time / kDragFrame) * kDragFrame;
      for (int i = 0; i < 20; ++i)
        edited.track.set(std::min(from + i * kDragFrame, kDragLength), some(-1.0, 1.0));
      ASSERT_TRUE(drag.Move({edited}));
      drag.Go(move % 2 ? kWhole : 0.0);  // some are dropped before they have come to an end
      EXPECT_EQ(drag.IsRunning(), move % 2 == 0);
    }
    if (round % 3 == 2) {
      drag.Cancel();
      EXPECT_EQ(Steps(), steps);
      EXPECT_TRUE(AllKeys() == keys) << round;
      EXPECT_TRUE(rig->GetTracks() == tracks);
      // What the rig keeps of its frames is that of before, too.
      app::Resimulate(core, {std::floor(time / kDragFrame) * kDragFrame, kDragLength},
                      app::Monitor());
      EXPECT_TRUE(AllKeys() == keys) << round;
      continue;
    }
    ASSERT_TRUE(drag.Keep());
    EXPECT_EQ(Steps(), steps + 1);
    EXPECT_EQ(core.GetAdaptor()->GetCurrentTime(), 2.0);
    const DragKeys dragged = AllKeys();
    EXPECT_FALSE(dragged == keys);
    app::Resimulate(core, {0.0, kDragLength}, app::Monitor());
    ASSERT_TRUE(AllKeys() == dragged) << "from " << time;
    core.Undo();
    core.Undo();
    EXPECT_TRUE(AllKeys() == keys);
    EXPECT_TRUE(rig->GetTracks() == tracks);
    if (round % 2) core.Redo();
  }
}

TEST_F(InputDrag, BeginWhereATrackReadsSomethingElse) {
  Drag::Track before;
  for (int i = 0; i < 100; ++i) before.set(0.07 * i, i % 7);
  for (int i = 0; i < 100; ++i) {
    Drag::Track after = before;
    after.set(0.07 * i + (i % 2 ? 0.01 : 0.0), 9.0);
    const double change = Drag::FindFirstChange(before, after);
    for (double t = -1.0; t <= change; t += 0.01) ASSERT_EQ(before.value(t), after.value(t));
    EXPECT_EQ(change,
              i == 0 ? -kWhole : before.samples[static_cast<std::size_t>(i % 2 ? i : i - 1)].time);
  }
  EXPECT_EQ(Drag::FindFirstChange(before, before), kWhole);
  // Nothing at all leaves no step and no pass.
  Drag drag(document.GetCore());
  EXPECT_TRUE(drag.Move({{rig->GetIdentity(), 0, rig->GetTracks()[0]}}));
  EXPECT_FALSE(drag.IsRunning() || drag.Keep());
}

}  // namespace
}  // namespace orv::tests

// A rig that performs in the scene of any host's fixture.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "AdaptorFixture.h"
#include "adaptor/common/HostAdaptor.h"
#include "adaptor/common/SceneRigs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CSnapshot.h"
#include "plugins/release/all/AllRigs.h"
#include "util/ReturnValue.h"

namespace orv::tests {

using Poses = std::map<std::string, std::vector<Matrix<double>>>;  ///< by node, one a frame

inline constexpr int kFrames = 60;

/// One rig on a moving node of the suite's scene, with all its inputs recorded.
class Performance {
 public:
  Performance(AdaptorFixture& fixture, const std::string& kind, double fps = 24.0)
      : m_fixture(fixture),
        m_rigs(core, dynamic_cast<rws::adaptor::HostAdaptor&>(fixture.Adaptor()),
               [](const std::string& warning) { ADD_FAILURE() << warning; }) {
    m_fixture.SetFrameRate(fps);
    core.SetAdaptor(&fixture.Adaptor());
    core.LoadTools(rws::addon::AllRigs(), nullptr);
    rig = core.CreateToolFromFactory(kind, "Rig");
    if (!rig) throw std::runtime_error("no rig " + kind);
    for (CoreNode* node : Nodes())
      EXPECT_TRUE(node->GetParent() || node->SetParent(fixture.UserNode("Mover")));
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      util::AVar_Linear<double> track;
      for (int frame = 0; frame <= kFrames; ++frame)
        track.set(Time(frame), std::sin(0.21 * frame + i));
      rig->SetTrack(i, track);
    }
  }
  ~Performance() { core.DropAllRows(); }

  double Time(int frame) { return frame * core.GetFrameDuration(); }
  NodeList Nodes() {
    NodeList list;
    util::ReturnValue<NodeList> result(list);
    m_fixture.Adaptor().GetNodesOfOwner(rig, result);
    return list;
  }
  Poses Resimulate() {
    EXPECT_EQ(core.BeginResimulation(0.0, Time(kFrames)), 0);
    while (core.StepResimulation()) {
    }
    core.EndResimulation();
    Poses poses;
    for (CoreNode* node : Nodes()) {
      for (int frame = 0; frame <= kFrames; ++frame) {
        rws::CSnapshot* const snapshot = node->GetSnapshot(Time(frame));
        snapshot->GetMatrix(poses[node->GetName()].emplace_back().data());
        node->ReleaseSnapshot(snapshot);
      }
    }
    return poses;
  }
  void SaveAndOpen() {
    std::vector<rws::adaptor::RigRecord> records;
    std::string rows, error;
    ASSERT_TRUE(m_rigs.Store(records, rows, error)) << error;
    m_fixture.Reopen();
    core.DropAllRows();
    m_rigs.Load(records, rows);
    rig = core.FindInstance("Rig");
    ASSERT_NE(rig, nullptr);
    EXPECT_TRUE(m_fixture.Messages().empty());
  }

  rws::core::CoreImplementation core;
  rws::core::Instance* rig = nullptr;

 private:
  AdaptorFixture& m_fixture;
  rws::adaptor::SceneRigs m_rigs;
};

inline void ExpectAlike(const Poses& a, const Poses& b, const char* what, double tolerance = 1e-9) {
  ASSERT_EQ(a.size(), b.size()) << what;
  double worst = 0.0;
  for (const auto& [name, poses] : a)
    for (std::size_t frame = 0; frame < poses.size(); ++frame)
      for (int i = 0; i < 16; ++i)
        worst = std::max(worst, std::abs(poses[frame][i] - b.at(name)[frame][i]));
  EXPECT_LT(worst, tolerance) << what;
}

}  // namespace orv::tests

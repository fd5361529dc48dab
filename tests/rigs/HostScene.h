// A rig on the real core and the headless host, in the words of its user.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/UserInterface.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"
#include "support/QtApplication.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/CMesh_Box.h"
#include "util/DataChunk.h"
#include "util/NumberText.h"

namespace orv::tests {

namespace hl = rws::adaptor::headless;

/// A control by time (s).
using Control = std::function<double(double t)>;

class HostScene : rws::core::UserInterface {
 public:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  using Quat = util::Quat<double>;
  using Node = hl::SceneNode;
  using Poses = std::map<std::string, std::vector<Matrix>>;  ///< by node, one a frame

  HostScene(const std::string& kind, const std::string& name, double fps,
            const std::vector<rws::CCameraPlugin*>& kinds)
      : session(kinds, rws::addon::MakeTemplatePlugin), m_name(name) {
    core().SetUserInterface(this);
    scene().SetFrameRate(fps);
    rig = core().CreateToolFromFactory(kind, name);
    if (!rig) throw std::runtime_error("no rig " + kind);
  }
  ~HostScene() override {
    core().SetUserInterface(nullptr);
    std::remove(m_path.c_str());
  }

  rws::core::CoreImplementation& core() { return session.GetCore(); }
  hl::Scene& scene() { return session.GetScene(); }
  double Frame(int i) { return i * core().GetFrameDuration(); }
  int FrameOf(double t) { return core().FrameIndex(t + 1e-6); }
  Node& Find(const std::string& node) {
    Node* const found = scene().Find(m_name + "_" + node);
    if (!found) throw std::runtime_error("no node " + node);
    return *found;
  }

  // --- what a user does before a take ---

  void Edit(const std::string& label, const std::string& value) {
    const auto elements = rig->GetConfig().FindAll(label);
    EXPECT_FALSE(elements.empty()) << label;
    std::string problem;
    for (auto* element : elements)
      EXPECT_TRUE(core().EditParameter(*rig, element->GetId(), value, problem)) << problem;
    EXPECT_EQ(problem, "");
  }
  void Edit(const std::string& label, double value) { Edit(label, util::exactText(value)); }
  /// Edits as "LABEL=VALUE; LABEL=VALUE".
  void Set(const std::string& edits) {
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
      end = edits.find("; ", at);
      const std::string one = edits.substr(at, end - at);
      Edit(one.substr(0, one.find('=')), one.substr(one.find('=') + 1));
    }
  }
  double Setting(const std::string& label) {
    return rig->GetConfig().FindAll(label).at(0)->GetNumber();
  }
  void Press(const std::string& label) {
    for (auto* element : rig->GetConfig().FindAll(label))
      EXPECT_TRUE(core().PressButton(*rig, element->GetId()));
  }
  /// A new node with a mesh, with a node of the rig below it.
  Node& AddAbove(const std::string& node, util::CMesh mesh, const std::string& name = "Ground") {
    Node& above = scene().AddNode(name);
    above.SetMesh(std::move(mesh));
    scene().Reparent(Find(node), &above, 0.0);
    return above;
  }
  /// Keys of place and rotation, `count` + 1 of them from 0 on, `step` seconds apart.
  static void Animate(Node& node, double step, int count,
                      const std::function<rws::adaptor::Trs(double t)>& pose) {
    hl::Channel way(hl::ChannelPath::kTranslation), turn(hl::ChannelPath::kRotation);
    std::vector<double> times, ways, turns;
    for (int i = 0; i <= count; ++i) {
      times.push_back(i * step);
      const rws::adaptor::Trs at = pose(times.back());
      for (const double v : {at.translation.x, at.translation.y, at.translation.z})
        ways.push_back(v);
      for (const double v : {at.rotation.x, at.rotation.y, at.rotation.z, at.rotation.w})
        turns.push_back(v);
    }
    EXPECT_TRUE(way.SetKeys(times, ways) && turn.SetKeys(times, turns));
    node.SetChannel(way);
    node.SetChannel(turn);
  }

  /// An input's track, with a value a frame up to `last`.
  void Feed(const std::string& input, int last, const Control& control) {
    util::AVar_Linear<double> track;
    for (int i = 0; i <= last; ++i) track.set(Frame(i), control(Frame(i)));
    auto& inputs = rig->GetProperties();
    for (int i = 0; i < inputs.count(); ++i)
      if (inputs.property(i)->name == input) rig->SetTrack(i, track);
  }

  // --- takes and files ---

  void Resimulate(int first, int last) {
    ASSERT_EQ(core().BeginResimulation(Frame(first), Frame(last)), 0);
    for (int i = first + 1; core().StepResimulation(); ++i) Stepped(i);
    core().EndResimulation();
  }
  /// The file that a save writes.
  std::string Saved() {
    std::string error;
    EXPECT_TRUE(session.Save(m_path, error)) << error;
    std::ifstream in(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void OpenAgain() {
    Saved();
    std::string error;
    ASSERT_TRUE(session.Open(m_path, error)) << error;
  }
  /// Expects no warning.
  void Reopen() {
    OpenAgain();
    for (const std::string& warning : session.TakeWarnings()) ADD_FAILURE() << warning;
    MeetAgain();
  }
  /// The rig was built anew.
  virtual void MeetAgain() {
    rig = core().FindInstance(m_name);
    ASSERT_TRUE(rig);
  }
  /// The rig's own save data.
  util::DataChunk Stored() {
    EXPECT_EQ(rig->GetRig()->Store(), 0);
    int size = 0;
    const void* data = rig->GetUserData(&size);
    return {data, static_cast<std::size_t>(size)};
  }

  // --- what came of it ---

  Matrix World(const std::string& node, int frame) { return Find(node).WorldMatrix(Frame(frame)); }
  Vector At(const std::string& node, int frame) { return World(node, frame).translation(); }
  /// Of the rig's nodes, or of those whose names begin otherwise.
  Poses PosesOf(int first, int last, std::string prefix = {}) {
    if (prefix.empty()) prefix = m_name + "_";
    Poses poses;
    for (auto* node : scene().GetNodes())
      if (node->GetName().rfind(prefix, 0) == 0)
        for (int i = first; i <= last; ++i)
          poses[node->GetName().substr(prefix.size())].push_back(node->WorldMatrix(Frame(i)));
    return poses;
  }
  /// The same of debug and optimised builds: micrometres are counted, so that another machine's
  /// sine does not show.
  static std::uint64_t Hash(const Poses& all) {
    std::uint64_t hash = 14695981039346656037u;
    for (const auto& [node, poses] : all)
      for (const auto& pose : poses)
        for (const double number : pose.m)
          hash = (hash ^ static_cast<std::uint64_t>(std::llround(number * 1e6))) * 1099511628211u;
    return hash;
  }
  /// The same of every bit.
  static std::uint64_t HashBits(const Poses& all) {
    std::uint64_t hash = 14695981039346656037u;
    for (const auto& [node, poses] : all)
      for (const auto& pose : poses)
        for (const double number : pose.m) {
          std::uint64_t bits = 0;
          std::memcpy(&bits, &number, sizeof bits);
          hash = (hash ^ bits) * 1099511628211u;
        }
    return hash;
  }
  /// The boxes since the last call, each as "title: text".
  std::vector<std::string> Told() { return std::exchange(messages, {}); }

  hl::HeadlessSession session;
  rws::core::Instance* rig = nullptr;
  std::vector<std::string> messages;  ///< "title: text" of each box
  int answer = rws::kAnswerYes;       ///< to questions
  std::function<void(int frame)> onFrame;

 protected:
  /// A frame of a resimulation is done.
  virtual void Stepped(int frame) {
    if (onFrame) onFrame(frame);
  }

 private:
  int MessageBox(const std::string& title, const std::string& text, unsigned flags) override {
    messages.push_back(title + ": " + text);
    return (flags & 15) == rws::kButtonsYesNo ? answer : rws::kAnswerOk;
  }

  const std::string m_name;
  const std::string m_path = testing::TempDir() + m_name + std::to_string(getpid()) + ".glb";
};

}  // namespace orv::tests

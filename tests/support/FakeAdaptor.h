// A host with a time line and an undo queue and no scene, for tests of the engine alone.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/host/AdaptorInterface.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CExtendable.h"
#include "core/interface/CUndo.h"
#include "util/ReturnValue.h"

namespace orv::tests {

class FakeAdaptor : public rws::AdaptorInterface {
 public:
  using Nodes = util::ReturnValue<std::vector<rws::core::CoreNode*>>;

  double time = 0.0;
  double rangeStart = 0.0;
  double rangeEnd = 10.0;
  double frameRate = 25.0;
  std::vector<double> timeWrites;
  std::vector<std::string> events;  ///< calls of a take's begin and end, in order
  int slowFactor = 0;

  int GetInterfaceVersion() override { return rws::kInterfaceVersion; }
  std::string GetAdaptorName() override { return "Fake Adaptor"; }
  std::string GetDataFolder() override { return "adaptor_fake"; }
  std::string GetHostName() override { return "Fake"; }
  std::string GetHostVersion() override { return "1"; }
  rws::core::CoreNode* CreateCameraNode(const rws::NodeIdentity&, rws::CNode*, double,
                                        double) override {
    return nullptr;
  }
  rws::core::CoreNode* CreateMeshNode(const rws::NodeIdentity&, rws::CNode*, const util::CMesh*,
                                      int) override {
    return nullptr;
  }
  rws::core::CoreNode* FindNode(rws::CInterface*, const std::string&) override { return nullptr; }
  bool TagNode(rws::core::CoreNode*, const std::string&) override { return false; }
  void GatherNodes() override {}
  void GetUnclaimedNodes(Nodes&) override {}
  void GetNodesOfOwner(rws::CInterface*, Nodes&) override {}
  rws::core::CoreNode* ClaimTaggedNodes(const rws::NodeIdentity&, const std::string&) override {
    return nullptr;
  }
  std::string ImportNodes(const std::string&, const std::string&, Nodes&) override {
    return "this host has no scene";
  }

  void BeginUndoBlock(const std::string& name) override {
    if (m_depth++ == 0) {
      m_open.clear();
      events.push_back("begin " + name);
    }
  }
  bool PushUndo(rws::CUndo* step) override {
    if (m_depth == 0) {
      step->Destroy();
      return false;
    }
    m_open.push_back(Own(step));
    return true;
  }
  bool EndUndoBlock() override {
    if (m_depth > 0 && --m_depth == 0) {
      if (m_cancelled)
        for (auto step = m_open.rbegin(); step != m_open.rend(); ++step) (*step)->Undo(true);
      else
        m_done.push_back(std::move(m_open)), m_undone.clear();
      m_open.clear();
      events.push_back(m_cancelled ? "cancel" : "end");
      m_cancelled = false;
    }
    return true;
  }
  bool CancelUndoBlock() override {
    m_cancelled = m_depth > 0;
    return EndUndoBlock();
  }
  bool IsUndoBlockOpen() override { return m_depth > 0; }
  bool HostUndo() override {
    if (m_done.empty()) return false;
    for (auto step = m_done.back().rbegin(); step != m_done.back().rend(); ++step)
      (*step)->Undo(true);
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return true;
  }
  bool HostRedo() override {
    if (m_undone.empty()) return false;
    for (const auto& step : m_undone.back()) step->Redo();
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return true;
  }

  double GetCurrentTime() override { return time; }
  void SetCurrentTime(double t) override {
    time = t;
    timeWrites.push_back(t);
  }
  void GetTimeRange(double& start, double& end) override {
    start = rangeStart;
    end = rangeEnd;
  }
  void SetTimeRange(double start, double end) override {
    rangeStart = start;
    rangeEnd = end;
  }
  double GetFrameRate() override { return frameRate; }
  void BeginRecording(double, util::ReturnValue<std::vector<rws::CInterface*>>&) override {
    events.push_back("record");
  }
  void EndRecording() override { events.push_back("keys"); }
  void ClearUndoHistory() override { m_done.clear(); }
  void ShowMessage(const std::string&, const std::string&) override {}
  void ReleaseSnapshot(rws::CExtendable*) override {}
  void DiscardNode(rws::core::CoreNode*) override {}
  void SetSlowFactor(int factor) override { slowFactor = factor; }

 private:
  struct DestroyStep {
    void operator()(rws::CUndo* step) const { step->Destroy(); }
  };
  using Step = std::unique_ptr<rws::CUndo, DestroyStep>;
  static Step Own(rws::CUndo* step) { return Step(step); }

  int m_depth = 0;
  bool m_cancelled = false;
  std::vector<Step> m_open;
  std::vector<std::vector<Step>> m_done;
  std::vector<std::vector<Step>> m_undone;
};

}  // namespace orv::tests

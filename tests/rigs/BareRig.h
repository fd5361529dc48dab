// A rig of the core's whose host refuses what a test tells it to.
#pragma once

#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/InstanceManager.h"
#include "core/tools/Tool.h"
#include "rigs/HostScene.h"
#include "support/Templates.h"
#include "util/xml/Tag.h"

namespace orv::tests {

using Messages = std::vector<std::string>;

/// Made, and no more: with neither nodes nor a row.
class BareRig : public rws::core::Instance {
 public:
  BareRig(rws::core::InstanceManager& core, const std::string& kind, const std::string& name = "")
      : Instance(core, core.FindKind(kind), Kind(kind).CreateObject({1, kind}), name) {
    GetRig()->Define();
  }

  /// Its nodes are nobody's again: the next rig may come to lie where this one does.
  ~BareRig() override {
    for (rws::core::CoreNode* node : GetNodes())
      GetHost().GetAdaptor()->ClaimTaggedNodes(
          {nullptr, node->GetSceneName(), node->GetSceneName()}, node->GetTag());
  }

  /// What opening a record, with another blob, answers.
  int Open(const util::xml::Tag& record, const std::vector<unsigned char>& blob) {
    EXPECT_EQ(ReadRecord(record), "");
    ClearUserData();
    if (!blob.empty()) SetUserData(blob.data(), static_cast<int>(blob.size()));
    return GetRig()->Restore();
  }
  std::vector<unsigned char> Save() {
    EXPECT_EQ(GetRig()->Store(), 0);
    int size = 0;
    const auto* data = static_cast<const unsigned char*>(GetUserData(&size));
    return {data, data + size};
  }

  /// Name of an operation that fails from here on, alone or with a space and the node's name.
  std::string refused;
  int openSnapshots = 0;

  void SetUserData(const void* data, int size) override {
    if (refused != "SetUserData") Instance::SetUserData(data, size);
  }
  rws::CNode* FindNode(std::string node) override {
    return Refuses("FindNode", node) ? nullptr : Instance::FindNode(node);
  }
  rws::CNode* CreateMeshNode(std::string node, rws::CNode* parent, const util::CMesh* mesh,
                             int flags) override {
    if (Refuses("CreateMeshNode", node)) return nullptr;
    rws::CNode* const made = Instance::CreateMeshNode(node, parent, mesh, flags);
    if (Refuses("IsValid", node)) Instance::DeleteNode(made, true);
    return made;
  }
  void DeleteNode(rws::CNode* node, bool undoable) override {
    const auto* const own = static_cast<rws::core::CoreNode*>(node);
    if (!Refuses("DeleteNode", own->GetName())) Instance::DeleteNode(node, undoable);
  }
  rws::CSnapshot* GetSnapshot(rws::CNode* node, double time) override {
    if (refused == "GetSnapshot") return nullptr;
    rws::CSnapshot* const snapshot = Instance::GetSnapshot(node, time);
    openSnapshots += snapshot != nullptr;
    return snapshot;
  }
  void ReleaseSnapshot(rws::CSnapshot* snapshot) override {
    openSnapshots -= snapshot != nullptr;
    Instance::ReleaseSnapshot(snapshot);
  }

 private:
  bool Refuses(const std::string& operation, const std::string& node) const {
    return refused == operation || refused == operation + " " + node;
  }
};

/// Puts a bare rig in the place of a scene's, with what Create makes unless that is refused.
inline BareRig& Strip(HostScene& scene, const std::string& refused = "") {
  auto& core = static_cast<rws::core::InstanceManager&>(scene.core());
  const std::string kind = scene.rig->GetTool()->GetDisplayId();
  const std::string name = scene.rig->GetInstanceName();
  core.Delete(core.Find(name), false);
  auto bare = std::make_unique<BareRig>(core, kind, name);
  BareRig& rig = *bare;
  rig.refused = refused;
  EXPECT_EQ(rig.GetRig()->Create(), refused.empty() ? 0 : 1);
  scene.rig = core.AddRow(std::move(bare))->GetInstance();
  return rig;
}

}  // namespace orv::tests

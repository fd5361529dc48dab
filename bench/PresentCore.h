// A core whose nodes know their present poses alone, so that a benchmark times the rig's own work.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "FakeInterface.h"
#include "core/interface/CSnapshot.h"
#include "core/interface/CSnapshot_Mesh.h"

namespace orv::bench {

using Matrix = util::Matrix<double>;

/// A node that is written holds its world pose; one that is not stands on its parent. It is its own
/// snapshot.
class PresentNode : public rws::CNode, public rws::CSnapshot {
 public:
  PresentNode* parent = nullptr;
  Matrix local;
  Matrix world;
  bool written = false;

  Matrix World() const {
    if (written) return world;
    return parent ? parent->World() * local : local;
  }

  std::intptr_t Extension(int, void*, void*) override { return 0; }
  void Show() override {}
  void Hide() override {}
  bool IsVisible() override { return true; }
  void Select() override {}
  bool IsValid() override { return true; }
  rws::CNode* GetParent() override { return parent; }
  int GetChildCount() override { return 0; }
  rws::CNode* GetChild(int) override { return nullptr; }
  void Release() override {}

  void SetMatrix(const double m[16]) override {
    std::copy_n(m, 16, local.data());
    if (parent) local = parent->World().affineInverse() * local;
    written = false;
  }
  void SetKey(const double m[16]) override {
    std::copy_n(m, 16, world.data());
    written = true;
  }
  void GetLocalMatrix(double m[16]) override { std::copy_n(local.data(), 16, m); }
  void GetMatrix(double m[16]) override {
    const Matrix pose = World();
    std::copy_n(pose.data(), 16, m);
  }
  double GetTime() override { return 0.0; }
};

/// One ground below a rig's nodes; see tests::FakeInterface for the rest, which knows nothing of
/// these nodes: whatever takes or gives one stands here.
class PresentCore : public tests::FakeInterface {
 public:
  std::map<std::string, PresentNode> present;
  PresentNode ground;
  const util::CMesh* groundMesh = nullptr;  ///< the benchmark's

  rws::CNode* FindNode(std::string name) override {
    const auto found = present.find(name);
    return found == present.end() ? nullptr : &found->second;
  }
  rws::CNode* CreateCameraNode(std::string name, rws::CNode* parent, double, double) override {
    PresentNode& node = present[name];
    node.parent = static_cast<PresentNode*>(parent);
    return &node;
  }
  rws::CNode* CreateMeshNode(std::string name, rws::CNode* parent, const util::CMesh*,
                             int) override {
    return CreateCameraNode(name, parent, 0.0, 0.0);
  }
  void DeleteNode(rws::CNode* node, bool) override {
    for (auto it = present.begin(); it != present.end();)
      it = &it->second == node ? present.erase(it) : std::next(it);
  }
  rws::CSnapshot* GetSnapshot(rws::CNode* node, double) override {
    return static_cast<PresentNode*>(node);
  }
  void ReleaseSnapshot(rws::CSnapshot*) override {}
  rws::CSnapshot_Mesh* GetSnapshotMesh(rws::CNode* node, double) override {
    return node == &ground ? new GroundSnapshot(*groundMesh) : nullptr;
  }
  void ReleaseSnapshotMesh(rws::CSnapshot_Mesh* snapshot) override { delete snapshot; }

 private:
  struct GroundSnapshot : rws::CSnapshot_Mesh {
    explicit GroundSnapshot(const util::CMesh& m) : mesh(m) {}
    void Triangulate() override {}
    util::CMesh GetMesh() override { return mesh; }
    bool Intersect(const util::Vector3<double>&, const util::Vector3<double>&, double,
                   rws::RayHit&) override {
      return false;
    }
    const util::CMesh& mesh;
  };
};

}  // namespace orv::bench

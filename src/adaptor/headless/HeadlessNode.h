// A node of the headless scene.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/common/HostNode.h"
#include "adaptor/headless/SceneNode.h"

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;

/// The one CNode of a SceneNode, whose channels are the node's keys. Keys of a lens, which a glTF
/// file has no place for, live here, as long as the scene is open.
class alignas(64) HeadlessNode final : public HostNode {
 public:
  HeadlessNode(HeadlessAdaptor& adaptor, SceneNode& sceneNode);

  bool IsValid() override { return m_sceneNode && m_sceneNode->GetScene(); }
  int GetChildCount() override;
  std::string GetSceneName() override;
  std::string GetTag() override;

  /// Null once the scene's node is gone for good.
  SceneNode* GetSceneNode() const { return m_sceneNode; }
  bool HasLensKeys() const;

 private:
  friend class HeadlessAdaptor;

  bool Exists() const override { return m_sceneNode != nullptr; }
  HostNode* ParentNode() override;
  HostNode* ChildNode(int index) override;
  bool PutUnder(HostNode* parent) override;
  void PutName(const std::string& wish) override;
  void PutTag(const std::string& tag) override { m_sceneNode->SetTag(tag); }
  bool IsShown() const override { return m_sceneNode->IsVisible(); }
  void PutShown(bool shown) override { m_sceneNode->SetVisible(shown); }

  util::Matrix<double> ReadWorld(double time) override { return m_sceneNode->WorldMatrix(time); }
  util::Matrix<double> ReadLocal(double time) override { return m_sceneNode->LocalMatrix(time); }
  Trs ReadTrs(double time) override { return m_sceneNode->LocalTrs(time); }
  bool HasOwnKeys() const override { return m_sceneNode->HasKeys(); }
  void WriteTrs(double time, const Trs& local, bool key) override;
  std::string WriteKeys(double from, const std::vector<PoseSample>& take) override;

  bool HasLens() const override { return m_sceneNode->GetLens() != nullptr; }
  double ReadLens(LensValue which, double time) const override;
  void WriteLens(LensValue which, double time, double value) override;
  void WriteLensKeys(LensValue which, double from, const util::AVar_Linear<double>& take) override;

  std::shared_ptr<const Curve> CurveAt(double) const override {
    return m_sceneNode->GetSharedCurve();
  }
  bool HasMesh() const override { return m_sceneNode->HasMesh(); }
  std::shared_ptr<const util::CMesh> SharedMesh() const override {
    return m_sceneNode->SharedMesh();
  }
  void PutMesh(std::shared_ptr<const util::CMesh> mesh) override {
    m_sceneNode->SetMesh(std::move(mesh));
  }
  Colour ReadColour() const override { return m_sceneNode->GetColour(); }
  void PutColour(const Colour& colour) override { m_sceneNode->SetColour(colour); }

  Exchange SavePose() override;
  Exchange SavePlace() override;
  Exchange SaveLens() override;
  std::unique_ptr<NodePresence> MakePresence() override;

  HeadlessAdaptor& Adaptor();
  double FrameDuration();

  SceneNode* m_sceneNode;
  HeadlessNode* m_parent = nullptr;  ///< of the latest look; checked against the scene's
  std::array<util::AVar_Linear<double>, 2> m_lensKeys;  ///< by LensValue; empty without keys
};

}  // namespace orv::rws::adaptor::headless

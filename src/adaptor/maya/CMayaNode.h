// A transform of the scene.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/common/HostChannels.h"
#include "adaptor/common/HostNode.h"
#include "adaptor/maya/TakeRead.h"

namespace orv::rws::adaptor::maya {

class MayaAdaptorInterface;
class PlugChange;
struct Reparenting;
struct TakeChannels;

/// The one CNode of a transform at one place of the hierarchy. The object is held by a handle,
/// which learns of its end and of its return; paths and names are read when they are asked for.
///
/// Poses are the nine channels' values told in rig space. Below the top a node's own channels are
/// the same numbers on both sides; at the top they carry the conversion of the world.
class CMayaNode final : public HostNode {
 public:
  CMayaNode(MayaAdaptorInterface& adaptor, const MDagPath& path);
  ~CMayaNode() override;

  bool IsValid() override { return m_handle.isValid(); }
  void deleteMe() override;
  int GetChildCount() override;
  /// Without path and namespace.
  std::string GetSceneName() override;
  std::string GetTag() override;

  MObject GetObject() const { return m_handle.object(); }
  bool Is(const MObjectHandle& handle, unsigned instance) const {
    return m_handle == handle && m_instance == instance;
  }
  /// Invalid for a node that is out of the scene.
  MDagPath GetPath() const;
  /// From a file that is not ours to change.
  bool IsReferenced() const;

 private:
  friend class MayaAdaptorInterface;
  friend class MayaPresence;

  bool Exists() const override { return m_handle.isAlive(); }
  HostNode* ParentNode() override;
  HostNode* ChildNode(int index) override;
  bool PutUnder(HostNode* parent) override;
  void PutName(const std::string& wish) override;
  void PutTag(const std::string& tag) override;
  bool IsShown() const override;
  void PutShown(bool shown) override;

  util::Matrix<double> ReadWorld(double time) override;
  util::Matrix<double> ReadLocal(double time) override;
  Trs ReadTrs(double time) override;
  bool HasOwnKeys() const override;
  void WriteTrs(double time, const Trs& local, bool key) override;
  std::string WriteKeys(double from, const std::vector<PoseSample>& take) override;

  bool HasLens() const override;
  double ReadLens(LensValue which, double time) const override;
  void WriteLens(LensValue which, double time, double value) override;
  void WriteLensKeys(LensValue which, double from, const util::AVar_Linear<double>& take) override;

  std::shared_ptr<const Curve> CurveAt(double time) const override;
  bool HasMesh() const override;
  std::shared_ptr<const util::CMesh> SharedMesh() const override;
  std::shared_ptr<const util::CMesh> MeshAt(double time) const override;
  void PutMesh(std::shared_ptr<const util::CMesh> mesh) override;
  Colour ReadColour() const override;
  void PutColour(const Colour& colour) override;

  Exchange SavePose() override;
  Exchange SavePlace() override;
  Exchange SaveLens() override;
  std::unique_ptr<NodePresence> MakePresence() override;

  MayaAdaptorInterface& Adaptor() const;
  /// Below the top: whether it follows its parent.
  bool Inherits() const;
  ChannelFrame ReadFrame() const;
  HostChannels ReadChannels(double time) const;
  /// The channels that show a pose in rig space, and back.
  HostChannels ToChannels(double time, const Trs& local, const ChannelFrame& frame,
                          const util::Vector3<double>& previousAngles);
  Trs ToPose(double time, const HostChannels& channels, const ChannelFrame& frame);
  unsigned InstanceBelow(HostNode* parent) const;
  const Trs* FindKept(double time, const HostChannels& channels, const ChannelFrame& frame);
  /// Where the changes of the open block go; null without one.
  PlugChange* ChangeOf(const std::weak_ptr<PlugChange>& change) const;
  /// What the plug has for a value of the lens.
  double ToLensPlug(LensValue which, double time, double value) const;
  static std::vector<MObject> MakeCurves(const MPlug* plugs, std::size_t count, PlugChange* change);
  void KeepSamples(double from, const std::vector<PoseSample>& take);
  /// Of its pose, rising (s).
  std::vector<double> KeyTimes() const;

  // A take, see TakeChannels.
  void EnterTake();
  void LeaveTake();
  /// Puts the take's latest pose on the transform, and its latest lens on the camera.
  void ShowTake();
  /// Its scene is gone.
  void AbandonTake();
  void ForgetShapes();
  void CopyShapes(const CMayaNode& from);
  /// Why its channels can't take keys; empty where they can.
  std::string WhyNoKeys() const;

  void ShowTakePose();
  void ShowTakeLens();

  MObjectHandle m_handle;
  unsigned m_instance;  ///< number of its path among the object's
  std::unique_ptr<TakeChannels> m_take;
  // What the transform shows of it.
  double m_shownTime = 0.0;
  Trs m_shownPose;
  util::Vector3<double> m_shownAngles;
  /// What the keys of takes stood for, by rising time; steps of undo share it.
  std::shared_ptr<const std::vector<PoseSample>> m_kept;
  std::weak_ptr<PlugChange> m_poseChange;
  std::weak_ptr<PlugChange> m_lensChange;
  std::weak_ptr<Reparenting> m_reparenting;
  bool m_moving = false;  ///< its place and pose change in one step
  // As they were read last.
  util::Matrix<double> m_local;
  TakeRead m_localRead;
  mutable std::shared_ptr<const util::CMesh> m_mesh;
  mutable TakeRead m_meshRead;
  mutable std::shared_ptr<const Curve> m_curve;
  mutable TakeRead m_curveRead;
};

}  // namespace orv::rws::adaptor::maya

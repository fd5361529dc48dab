// What the cameras that follow another one have in common.
#pragma once

#include "plugins/common/FollowCut.h"
#include "plugins/common/Rig.h"
#include "plugins/common/SaveChunk.h"
#include "util/AVar_Nearest.h"

namespace orv::rws::addon {

/// The button that makes the next take begin without memory.
inline constexpr char kReInitialize[] = "Re-Initialize";

/// The threshold of a cut, which stands in a group behind all other parameters.
template <class S>
constexpr ParameterRow<S> JumpThreshold(const char* key) {
  return ParameterRow<S>::Number(
      kSavedLast, key, "Jump Threshold",
      "Where the AttachedCam moves farther than this within a frame (m), the FollowCam is carried "
      "along and does not fly after it. 0 follows every move",
      &S::jumpThreshold, {0.0, 1e18, 0.01, 2});
}

/// Holds the binding to what is followed; has nothing to do in a frame.
class AttachedCamNode : public RigCameraNode {
 public:
  explicit AttachedCamNode(CCamera& rig) : RigCameraNode(rig, "AttachedCam", nullptr) {}
};

/// The camera that follows; its Step is the filter.
class FollowCamNode : public RigCameraNode {
 public:
  explicit FollowCamNode(CCamera& rig);
  /// A take begins at `time`: all its poses will have the scale that the node has there.
  void TakeScale(double time);

 protected:
  void WritePose(double time, const util::QTransform<double>& pose) const;

 private:
  /// Lengths of the axis rows. Read back from each frame they would run away under parents whose
  /// shear no node can hold.
  util::Vector3<double> m_scale{1.0, 1.0, 1.0};
};

/// What a take changes, all of it undone with the take.
struct FollowMemory {
  util::AVar_Nearest<util::QTransform<double>> history;  ///< of the filter, by time
  /// The next take starts without memory of an earlier one. True for a new rig, which has none.
  bool bFirstTime = true;
};

/// The FollowCam trails the AttachedCam, which an animator parents to anything that moves.
class FollowRig : public Rig {
 public:
  void Step(double time) override;
  int Create() override;
  int Restore() override;
  void OnCallback(std::string name) override;
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override { out.push_back(kTellMarks); }

 protected:
  /// `followCam` is the derived rig's.
  FollowRig(const CreationRecord& record, FollowCamNode& followCam);

  virtual SaveState LoadBlob() = 0;

  FollowMemory m_memory;
  AttachedCamNode m_attachedCam;

 private:
  FollowCamNode& m_followCamNode;
};

}  // namespace orv::rws::addon

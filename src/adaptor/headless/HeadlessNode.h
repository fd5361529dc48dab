// A node of the headless scene as the core and the rigs see it.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/SceneNode.h"
#include "core/CoreNode.h"
#include "util/AVar_Linear.h"

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;
class MeshRays;

/// The two numbers of a lens that change over time.
enum class LensValue { kFieldOfView, kFocusDistance };

/// The one CNode of a SceneNode. The adaptor owns it and keeps it until another scene comes, so a
/// pointer to it never dangles: a node whose SceneNode has gone is not valid and does nothing.
///
/// During a take what is written from `bufferedFrom` on goes to the take's buffer and not to the
/// scene. One form counts in every case: a pose is turned into the node's own translation, rotation
/// and scale when it is written, against the parent's pose at that time as it stands then, and
/// every read composes these numbers with the parent's pose of the moment. The same numbers become
/// the key. So a read at a sample's time gives the same bits during the take, after it, and from a
/// file; and a parent that is written later in a frame than its child carries the child along, in
/// the take as it does afterwards.
class alignas(64) HeadlessNode final : public core::CoreNode {
 public:
  HeadlessNode(HeadlessAdaptor& adaptor, SceneNode& sceneNode, int number);
  ~HeadlessNode() override;

  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override;

  void Show() override { SetVisible(true); }
  void Hide() override { SetVisible(false); }
  bool IsVisible() override;
  /// Replaces the host's selection; within a group selection joins what the group has selected.
  void Select() override;
  bool IsValid() override { return m_sceneNode && m_sceneNode->scene(); }
  CNode* GetParent() override;
  int GetChildCount() override;
  CNode* GetChild(int index) override;
  /// Nothing to do: the adaptor keeps one object per node.
  void Release() override {}

  std::string GetSceneName() override;
  std::string GetTag() override;
  CSnapshot* GetSnapshot(double time) override;
  CSnapshot_Helper* GetSnapshotHelper() override;
  CSnapshot_Mesh* GetSnapshotMesh(double time) override;
  CSnapshot_Lens* GetSnapshotLens(double time) override;
  CSnapshot_Shape* GetSnapshotShape(double time) override;
  void ReleaseSnapshot(CExtendable* snapshot) override;
  bool HasKeys() override { return IsValid() && m_sceneNode->hasKeys(); }
  bool IsSame(CNode* node) override;
  /// Refused while a take buffers the node: its samples are relative to the parent.
  bool SetParent(CNode* parent) override;
  bool Rename(const std::string& sceneName) override;
  void StartTake(double time) override;
  void deleteMe() override;

  HeadlessAdaptor& GetAdaptor() { return m_adaptor; }
  /// Null once the scene's node is gone for good.
  SceneNode* GetSceneNode() const { return m_sceneNode; }
  /// Whether a node of the same rig was deleted and not brought back since this one became known.
  bool NeedsRebuild() const;

  /// World pose at `time` (s); identity for a node that is gone.
  util::Matrix<double> GetWorldPose(double time);
  /// Pose relative to the parent.
  util::Matrix<double> GetLocalPose(double time);
  /// Writes a world pose: to the buffer during a take, else as keys of all three properties with
  /// `key`, or without it as the static pose of those that have no keys; the others go on following
  /// theirs. False, with nothing changed, when the pose is not finite or the parent's has no
  /// inverse (a scale of 0).
  bool SetWorldPose(double time, const util::Matrix<double>& world, bool key);

  /// Degrees or metres; the node must have a lens.
  double GetLensValue(LensValue which, double time);
  /// Goes to the buffer during a take; else a key where the value has keys, or the plain value.
  void SetLensValue(LensValue which, double time, double value);
  /// Whether the lens has keys, which a glTF file has no place for.
  bool HasLensKeys() const;

  /// Replaces the geometry; undoable in an open block.
  void SetMesh(const util::CMesh& mesh);
  void SetColour(const Colour& colour);
  /// Ray queries on the node's mesh, in the node's own space; null without a mesh. Made at the
  /// first call for a mesh and kept as long as a node that was asked shows it.
  std::shared_ptr<const MeshRays> GetRays();

 private:
  friend class HeadlessAdaptor;
  friend class KnownNodes;
  friend class NodePresence;
  friend class CNodeDeleteRestore;
  friend class CParentRestoreObj;
  friend class CPoseRestoreObj;

  using LensKeys = std::array<util::AVar_Linear<double>, 2>;
  struct Sample {
    double time;  ///< s
    Trs local;    ///< own channels
  };

  void SetVisible(bool visible);
  void SetMesh(std::shared_ptr<const util::CMesh> mesh);
  bool ShareMesh(CNode* from);
  HeadlessNode* GetParentNode();
  bool MayMove();
  void Detached() { m_sceneNode = nullptr; }

  // The take's buffer.
  /// `born`: the node was made during the take, so it has no pose before its first sample.
  void BeginBuffering(double time, bool born);
  void EndBuffering();
  bool IsBuffered(double time) const { return buffering && time >= bufferedFrom; }
  bool HoldsStart(double time) const;
  /// Index of the first sample at or after `time`.
  std::size_t FirstFrom(double time) const;
  int SampleAt(double time) const;
  bool GetLocal(double time, util::Matrix<double>& local) const;
  void Record(double time, const Trs& local);
  void RecordSample(double time, const Trs& local);
  /// World pose between two samples: their world poses, interpolated.
  util::Matrix<double> GetRecordedBetween(double time);
  bool HasRecordedPose() const { return !recorded.empty(); }
  bool HasRecordedLens() const;
  bool WritePoseKeys();
  void WriteLensKeys();
  void WriteStatic(double time, const Trs& local, bool key);
  double GetSceneLensValue(LensValue which, double time) const;
  util::AVar_Linear<double>& Recorded(LensValue which) {
    return which == LensValue::kFieldOfView ? recordedFocal : recordedFocus;
  }

  // What every frame of a take reads comes first, so that it lies together: with the base class in
  // two lines of the cache.
  SceneNode* m_sceneNode;
  HeadlessAdaptor& m_adaptor;
  HeadlessNode* m_parent = nullptr;  ///< of the latest look; checked against the scene's
  double bufferedFrom = 0.0;         ///< s
  bool buffering = false;
  bool m_writtenByRig = false;  ///< its rig writes it in every frame of a take
  bool m_bornInTake = false;
  bool m_known = false;                     ///< stands among the adaptor's known nodes
  int m_keptSerial = -1;                    ///< the latest undo step that saved this node's pose
  std::vector<Sample> recorded;             ///< the take's poses, in rising time
  Trs m_noted;                              ///< own channels at the take's start
  util::AVar_Linear<double> recordedFocus;  ///< focus distances of the take (m)
  util::AVar_Linear<double> recordedFocal;  ///< fields of view of the take (degrees)
  LensKeys m_lensKeys;                      ///< by LensValue; empty where there are none
  std::uint64_t m_place = 0;                ///< among the known nodes; 0 until it becomes known
  unsigned m_selected = 0;                  ///< the state of the selection that it was in last
  std::shared_ptr<const MeshRays> m_rays;
  std::shared_ptr<const util::CMesh> m_raysMesh;  ///< what m_rays was built from
};

}  // namespace orv::rws::adaptor::headless

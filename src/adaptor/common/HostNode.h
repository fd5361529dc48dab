// A node of any host as the core and the rigs see it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/common/Geometry.h"
#include "adaptor/common/Trs.h"
#include "core/host/CoreNode.h"
#include "util/AVar_Linear.h"

namespace orv::util {
class MeshRays;
}

namespace orv::rws::adaptor {

class HostAdaptor;
class NodePresence;

/// The two numbers of a lens that change over time.
enum class LensValue { kFieldOfView, kFocusDistance };

/// A node's own pose at one time (s).
struct PoseSample {
  double time;
  Trs local;
};

/// Exchanges what was saved with what stands in the host: a step of undo that is its own inverse.
using Exchange = std::function<void()>;

/// The one CNode of a host's object. The adaptor owns it and keeps it until another scene comes, so
/// a pointer to it never dangles: a node whose object has gone is not valid and does nothing.
///
/// During a take what is written from `bufferedFrom` on goes to the take's buffer and not to the
/// host. One form counts in every case: a pose is turned into the node's own translation, rotation
/// and scale when it is written, against the parent's pose at that time as it stands then, and
/// every read composes these numbers with the parent's pose of the moment. The same numbers become
/// the key. So a read at a sample's time gives the same bits during the take, after it, and from a
/// file that keeps them; and a parent that is written later in a frame than its child carries the
/// child along, in the take as it does afterwards.
///
/// What a host has to give stands in the protected part: reading and writing its own object, in rig
/// space, without a thought of undo, of a running take or of a node that has gone.
class HostNode : public core::CoreNode {
 public:
  /// A user's own node until it gets an identity; goes by `sceneName`.
  HostNode(HostAdaptor& adaptor, std::string sceneName);
  ~HostNode() override;

  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override;

  void Show() override { SetVisible(true); }
  void Hide() override { SetVisible(false); }
  bool IsVisible() override { return IsValid() && IsShown(); }
  /// Replaces the host's selection; within a group selection joins what the group has selected.
  void Select() override;
  CNode* GetParent() override;
  CNode* GetChild(int index) override;
  /// Nothing to do: the adaptor keeps one object per node.
  void Release() override {}

  CSnapshot* GetSnapshot(double time) override;
  CSnapshot_Helper* GetSnapshotHelper() override;
  CSnapshot_Mesh* GetSnapshotMesh(double time) override;
  CSnapshot_Lens* GetSnapshotLens(double time) override;
  CSnapshot_Shape* GetSnapshotShape(double time) override;
  void ReleaseSnapshot(CExtendable* snapshot) override;
  bool HasKeys() override { return IsValid() && HasOwnKeys(); }
  bool IsSame(CNode* node) override { return node == this && Exists(); }
  /// Refused while a take buffers the node: its samples are relative to the parent.
  bool SetParent(CNode* parent) override;
  bool Rename(const std::string& sceneName) override;
  void StartTake(double time) override;
  void deleteMe() override;

  HostAdaptor& GetAdaptor() { return m_adaptor; }
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

  /// Replaces the geometry; undoable in an open block.
  void SetMesh(const util::CMesh& mesh);
  void SetColour(const Colour& colour);
  /// The node's geometry at `time` (s); null without a mesh and for a node that is gone.
  std::shared_ptr<const util::CMesh> GetMesh(double time) {
    return IsValid() ? MeshAt(time) : nullptr;
  }
  /// Ray queries on the mesh, in the node's own space; null where GetMesh is. Made at the
  /// first call for a mesh and kept as long as a node that was asked shows it.
  std::shared_ptr<const util::MeshRays> GetRays(double time);

 protected:
  friend class HostAdaptor;
  friend class KnownNodes;
  friend class NodePresence;
  friend class CPoseRestoreObj;

  // --- what a host gives: tree and marks ---

  /// Whether the host still has the object, be it out of the scene in the hands of an undo step.
  /// IsValid tells whether it stands in the scene. All below is asked of objects that are there.
  virtual bool Exists() const = 0;
  /// Null at the top.
  virtual HostNode* ParentNode() = 0;
  /// `index` from 0, below GetChildCount.
  virtual HostNode* ChildNode(int index) = 0;
  /// Keeps the world pose at the current time, that of a node with keys at each of them. False,
  /// with nothing changed, where that can't be, as below itself.
  virtual bool PutUnder(HostNode* parent) = 0;
  /// Gives a name like `wish` that no other node has.
  virtual void PutName(const std::string& wish) = 0;
  virtual void PutTag(const std::string& tag) = 0;
  virtual bool IsShown() const = 0;
  virtual void PutShown(bool shown) = 0;

  // --- poses, in rig space (m), as the host's keys and values have them ---

  virtual util::Matrix<double> ReadWorld(double time) = 0;
  /// Relative to the parent.
  virtual util::Matrix<double> ReadLocal(double time) = 0;
  virtual Trs ReadTrs(double time) = 0;
  virtual bool HasOwnKeys() const = 0;
  /// Keys of all three properties, or without `key` the value of those that have no keys.
  virtual void WriteTrs(double time, const Trs& local, bool key) = 0;
  /// The poses of a take become keys, their times rise: keys before `from` stay, all from there on
  /// give way. An empty text means success; any other says why nothing has changed.
  virtual std::string WriteKeys(double from, const std::vector<PoseSample>& take) = 0;

  // --- the lens: degrees, vertical, or metres ---

  virtual bool HasLens() const = 0;
  virtual double ReadLens(LensValue which, double time) const = 0;
  virtual void WriteLens(LensValue which, double time, double value) = 0;
  /// As WriteKeys.
  virtual void WriteLensKeys(LensValue which, double from,
                             const util::AVar_Linear<double>& take) = 0;

  // --- geometry: what it holds is never changed, another takes its place ---

  /// Null for a node without one.
  virtual std::shared_ptr<const Curve> CurveAt(double time) const = 0;
  virtual bool HasMesh() const = 0;
  /// Null without a mesh.
  virtual std::shared_ptr<const util::CMesh> SharedMesh() const = 0;
  /// A host whose meshes change over time overrides this.
  virtual std::shared_ptr<const util::CMesh> MeshAt(double /*time*/) const { return SharedMesh(); }
  virtual void PutMesh(std::shared_ptr<const util::CMesh> mesh) = 0;
  virtual Colour ReadColour() const = 0;
  virtual void PutColour(const Colour& colour) = 0;

  // --- undo: what stands now, to be exchanged; nothing happens once the object has gone ---

  /// Pose and keys.
  virtual Exchange SavePose() = 0;
  /// Place in the tree, with pose and keys.
  virtual Exchange SavePlace() = 0;
  /// Values and keys of the lens.
  virtual Exchange SaveLens() = 0;
  virtual std::unique_ptr<NodePresence> MakePresence() = 0;

  // --- what this class does for it ---

  bool IsBuffering() const { return buffering; }
  bool IsWrittenByRig() const { return m_writtenByRig; }
  /// What the running take has written so far, in rising time.
  const std::vector<PoseSample>& GetRecorded() const { return recorded; }
  const util::AVar_Linear<double>& GetRecorded(LensValue which) const {
    return which == LensValue::kFieldOfView ? m_aside->focal : m_aside->focus;
  }

  HostAdaptor& m_adaptor;

 private:
  void SetVisible(bool visible);
  void SetMesh(std::shared_ptr<const util::CMesh> mesh);
  bool ShareMesh(CNode* from);
  bool MayMove();

  // The take's buffer.
  /// `born`: the node was made during the take, so it has no pose before its first sample.
  void BeginBuffering(double time, bool born);
  void EndBuffering();
  bool IsBuffered(double time) const { return buffering && time >= bufferedFrom; }
  bool HoldsStart(double time) const;
  /// Index of the first sample at or after `time`.
  std::size_t FirstFrom(double time) const;
  int SampleAt(double time) const;
  bool GetLocal(double time, util::Matrix<double>& local);
  void Record(double time, const Trs& local);
  void RecordSample(double time, const Trs& local);
  /// World pose between two samples: their world poses, interpolated.
  util::Matrix<double> GetRecordedBetween(double time);
  bool HasRecordedPose() const { return !recorded.empty(); }
  bool HasRecordedLens() const;
  std::string WriteRecordedPoses() { return WriteKeys(bufferedFrom, recorded); }
  void WriteRecordedLens();
  util::AVar_Linear<double>& Recorded(LensValue which) {
    return const_cast<util::AVar_Linear<double>&>(GetRecorded(which));
  }

  /// What no frame of a take needs, or few.
  struct Aside {
    Trs noted;                        ///< own channels at the take's start
    util::AVar_Linear<double> focus;  ///< focus distances of the take (m)
    util::AVar_Linear<double> focal;  ///< fields of view of the take (degrees)
    std::uint64_t place = 0;          ///< among the known nodes; 0 until it becomes known
    unsigned selected = 0;            ///< the state of the selection that it was in last
    std::shared_ptr<const util::MeshRays> rays;
    std::shared_ptr<const util::CMesh> raysMesh;  ///< what `rays` was built from
  };

  // With CoreNode, and with the object and the parent that a host notes, two lines of the cache.
  double bufferedFrom = 0.0;  ///< s
  bool buffering = false;
  bool m_writtenByRig = false;  ///< its rig writes it in every frame of a take
  bool m_bornInTake = false;
  bool m_known = false;              ///< stands among the adaptor's known nodes
  int m_keptSerial = -1;             ///< the latest undo step that saved this node's pose
  std::vector<PoseSample> recorded;  ///< the take's poses, in rising time
  std::unique_ptr<Aside> m_aside = std::make_unique<Aside>();
};

}  // namespace orv::rws::adaptor

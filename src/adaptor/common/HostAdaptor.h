// What every host does for the core in the same way.
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/common/HostNode.h"
#include "adaptor/common/HostSnapshot.h"
#include "adaptor/common/HostSnapshot_Helper.h"
#include "adaptor/common/HostSnapshot_Lens.h"
#include "adaptor/common/HostSnapshot_Mesh.h"
#include "adaptor/common/HostSnapshot_Shape.h"
#include "adaptor/common/KnownNodes.h"
#include "adaptor/common/UndoManagement.h"
#include "core/host/AdaptorInterface.h"

namespace orv::rws::adaptor {

class CPoseRestoreObj;

/// An adaptor but for its host: which nodes are known and whose they are, undo, tags, selection,
/// and the buffers of a take. What a host has to give stands in the protected part, and in
/// HostNode. A host's own destructor must call ClearUndoHistory: steps may hold its objects.
class HostAdaptor : public AdaptorInterface {
 public:
  HostAdaptor();
  ~HostAdaptor() override;
  HostAdaptor(const HostAdaptor&) = delete;
  HostAdaptor& operator=(const HostAdaptor&) = delete;

  // What programs use.

  /// Names of rigs that the document keeps although they could not be opened: GatherNodes leaves
  /// the tags of their nodes alone.
  void KeepTagsOf(std::vector<std::string> names) { m_keptRigs = std::move(names); }
  /// Hands over, and forgets, what went wrong since the last call, such as poses that could not be
  /// written.
  std::vector<std::string> TakeWarnings() { return std::exchange(m_warnings, {}); }
  /// The nodes that are selected, in the order of their selection.
  std::vector<HostNode*> GetSelection() const;
  const UndoManagement& GetUndo() const { return m_undo; }
  /// Id of the block in force that changed the scene last, a selection being no change; -1 without
  /// one. Equal ids of one scene mean equal scenes, as far as undo knows them.
  int GetChangeId() const;
  bool IsRecording() const { return m_recording; }

  // The operations of the interface.

  int GetInterfaceVersion() override;
  core::CoreNode* CreateCameraNode(const NodeIdentity& identity, CNode* parent, double fieldOfView,
                                   double nearClip) override;
  core::CoreNode* CreateMeshNode(const NodeIdentity& identity, CNode* parent,
                                 const util::CMesh* mesh, int flags) override;
  core::CoreNode* FindNode(CInterface* owner, const std::string& name) override;
  bool TagNode(core::CoreNode* node, const std::string& tag) override;
  void GatherNodes() override;
  void GetUnclaimedNodes(util::ReturnValue<std::vector<core::CoreNode*>>& result) override;
  void GetNodesOfOwner(CInterface* owner,
                       util::ReturnValue<std::vector<core::CoreNode*>>& result) override;
  core::CoreNode* ClaimTaggedNodes(const NodeIdentity& identity, const std::string& tag) override;
  std::string ImportNodes(const std::string& file, const std::string& prefix,
                          util::ReturnValue<std::vector<core::CoreNode*>>& result) override;
  void BeginUndoBlock(const std::string& name) override;
  bool PushUndo(CUndo* step) override;
  bool EndUndoBlock() override;
  bool CancelUndoBlock() override;
  bool IsUndoBlockOpen() override { return !undoNames.empty() && m_undo.isOpen(); }
  int GetUndoBlock() override { return m_undo.openId(); }
  bool UndoBlock(int block) override { return m_undo.undoId() == block && HostUndo(); }
  /// A host with a queue of its own runs that, whose entries (see BlockMade) call StepUndo.
  bool HostUndo() override { return StepUndo(); }
  bool HostRedo() override { return StepRedo(); }
  void SetTimeRange(double start, double end) override;
  void BeginRecording(double time, util::ReturnValue<std::vector<CInterface*>>& instances) override;
  void EndRecording() override;
  void ClearUndoHistory() override;
  void ReleaseSnapshot(CExtendable* snapshot) override;
  void DiscardNode(core::CoreNode* node) override;
  void ReleaseNodes(CInterface* owner) override;
  core::CoreNode* DuplicateNode(core::CoreNode* node, const NodeIdentity& identity,
                                CNode* parent) override;
  core::CoreNode* CreateHub(const std::string& sceneName, CNode* parent) override;
  bool TakeMeshAway(core::CoreNode* node) override;
  void GetModelsUnder(core::CoreNode* node,
                      util::ReturnValue<std::vector<core::CoreNode*>>& result) override;

  // What nodes, snapshots and undo steps use.

  struct Pools {
    SnapshotPool<HostSnapshot> pose;
    SnapshotPool<HostSnapshot_Helper> helper;
    SnapshotPool<HostSnapshot_Mesh> mesh;
    SnapshotPool<HostSnapshot_Lens> lens;
    SnapshotPool<HostSnapshot_Shape> shape;
  };
  Pools& GetPools() { return m_pools; }
  /// Adds a step to the open block; destroys it when none is open.
  bool Push(UndoUnitPtr step) { return m_undo.push(std::move(step)); }
  void PushExchange(const char* type, Exchange exchange);
  /// Saves a node's pose and keys, or its lens, for the open block before they change.
  void KeepPose(HostNode& node);
  void KeepLens(HostNode& node);
  /// A host whose selection is its own to keep overrides these three.
  virtual void Select(HostNode& node);
  virtual void BeginGroupSelection();
  virtual void EndGroupSelection();
  void Delete(HostNode& node);
  /// Marks, or no longer, the nodes of `owner` that are known as to be rebuilt.
  void MarkRebuild(CInterface* owner, bool rebuild);
  bool NeedsRebuild(const HostNode& node) const;
  /// One for all nodes that show `mesh`.
  std::shared_ptr<const util::MeshRays> RaysOf(const std::shared_ptr<const util::CMesh>& mesh);
  void NoteRefusedPose(HostNode& node, double time);
  /// Puts a node among the known ones, at its old place if it was there before, or takes it out.
  void Enlist(HostNode& node) { nodeList.Add(node); }
  void Delist(HostNode& node) { nodeList.Remove(node); }
  /// A user's own node goes by its name in the scene, also when that changes.
  void NoteName(HostNode& node);

  /// Time (s) of the frame of this take that was written before the frame at `time`.
  double GetFrameBefore(double time) const;
  /// Whether `time` is not behind the first frame that this take has written.
  bool IsFirstFrame(double time) const { return time <= m_firstFrame; }
  /// Samples that a node of this take will have if the take lasts to the end of the range.
  std::size_t GetExpectedSamples() const { return m_expectedSamples; }
  void NoteFrame(double time) {
    if (!(time > m_frame)) return;
    m_frameBefore = m_frame;
    m_frame = time;
    if (m_firstFrame == std::numeric_limits<double>::infinity()) m_firstFrame = time;
  }

 protected:
  // What a host gives. Nodes are made by Keep, and parents are null at the top.

  virtual HostNode* AddCamera(const std::string& sceneName, HostNode* parent, double fieldOfView,
                              double nearClip) = 0;
  /// A mesh node with a copy of `mesh` (null: an empty mesh).
  virtual HostNode* AddMesh(const std::string& sceneName, HostNode* parent,
                            const util::CMesh* mesh) = 0;
  /// A node with the content of `original`: shape, its own pose (the same under another parent) and
  /// keys; no children, no tag. Null where the host can't.
  virtual HostNode* AddCopy(HostNode& original, const std::string& sceneName, HostNode* parent) = 0;
  /// A node without shape, at its parent; see CreateHub.
  virtual HostNode* AddHub(const std::string& sceneName, HostNode* parent) = 0;
  /// As ImportNodes; `roots` are the new nodes at the top. Tags in the file are dropped: they name
  /// rigs of another scene.
  virtual std::string ReadNodes(const std::string& file, const std::string& prefix,
                                std::vector<HostNode*>& roots) = 0;
  /// Of the nodes with exactly this tag the one called `sceneName`, else the first; or null.
  virtual HostNode* FindTagged(const std::string& tag, const std::string& sceneName) = 0;
  /// All nodes with a tag, in the order of the scene.
  virtual std::vector<HostNode*> TaggedNodes() = 0;
  /// Deletes the node's object, and all below it, for good.
  virtual void Remove(HostNode& node) = 0;
  /// False, with nothing changed, for a range that the host can't have.
  virtual bool PutTimeRange(double start, double end) = 0;
  /// A block of steps has come into being; a host with a queue of its own makes its entry.
  virtual void BlockMade(int /*id*/, const std::string& /*name*/) {}
  /// What GetSelection tells has changed.
  virtual void SelectionChanged() {}
  /// A block was made or rolled back, or one was undone or redone, or all are gone.
  virtual void UndoChanged() {}

  // What this class does for it.

  /// Takes a new node of the scene over, as one that is not known yet.
  void Keep(std::unique_ptr<HostNode> node);
  /// A node that was put into the scene becomes known as a user's own; undoable in an open block.
  void Adopt(HostNode& node);
  /// All that were kept since the scene was opened, in this order.
  const std::vector<std::unique_ptr<HostNode>>& AllNodes() const { return m_nodes; }
  /// The valid node of this adaptor behind it, or null.
  HostNode* Known(CNode* node) const;
  /// Another scene comes: forgets all nodes, the selection, the undo history and a take.
  void Forget();
  void Warn(std::string text) { m_warnings.push_back(std::move(text)); }
  bool StepUndo();
  bool StepRedo();

 private:
  core::CoreNode* Introduce(HostNode* node, const NodeIdentity& identity);
  void ReplaceSelection(std::vector<HostNode*>& saved);
  void Created(HostNode& node);
  bool IsInTake(CInterface* owner) const;
  bool IsKept(const std::string& tag) const;
  void WriteKeys(HostNode& node, CPoseRestoreObj& before);

  bool undoOpened = false;             ///< the outermost undo block is this adaptor's own
  bool undoCancelled = false;          ///< the block is to be rolled back at its end
  std::vector<std::string> undoNames;  ///< open blocks, outermost first
  /// A node that went out of the scene below another stays here, unseen until it comes back.
  KnownNodes nodeList;
  /// What was said last about the nodes of a rig that were known by then.
  struct Rebuild {
    bool wanted;
    std::uint64_t lastPlace;
  };
  std::map<const CInterface*, Rebuild> m_rebuilds;

  std::vector<std::unique_ptr<HostNode>> m_nodes;
  int m_nextId = 1;
  std::vector<HostNode*> m_selection;
  unsigned m_selectionState = 0;  ///< what the nodes of the selection are marked with
  int m_groupSelections = 0;
  bool m_groupStarted = false;  ///< the group has selected something
  std::vector<std::string> m_keptRigs;
  std::vector<std::string> m_warnings;
  int m_poseSteps = 0;

  // The running take.
  bool m_recording = false;
  std::vector<CInterface*> m_takeInstances;
  double m_takeStart = 0.0;  ///< s
  double m_frame = 0.0;      ///< latest frame written (s)
  double m_frameBefore = 0.0;
  double m_firstFrame = 0.0;  ///< infinity until something is written
  std::size_t m_expectedSamples = 0;
  int m_refusedPoses = 0;
  std::string m_firstRefused;

  std::map<const util::CMesh*, std::weak_ptr<const util::MeshRays>> m_rays;  ///< of meshes in use
  Pools m_pools;
  UndoManagement m_undo;  ///< last: its steps go before the nodes that they hold
};

}  // namespace orv::rws::adaptor

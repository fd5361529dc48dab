// The host without a 3D program: the adaptor over our own scene.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "adaptor/AdaptorInterface.h"
#include "adaptor/headless/HeadlessSnapshot.h"
#include "adaptor/headless/HeadlessSnapshot_Helper.h"
#include "adaptor/headless/HeadlessSnapshot_Lens.h"
#include "adaptor/headless/HeadlessSnapshot_Mesh.h"
#include "adaptor/headless/HeadlessSnapshot_Shape.h"
#include "adaptor/headless/HostObservers.h"
#include "adaptor/headless/KnownNodes.h"
#include "adaptor/headless/UndoManagement.h"

namespace orv::rws::adaptor::headless {

class CPoseRestoreObj;
class HeadlessNode;
class MeshRays;
class Scene;
class SceneNode;

/// Everything that the core asks of a host, done on a Scene, which is not owned. Rig space is the
/// scene's own: nothing is converted. A program may hold several, each over a scene of its own.
class HeadlessAdaptor final : public AdaptorInterface {
 public:
  explicit HeadlessAdaptor(Scene& scene);
  ~HeadlessAdaptor() override;
  HeadlessAdaptor(const HeadlessAdaptor&) = delete;
  HeadlessAdaptor& operator=(const HeadlessAdaptor&) = delete;

  // What programs use.

  /// Turns to another scene, before the old one goes: forgets all nodes, the selection and the undo
  /// history; the current time is the new range's start.
  void SetScene(Scene& scene);
  Scene& GetScene() { return *m_scene; }
  /// The scene's node of this name, a user's own or a rig's, known from here on; null without one.
  HeadlessNode* FindSceneNode(const std::string& sceneName);
  using MessageHandler = std::function<void(const std::string& title, const std::string& text)>;
  /// Where ShowMessage goes; by default the text is printed to stderr.
  void SetMessageHandler(MessageHandler handler) { m_showMessage = std::move(handler); }
  /// Called with every new current time (s).
  void SetTimeHandler(std::function<void(double)> handler) { m_timeChanged = std::move(handler); }
  /// Whoever follows tree, time, selection and refresh.
  HostObservers& GetObservers() { return m_observers; }
  /// Names of rigs that the document keeps although they could not be opened: GatherNodes leaves
  /// the tags that begin with one of these and "/".
  void KeepTagsOf(std::vector<std::string> names) { m_keptRigs = std::move(names); }
  /// Hands over, and forgets, what went wrong since the last call, such as poses that could not be
  /// written.
  std::vector<std::string> TakeWarnings();
  /// The nodes that are selected, in the order of their selection.
  std::vector<HeadlessNode*> GetSelection() const;
  const UndoManagement& GetUndo() const { return m_undo; }
  bool IsRecording() const { return m_recording; }
  /// Scene names of the cameras whose lens has keys, which a file has no place for.
  std::vector<std::string> GetNodesWithLensKeys() const;

  // The operations of the interface.

  int GetInterfaceVersion() override;
  std::string GetAdaptorName() override { return "Headless Adaptor"; }
  std::string GetDataFolder() override { return "adaptor_headless"; }
  std::string GetHostName() override { return "Rigwright scene"; }
  std::string GetHostVersion() override { return "1"; }
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
  /// Tags in the file are dropped: they name rigs of another scene.
  std::string ImportNodes(const std::string& file, const std::string& prefix,
                          util::ReturnValue<std::vector<core::CoreNode*>>& result) override;
  void BeginUndoBlock(const std::string& name) override;
  bool PushUndo(CUndo* step) override;
  bool EndUndoBlock() override;
  bool CancelUndoBlock() override;
  bool IsUndoBlockOpen() override { return !undoNames.empty() && m_undo.isOpen(); }
  bool HostUndo() override { return m_undo.stepBack(); }
  bool HostRedo() override { return m_undo.stepForward(); }
  double GetCurrentTime() override { return m_time; }
  void SetCurrentTime(double time) override;
  void GetTimeRange(double& start, double& end) override;
  void SetTimeRange(double start, double end) override;
  double GetFrameRate() override;
  void RefreshViews() override { m_observers.Tell(&HostObserver::OnRefresh); }
  void BeginRecording(double time, util::ReturnValue<std::vector<CInterface*>>& instances) override;
  void EndRecording() override;
  void ClearUndoHistory() override { m_undo.clearHistory(); }
  void ShowMessage(const std::string& title, const std::string& text) override;
  void ReleaseSnapshot(CExtendable* snapshot) override;
  void DiscardNode(core::CoreNode* node) override;
  core::CoreNode* DuplicateNode(core::CoreNode* node, const NodeIdentity& identity,
                                CNode* parent) override;
  void GetModelsUnder(core::CoreNode* node,
                      util::ReturnValue<std::vector<core::CoreNode*>>& result) override;

  // What nodes, snapshots and undo steps use.

  struct Pools {
    SnapshotPool<HeadlessSnapshot> pose;
    SnapshotPool<HeadlessSnapshot_Helper> helper;
    SnapshotPool<HeadlessSnapshot_Mesh> mesh;
    SnapshotPool<HeadlessSnapshot_Lens> lens;
    SnapshotPool<HeadlessSnapshot_Shape> shape;
  };
  Pools& GetPools() { return m_pools; }
  /// The one HeadlessNode of a scene node, made at the first call.
  HeadlessNode& NodeFor(SceneNode& node);
  /// The same, known from here on.
  HeadlessNode& HandOut(SceneNode& node);
  /// Adds a step to the open block; destroys it when none is open.
  bool Push(UndoUnitPtr step) { return m_undo.push(std::move(step)); }
  void PushExchange(const char* type, std::function<void()> exchange);
  /// Saves a node's pose and keys, or its lens, for the open block before they change.
  void KeepPose(HeadlessNode& node);
  void KeepLens(HeadlessNode& node);
  void Select(HeadlessNode& node);
  void BeginGroupSelection();
  void EndGroupSelection();
  void Delete(HeadlessNode& node);
  /// Marks, or no longer, the nodes of `owner` that are known as to be rebuilt.
  void MarkRebuild(CInterface* owner, bool rebuild);
  bool NeedsRebuild(const HeadlessNode& node) const;
  /// One for all nodes that show `mesh`.
  std::shared_ptr<const MeshRays> RaysOf(const std::shared_ptr<const util::CMesh>& mesh);
  void NoteRefusedPose(HeadlessNode& node, double time);
  /// Puts a node among the known ones, at its old place if it was there before, or takes it out.
  void Enlist(HeadlessNode& node) { nodeList.Add(node); }
  void Delist(HeadlessNode& node) { nodeList.Remove(node); }
  /// A user's own node goes by its name in the scene, also when that changes.
  void NoteName(HeadlessNode& node);
  /// The nodes of a detached tree are about to go for good.
  void Forget(SceneNode& root);

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

 private:
  HeadlessNode* Known(CNode* node) const;
  void FollowTree();
  void ReplaceSelection(std::vector<HeadlessNode*>& saved);
  HeadlessNode* Create(const NodeIdentity& identity, CNode* parent);
  void Created(HeadlessNode& node);
  bool IsInTake(CInterface* owner) const;
  bool IsKept(const std::string& tag) const;
  void WriteKeys(HeadlessNode& node, CPoseRestoreObj& before);

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

  Scene* m_scene;
  std::vector<std::unique_ptr<HeadlessNode>> m_nodes;  ///< all that were made for this scene
  std::unordered_map<const SceneNode*, HeadlessNode*> m_nodeOf;
  int m_nextId = 1;
  std::vector<HeadlessNode*> m_selection;
  unsigned m_selectionState = 0;  ///< what the nodes of the selection are marked with
  int m_groupSelections = 0;
  bool m_groupStarted = false;  ///< the group has selected something
  double m_time = 0.0;
  MessageHandler m_showMessage;
  std::function<void(double)> m_timeChanged;
  HostObservers m_observers;
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

  std::map<const util::CMesh*, std::weak_ptr<const MeshRays>> m_rays;  ///< of meshes in use
  Pools m_pools;
  UndoManagement m_undo;  ///< last: its steps go before the nodes that they hold
};

}  // namespace orv::rws::adaptor::headless

// All that the core asks of a 3D host.
#pragma once

#include <string>
#include <vector>

namespace orv::util {
class CMesh;
template <class T>
class ReturnValue;
namespace xml {
class Tag;
}
}  // namespace orv::util

namespace orv::rws {

class CExtendable;
class CInterface;
class CNode;
class CUndo;

namespace core {
class CoreNode;
}

/// What a node of a rig is called: in its rig and in the scene.
struct NodeIdentity {
  CInterface* owner = nullptr;  ///< the rig's instance
  std::string name;             ///< as the rig knows it, such as "FollowCam"
  std::string sceneName;  ///< wish for the host's name, such as "MotionFilterCam_01_FollowCam"
};

/// One 3D host. The core holds a single adaptor and calls it on the main thread; no operation
/// throws. One that can't find its node gives null or false. Times are seconds on the host's time
/// line, matrices and lengths in rig space (right-handed, Y up, metres).
///
/// Each operation is marked [required], [defaulted] (a host may leave the default) or [ignorable]
/// (the system works when it does nothing).
class AdaptorInterface {
 public:
  virtual ~AdaptorInterface() = default;

  /// 1 [required] kInterfaceVersion.
  virtual int GetInterfaceVersion() = 0;
  /// 2 [required] Display name of the adaptor.
  virtual std::string GetAdaptorName() = 0;
  /// 3 [required] Folder of the adaptor's own resources.
  virtual std::string GetDataFolder() = 0;
  /// 4 [required]
  virtual std::string GetHostName() = 0;
  /// 5 [required]
  virtual std::string GetHostVersion() = 0;
  /// 6 [defaulted] Native parent of all tool windows; null without windows.
  virtual void* GetMainWindow() { return nullptr; }

  /// 7 [required] New camera node with a transform under `parent` (null: the world), known to the
  /// adaptor, which owns it. `fieldOfView` is the vertical one, in degrees, `nearClip` in metres.
  /// Undoable in an open block.
  virtual core::CoreNode* CreateCameraNode(const NodeIdentity& identity, CNode* parent,
                                           double fieldOfView, double nearClip) = 0;
  /// 8 [required] The same for a mesh node with a copy of `mesh` (null: an empty mesh).
  virtual core::CoreNode* CreateMeshNode(const NodeIdentity& identity, CNode* parent,
                                         const util::CMesh* mesh, int flags) = 0;
  /// 9 [defaulted] Reserved; null.
  virtual core::CoreNode* CreateOtherNode(const NodeIdentity&, CNode*) { return nullptr; }
  /// 10 [required] The first known node with this owner and exactly this name, or null.
  virtual core::CoreNode* FindNode(CInterface* owner, const std::string& name) = 0;
  /// 11 [required] Writes the tag that marks a scene node as belonging to this system; an empty tag
  /// takes the mark away. Undoable in an open block.
  virtual bool TagNode(core::CoreNode* node, const std::string& tag) = 0;
  /// 12 [required] After a load: takes the tag from nodes that no rig claimed and tells the user
  /// which they were. The one operation that talks to the user on its own.
  virtual void GatherNodes() = 0;
  /// 13 [required] All known nodes that no rig claimed.
  virtual void GetUnclaimedNodes(util::ReturnValue<std::vector<core::CoreNode*>>& result) = 0;
  /// 14 [required] All known nodes of this owner, in the order in which they became known.
  virtual void GetNodesOfOwner(CInterface* owner,
                               util::ReturnValue<std::vector<core::CoreNode*>>& result) = 0;
  /// 15 [required] The scene's node with exactly this tag becomes known under `identity` and
  /// claimed. Of several, which copies made elsewhere leave, the one that is called `sceneName`
  /// counts, else the first. Null when no node has it.
  virtual core::CoreNode* ClaimTaggedNodes(const NodeIdentity& identity,
                                           const std::string& tag) = 0;
  /// 16 [required] Brings the nodes of a scene file in, each name behind `prefix`, and lists those
  /// without a parent. An empty text means success, any other says what failed.
  virtual std::string ImportNodes(const std::string& file, const std::string& prefix,
                                  util::ReturnValue<std::vector<core::CoreNode*>>& result) = 0;

  /// 17 [required] Opens a named group of undoable steps. Blocks nest; only the outermost makes an
  /// entry of the host's queue, under its name.
  virtual void BeginUndoBlock(const std::string& name) = 0;
  /// 18 [required] Adds a step to the open block and owns it from here on; with no block open the
  /// step is destroyed unused and the result is false.
  virtual bool PushUndo(CUndo* step) = 0;
  /// 19 [required] Closes the innermost block; true.
  virtual bool EndUndoBlock() = 0;
  /// 20 [required] As EndUndoBlock, and the outermost block rolls back.
  virtual bool CancelUndoBlock() = 0;
  /// 21 [required]
  virtual bool IsUndoBlockOpen() = 0;
  /// 22 [required] Runs the host's undo; false when there is nothing to undo.
  virtual bool HostUndo() = 0;
  /// 23 [required] Runs the host's redo; false when there is nothing to redo.
  virtual bool HostRedo() = 0;

  /// 24 [required] Host time (s).
  virtual double GetCurrentTime() = 0;
  /// 25 [required]
  virtual void SetCurrentTime(double time) = 0;
  /// 26 Reserved.
  virtual void Reserved26() {}
  /// 27 [required] Playback range (s).
  virtual void GetTimeRange(double& start, double& end) = 0;
  /// 28 [required] Undoable in an open block.
  virtual void SetTimeRange(double start, double end) = 0;
  /// 29 [defaulted]
  virtual bool IsHostReady() { return true; }
  /// 30 [required] Frames per second.
  virtual double GetFrameRate() = 0;
  /// 31 [defaulted] 1 / GetFrameRate() (s).
  virtual double GetFrameDuration() { return 1.0 / GetFrameRate(); }
  /// 32 [ignorable]
  virtual void RefreshViews() {}
  /// 33, 34 Reserved.
  virtual void Reserved33() {}
  virtual void Reserved34() {}

  /// 35 [required] A take or a resimulation begins at `time`: takes from `instances` those that
  /// the host won't have stepped, makes all nodes of the others buffer what is written to them,
  /// and readies the take's hot keys.
  virtual void BeginRecording(double time,
                              util::ReturnValue<std::vector<CInterface*>>& instances) = 0;
  /// 36 [required] Ends the buffering: what was recorded becomes keys, undoable in the open block.
  virtual void EndRecording() = 0;
  /// 37 [ignorable] Runs the host's curve filter on the transforms that the last take keyed.
  virtual void FilterCurves() {}
  /// 38 [required] Drops this system's undo entries.
  virtual void ClearUndoHistory() = 0;
  /// 39 [defaulted] The host settings; an untouched tag means none.
  virtual void GetSettings(util::xml::Tag&) {}
  /// 40 Reserved.
  virtual void Reserved40() {}
  /// 41 [required] Modal message with one button.
  virtual void ShowMessage(const std::string& title, const std::string& text) = 0;

  // What a host does or can do beyond the operations above.

  /// [required] Takes back any snapshot that a node gave. Null is ignored.
  virtual void ReleaseSnapshot(CExtendable* snapshot) = 0;
  /// [required] Removes a node from the scene for good, with no undo.
  virtual void DiscardNode(core::CoreNode* node) = 0;
  /// [defaulted] `owner` goes: its nodes, in the scene or taken out of it, are nobody's. The next
  /// rig may come to lie where it did, and would own them.
  virtual void ReleaseNodes(CInterface* /*owner*/) {}

  /// [ignorable] The slow factor of the running take, a whole number from 1 up.
  virtual void SetSlowFactor(int) {}
  /// [defaulted] Whether FilterCurves does anything: only then do windows offer it.
  virtual bool CanFilterCurves() { return false; }
  /// [defaulted] Whether the host can show frames while a resimulation runs.
  virtual bool CanShowFramesDuringRun() { return false; }
  /// [ignorable] A take has ended and all is back in place: refresh the lists of nodes.
  virtual void TakeEnded() {}
  /// [defaulted] A copy of a node's own content (shape, pose, keys; no children) under `parent`,
  /// for the clone of a rig. Null where the host can't. Undoable in an open block.
  virtual core::CoreNode* DuplicateNode(core::CoreNode*, const NodeIdentity&, CNode*) {
    return nullptr;
  }
  /// [defaulted] New node under `parent` that undoes that one's scale at the current time, so that
  /// a user's node can hang there without shear. Null where the host can't. Undoable in an open
  /// block.
  virtual core::CoreNode* CreateHub(const std::string& /*sceneName*/, CNode* /*parent*/) {
    return nullptr;
  }
  /// [defaulted] The node shows no mesh from here on, while what hangs on it stays seen. False
  /// where the host can't. Undoable in an open block.
  virtual bool TakeMeshAway(core::CoreNode*) { return false; }
  /// [defaulted] The models that a user parented to this node of a rig, for "Low poly on record".
  virtual void GetModelsUnder(core::CoreNode*, util::ReturnValue<std::vector<core::CoreNode*>>&) {}
  /// Number of the open undo block, another for each; 0 without one, or when the host can't tell.
  virtual int GetUndoBlock() { return 0; }
  /// [defaulted] As HostUndo where the block of this number is what that takes back; else false,
  /// with nothing done.
  virtual bool UndoBlock(int /*block*/) { return HostUndo(); }
};

}  // namespace orv::rws

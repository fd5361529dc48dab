// The core's view of one scene node.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/interface/CNode.h"

namespace orv::rws {
class CInterface;
class CSnapshot;
class CSnapshot_Helper;
class CSnapshot_Lens;
class CSnapshot_Mesh;
class CSnapshot_Shape;
}  // namespace orv::rws

namespace orv::rws::core {

/// A scene node known to the adaptor, which owns it. Beyond what rigs see it has an owner and can
/// be sampled, re-parented, renamed and deleted. Snapshots go back by ReleaseSnapshot.
class CoreNode : public CNode {
 public:
  /// Name within the owner, such as "FollowCam".
  const std::string& GetName() const { return name; }
  CInterface* GetOwner() const { return owner; }
  bool IsClaimed() const { return claimed; }
  int GetId() const { return id; }

  /// The host's own name of the node, unique in the scene.
  virtual std::string GetSceneName() = 0;
  /// Text by which a saved scene finds the node again; the value of its tag.
  virtual std::string GetTag() = 0;

  virtual CSnapshot* GetSnapshot(double time) = 0;
  virtual CSnapshot_Helper* GetSnapshotHelper() = 0;
  /// Null when the node holds no mesh.
  virtual CSnapshot_Mesh* GetSnapshotMesh(double time) = 0;
  /// Null when the node is no camera.
  virtual CSnapshot_Lens* GetSnapshotLens(double time) = 0;
  /// Null when the node holds no curve.
  virtual CSnapshot_Shape* GetSnapshotShape(double time) = 0;
  /// Takes back any snapshot object that a node gave. Null is ignored.
  virtual void ReleaseSnapshot(CExtendable* snapshot) = 0;

  /// Whether the node has keys of its own that move it; those of nodes above do not count.
  virtual bool HasKeys() = 0;
  /// Whether both stand for one host object; a null node is never the same.
  virtual bool IsSame(CNode* node) = 0;
  /// Moves the node under `parent` (null: the world), keeping its world pose at the current time.
  /// Undoable in an open block; nothing happens when it is there already. False when it can't be,
  /// as under itself or one of its own descendants.
  virtual bool SetParent(CNode* parent) = 0;
  /// Renames the host's node; undoable. The result tells whether exactly this name was given.
  virtual bool Rename(const std::string& sceneName) = 0;
  /// The first call of a take on each node of its rigs, with the take's start: notes the node's own
  /// channels at `time` as they stand. They become a key there if the rig keys the node.
  virtual void StartTake(double time) = 0;
  /// Deletes the host's node, undoably in an open block. Does nothing without a block or an owner.
  virtual void deleteMe() = 0;

  ~CoreNode() override = default;

 protected:
  std::string name;
  CInterface* owner = nullptr;  ///< the rig's instance; null for a user's own node
  bool claimed = false;
  int id = 0;
};

/// Hands a node that GetParent or GetChild gave back when it goes out of scope.
struct ReleaseNode {
  void operator()(CoreNode* node) const { node->Release(); }
};
using NodeHandle = std::unique_ptr<CoreNode, ReleaseNode>;

inline NodeHandle ParentOf(CNode& node) {
  return NodeHandle(static_cast<CoreNode*>(node.GetParent()));
}
inline NodeHandle ChildOf(CNode& node, int index) {
  return NodeHandle(static_cast<CoreNode*>(node.GetChild(index)));
}

}  // namespace orv::rws::core

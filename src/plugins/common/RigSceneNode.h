// A rig's hold on one node of the scene.
#pragma once

#include <string>

#include "util/CMesh.h"
#include "util/Matrix.h"

namespace orv::rws {
class CCamera;
class CInterface;
class CNode;
}  // namespace orv::rws

namespace orv::rws::addon {

/// Base of the nodes that a rig holds by value. The scene node belongs to the core; a hold without
/// one is unbound: it reads as the identity and is not written. Matrices are world space unless
/// said (right-handed, Y up, metres).
class RigSceneNode {
 public:
  /// `name` is unique within the rig. `rig` and `parent` (null: the world) are the rig's own and
  /// outlive this.
  RigSceneNode(CCamera& rig, std::string name, const RigSceneNode* parent);
  RigSceneNode(const RigSceneNode&) = delete;
  RigSceneNode& operator=(const RigSceneNode&) = delete;
  virtual ~RigSceneNode() = default;

  /// Says, before Create or Find, that the rig writes this node in every frame of a take.
  void SetWritten() { m_written = true; }
  /// Finds the node or makes it; a new one stands on its parent's origin. 0 is success.
  int Create();
  /// Finds the node that came with a scene; it keeps its place. False when it is missing.
  bool Find();
  /// Removes the node from the scene.
  void Delete();
  /// One frame of a take.
  virtual void Step(double /*time*/) {}
  /// The host's time changed and no frame is stepped.
  virtual void Update() {}

  /// Within the rig.
  const std::string& GetName() const { return m_name; }
  bool IsBound() const { return m_node != nullptr; }
  CNode* GetNode() const { return m_node; }
  /// Whether `node` is the scene node that this holds.
  bool Is(CNode& node) const;
  /// Whether this stands somewhere below `above` in the scene.
  bool IsUnder(const RigSceneNode& above) const;
  /// Pose at `time`; the identity when there is none.
  util::Matrix<double> ReadMatrix(double time) const;
  /// The same relative to the node's parent.
  util::Matrix<double> ReadLocalMatrix(double time) const;
  /// Writes the pose at `time`.
  void WriteKey(double time, const util::Matrix<double>& matrix) const;
  /// Places the node at `time` without a key.
  void Place(double time, const util::Matrix<double>& matrix) const;
  void SetHidden(bool hidden) const;

 protected:
  virtual CNode* MakeNode(CInterface& core, CNode* parent) = 0;
  CInterface& Core() const;
  CCamera& GetRig() const { return m_rig; }

  const std::string m_name;

 private:
  bool Bind(CNode* node);

  CCamera& m_rig;
  const RigSceneNode* m_parent;
  CNode* m_node = nullptr;
  bool m_written = false;
};

/// Lens with which a camera node is made.
struct LensValues {
  double fieldOfView = 45.0;  ///< vertical (degrees)
  double nearClip = 0.1;      ///< m

  /// Whether a camera can have it; data from outside may hold anything.
  bool IsPossible() const {
    return fieldOfView > 0.0 && fieldOfView < 180.0 && nearClip > 0.0 && nearClip < 1e18;
  }
};

/// A camera node.
class RigCameraNode : public RigSceneNode {
 public:
  using RigSceneNode::RigSceneNode;

  LensValues lens;

 protected:
  CNode* MakeNode(CInterface& core, CNode* parent) override;
};

/// A node with a display mesh.
class RigMeshNode : public RigSceneNode {
 public:
  RigMeshNode(CCamera& rig, std::string name, const RigSceneNode* parent, util::CMesh mesh);

 protected:
  CNode* MakeNode(CInterface& core, CNode* parent) override;

 private:
  const util::CMesh m_mesh;
};

}  // namespace orv::rws::addon

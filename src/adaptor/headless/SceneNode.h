/// One node of the headless scene.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adaptor/common/Geometry.h"
#include "adaptor/common/Trs.h"
#include "adaptor/headless/Channel.h"
#include "adaptor/headless/SceneMedia.h"

namespace orv::rws::adaptor::headless {

class GltfDocument;
class Scene;

/// Perspective lens of a camera node. The camera looks along -Z of the node with +Y up.
struct Lens {
  /// glTF wants a near plane in front of the eye (m); this one stands for one that it cannot tell.
  static constexpr double kLeastClip = 1e-4;
  double fieldOfView = 45.0;   ///< vertical (degrees)
  double focusDistance = 5.0;  ///< m
  double nearClip = 0.1;       ///< m
  double farClip = 0.0;        ///< m; 0 = infinite
  /// Width of the picture over its height; 0 = the file leaves it open. Without it other programs
  /// take the field of view for that of a square picture, or of their own.
  double aspectRatio = 16.0 / 9.0;
};

bool operator==(const Lens& a, const Lens& b);
inline bool operator!=(const Lens& a, const Lens& b) {
  return !(a == b);
}

/// The static pose of a node and its keys: what a reparenting or a take changes, so what its undo
/// keeps.
struct NodeAnimation {
  Trs pose;
  /// In the order of ChannelPath; null where the property has no keys. Shared, never changed.
  std::array<std::shared_ptr<const Channel>, 3> channels;
};

/// A node of a Scene: a pose with keys, and perhaps a lens, a curve or a mesh. Space: glTF's, which
/// is the rigs' own (right-handed, Y up, metres); poses are relative to the parent.
///
/// Owned by its parent, or by the scene when it is a root; its address stays the same as long as it
/// lives, also through Scene::Detach and Attach. What a setter changes is written anew by the next
/// save; all else goes back to the file as it was read.
class alignas(64) SceneNode {
 public:
  ~SceneNode();
  SceneNode(const SceneNode&) = delete;
  SceneNode& operator=(const SceneNode&) = delete;

  /// Unique in the scene. Scene::Rename changes it.
  const std::string& GetName() const { return m_name; }
  /// Null for a root.
  SceneNode* GetParent() const { return m_parent; }
  const std::vector<std::unique_ptr<SceneNode>>& GetChildren() const { return m_children; }
  /// Position among its parent's children or the scene's roots.
  std::size_t IndexInParent() const;
  /// Null while the node is detached.
  Scene* GetScene() const { return m_scene; }
  /// True when `ancestor` is this node or above it.
  bool IsUnder(const SceneNode& ancestor) const;

  /// The pose where no channel says otherwise.
  const Trs& GetPose() const { return m_pose; }
  void SetPose(const Trs& pose);
  /// Null where the property has no keys.
  const Channel* GetChannel(ChannelPath path) const;
  bool HasKeys() const;
  /// Takes over a whole channel; an empty one removes the property's keys.
  void SetChannel(Channel channel);
  void RemoveChannel(ChannelPath path);
  /// See Channel::ReplaceKeys; makes the channel when there is none. `frameDuration` in seconds.
  bool ReplaceKeys(ChannelPath path, double start, double end, const std::vector<double>& times,
                   const std::vector<double>& values, double frameDuration);
  NodeAnimation GetAnimation() const;
  /// Puts pose and keys back to what `animation()` gave.
  void SetAnimation(const NodeAnimation& animation);

  /// Pose relative to the parent at `time` (s).
  Trs LocalTrs(double time) const;
  util::Matrix<double> LocalMatrix(double time) const;
  /// Parent's world matrix times the local one.
  util::Matrix<double> WorldMatrix(double time) const;

  bool IsVisible() const { return m_visible; }
  void SetVisible(bool visible);
  /// Mark of a node that belongs to a rig; empty for all others.
  const std::string& GetTag() const { return m_tag; }
  void SetTag(const std::string& tag);
  /// Name of the parent that a user's node had before it was hung on a rig's node ("" is the
  /// world), by which a delivery gives the user's tree back; nothing where that is not known.
  const std::optional<std::string>& GetHome() const { return m_home; }
  void SetHome(std::optional<std::string> home) { m_home = std::move(home); }
  /// A node that was made only to carry a user's node below a rig's, such as one that undoes the
  /// rig node's uneven scale.
  bool IsHub() const { return m_hub; }
  void SetHub(bool hub) { m_hub = hub; }
  /// Whether its parent is a rig's node or a hub.
  bool HangsOnRig() const { return m_parent && (m_parent->m_hub || !m_parent->m_tag.empty()); }

  /// Null when the node has none.
  const Lens* GetLens() const { return m_lens ? &*m_lens : nullptr; }
  void SetLens(const Lens& lens);
  /// What stands behind the picture of a camera; null without one.
  const std::shared_ptr<const Backdrop>& GetBackdrop() const { return m_backdrop; }
  void SetBackdrop(std::shared_ptr<const Backdrop> backdrop) { m_backdrop = std::move(backdrop); }
  const Curve* GetCurve() const { return m_curve.get(); }
  std::shared_ptr<const Curve> GetSharedCurve() const { return m_curve; }
  void SetCurve(const Curve& curve);
  bool HasMesh() const;
  /// Triangles in the node's own space; built from the file's data at the first call. Null when the
  /// node has none.
  const util::CMesh* GetMesh() const;
  /// The file and its mesh that `GetMesh` is built from, for who wants more of it than triangles;
  /// null for a node without a mesh, with an empty one, and with one that `SetMesh` gave.
  std::shared_ptr<const GltfDocument> GetFileMesh(int& mesh) const;
  void SetMesh(const util::CMesh& mesh);
  /// The same without a copy, as an undo step wants it; null takes the mesh away.
  void SetMesh(std::shared_ptr<const util::CMesh> mesh);
  std::shared_ptr<const util::CMesh> SharedMesh() const;
  /// Display colour of a mesh given by `SetMesh`, or the base colour of the file's first material.
  Colour GetColour() const { return m_colour; }
  void SetColour(const Colour& colour);

 private:
  friend class Scene;
  friend class GltfReader;
  friend class GltfWriter;
  friend class SceneMerge;

  /// How the node was read. What still equals it goes back to the file untouched, also after a
  /// change was undone.
  struct Source {
    std::shared_ptr<const GltfDocument> document;
    int index = -1;    ///< in the document's nodes
    int mesh = -1;     ///< in the document's meshes
    std::string name;  ///< as it was made unique in memory
    NodeAnimation animation;
    std::array<bool, 3> exact{};  ///< channels whose exact doubles came with the file
    std::optional<util::Matrix<double>> matrix;  ///< of a node given by a matrix
    bool visible = true;
    std::string tag;
    std::optional<std::string> home;
    bool hub = false;
    std::optional<Lens> lens;
    bool hasBackdrop = false;
    std::shared_ptr<const Curve> curve;
    bool hasTriangles = false;
    Colour colour{0.8f, 0.8f, 0.8f};
  };

  explicit SceneNode(std::string name) : m_name(std::move(name)) {}
  Channel& OwnChannel(ChannelPath path);

  // What every frame of a take reads comes first, so that it lies together.
  SceneNode* m_parent = nullptr;
  Scene* m_scene = nullptr;
  std::array<std::shared_ptr<Channel>, 3> m_channels;
  Trs m_pose;
  std::string m_name;
  mutable std::size_t m_place = 0;  ///< where it stood among its siblings at the latest look
  std::vector<std::unique_ptr<SceneNode>> m_children;
  bool m_visible = true;
  std::string m_tag;
  std::optional<std::string> m_home;
  bool m_hub = false;
  std::optional<Lens> m_lens;
  std::shared_ptr<const Backdrop> m_backdrop;
  std::shared_ptr<const Curve> m_curve;
  mutable std::shared_ptr<const util::CMesh> m_mesh;  ///< null until asked for
  bool m_ownMesh = false;                             ///< given by SetMesh
  Colour m_colour{0.8f, 0.8f, 0.8f};
  std::unique_ptr<const Source> m_source;  ///< null for a node made in memory
};

}  // namespace orv::rws::adaptor::headless

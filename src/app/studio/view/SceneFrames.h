// Packets of the headless scene.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/view/BackdropPictures.h"
#include "app/studio/view/FileMeshes.h"
#include "app/studio/view/FrameSource.h"
#include "app/studio/view/MeshLook.h"

namespace orv::util {
class CMesh;
}
namespace orv::rws::adaptor::headless {
class GltfDocument;
class HeadlessAdaptor;
class HeadlessNode;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app::view {

/// Shows the meshes, curves and cameras of the scene's visible nodes. Of each picture it reads the
/// poses, which allocates nothing; nodes and meshes only when they have changed. Poses are those
/// that the host's nodes tell, which in a take is what the take has come to; the scene is only
/// read.
class SceneFrames : public FrameSource, private rws::adaptor::headless::HostObserver {
 public:
  using SceneNode = rws::adaptor::headless::SceneNode;

  explicit SceneFrames(rws::adaptor::headless::HeadlessAdaptor& host);
  ~SceneFrames() override;
  SceneFrames(const SceneFrames&) = delete;
  SceneFrames& operator=(const SceneFrames&) = delete;

  // FrameSource
  void Read() override;
  util::Box GetBox(BoxOf what) const override;
  bool GetLens(std::size_t picture, SourceLens& lens) override;
  bool GetGuide(std::size_t picture, SourceGuide& guide) override;
  void Write(std::size_t picture, FramePacket& packet) override;

  /// The time that pictures show (s); by default the host's.
  void SetClock(std::function<double()> clock) { m_clock = std::move(clock); }
  /// These and what hangs below them get an outline.
  void Select(std::vector<const SceneNode*> nodes);
  /// Pictures show these nodes elsewhere than they stand, by their world poses, and what hangs
  /// below them with them. Empty: all as it is.
  using Preview = std::vector<std::pair<const SceneNode*, util::Matrix<double>>>;
  void SetPreview(Preview preview) { m_preview = std::move(preview); }
  /// The node that an id of the latest packet stands for; null for 0, and when it has gone since.
  const SceneNode* FindNode(std::uint32_t id) const;
  /// What shows this, or would.
  std::shared_ptr<const Model> GetModel(const MeshLook& look);
  /// The camera to look through; null for none. A node that goes is forgotten.
  void LookThrough(const SceneNode* node, std::size_t picture = 0);
  const SceneNode* GetLookThrough(std::size_t picture = 0) const {
    return IfThere(m_pictures[picture].through);
  }
  /// The node to travel with, where it turns too if `turns`; null for none. A node that goes is
  /// forgotten.
  void Follow(const SceneNode* node, bool turns, std::size_t picture = 0);
  const SceneNode* GetFollowed(std::size_t picture = 0) const {
    return IfThere(m_pictures[picture].followed);
  }
  bool TurnsWithFollowed(std::size_t picture = 0) const { return m_pictures[picture].turns; }
  /// Hands over, and forgets, what of files could not be shown.
  std::vector<std::string> TakeOdd();
  /// Cameras and curves are shown, which they are at first.
  void SetSignsVisible(bool visible);
  /// See BackdropPictures::LoadAhead.
  bool LoadAhead() { return m_backdrops.LoadAhead(); }

 private:
  struct Shown;
  struct ModelKey {
    const void* owner = nullptr;  ///< document, mesh or curve
    int number = 0;
    friend bool operator<(const ModelKey& a, const ModelKey& b) {
      return a.owner != b.owner ? a.owner < b.owner : a.number < b.number;
    }
    friend bool operator==(const ModelKey& a, const ModelKey& b) {
      return a.owner == b.owner && a.number == b.number;
    }
  };
  struct HeldModel {
    std::shared_ptr<const void> owner;  ///< so that its address stays its own
    std::shared_ptr<const Model> model;
    bool isUsed = false;
  };

  /// One of those that are shown at once.
  struct Picture {
    const SceneNode* through = nullptr;
    const SceneNode* followed = nullptr;
    bool turns = false;
    const FramePacket* packet = nullptr;  ///< that is arranged; null for none
    std::vector<std::size_t> places;      ///< its instances in their order, by index of m_shown
  };

  // HostObserver
  void OnTree() override { m_isTreeOld = true; }

  static ModelKey KeyOf(const SceneNode& node);
  void ListNodes();
  void AddNodes(const std::vector<std::unique_ptr<SceneNode>>& nodes, bool visible);
  bool HasChanged(const Shown& shown) const;
  util::Matrix<double> ReadPose(const Shown& shown, double time) const;
  std::shared_ptr<const Model> FindModel(const SceneNode& node, const ModelKey& key);
  Model MakeModel(const SceneNode& node);
  Model MakeModel(MeshData mesh);
  std::shared_ptr<const Model> ShareModel(Model model);
  bool IsPose(const Shown& shown) const;
  const Shown* Find(const SceneNode* node) const;
  const SceneNode* IfThere(const SceneNode* node) const;
  void Disarrange();
  void Arrange(Picture& picture, FramePacket& packet);
  void AddGroup(Picture& picture, FramePacket& packet, const std::vector<std::size_t>& group) const;
  void SortBlended(const Picture& picture, FramePacket& packet) const;

  double GetTime() const;

  rws::adaptor::headless::HeadlessAdaptor& m_host;
  std::function<double()> m_clock;
  MeshPool m_pool;
  FileMeshes m_files{m_pool};
  BackdropPictures m_backdrops;
  bool m_hasSigns = true;
  std::map<ModelKey, HeldModel> m_models;
  std::vector<Shown> m_shown;  ///< parents first; an id is an index from 1
  std::vector<const SceneNode*> m_selection;
  std::array<Picture, kPictures> m_pictures;
  Preview m_preview;
  const void* m_scene = nullptr;
  bool m_isTreeOld = true;
  std::uint64_t m_structure = 0;  ///< FramePacket::structure
};

}  // namespace orv::app::view

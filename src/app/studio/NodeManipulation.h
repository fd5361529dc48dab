// The selected nodes of the scene in the hands of a manipulator.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/session/SceneSurfaces.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/manipulator/ManipulatedScene.h"

namespace orv::rws::adaptor::headless {
class HeadlessNode;
}

namespace orv::app {

class HeadlessBrowser;
struct PlacedPose;

/// Places the nodes that are selected in the trees as the command line's `place` does: what has
/// keys gets one at the present time. What is tried is shown in pictures alone, so that whatever
/// else happens meanwhile, a save or a take, has the scene as it was.
class NodeManipulation : public view::ManipulatedScene {
 public:
  /// All outlive this one.
  NodeManipulation(rws::core::CoreImplementation& core,
                   rws::adaptor::headless::HeadlessAdaptor& host, HeadlessBrowser& browser,
                   view::SceneFrames& frames);
  ~NodeManipulation() override;

  /// The pictures are to be drawn anew.
  std::function<void()> changed;

  /// Whose axes Space::kNode means: the active node's from here on.
  void TakeReference();
  /// Empty for none, and when it has gone.
  std::string GetReferenceName();
  /// Each selected node goes down, or up, onto what lies under it; one step of undo. An empty
  /// answer means success; any other says why nothing has changed.
  std::string DropToGround();
  /// Hands over, and forgets, what the latest change had besides, such as keys that it set.
  std::string TakeNote() { return std::exchange(m_note, {}); }

  // ManipulatedScene
  void Read(view::Selection& selection) override;
  void Preview(const view::Selection& selection, const std::vector<view::NewPose>& poses) override;
  void EndPreview() override;
  std::string Commit(view::Tool tool, const view::Selection& selection,
                     const std::vector<view::NewPose>& poses) override;
  bool Meet(const view::Selection& selection, const view::Ray& ray,
            util::Vector3<double>& point) override;
  bool FindNode(const view::Selection& selection, const view::ViewFrame& view,
                const view::Pixel& at, util::Matrix<double>& world) override;
  double GetDepth(const view::Selection& selection) override;

 private:
  using SceneNode = rws::adaptor::headless::SceneNode;
  using HostNode = rws::adaptor::headless::HeadlessNode;
  struct Placing;

  bool ReadTarget(SceneNode& node, double time, view::Target& target);
  std::string Place(const char* verb, const std::vector<Placing>& placings);
  const SceneSurfaces& GetSurfaces(const view::Selection& selection);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  HeadlessBrowser& m_browser;
  view::SceneFrames& m_frames;
  int m_reference = 0;                        ///< key; 0 for none
  std::unique_ptr<SceneSurfaces> m_surfaces;  ///< while poses are tried, once they are asked for
  std::string m_note;
};

}  // namespace orv::app
